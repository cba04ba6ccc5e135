// The whole window on the machine itself: on Wine's registry and files, with a stand-in for the management
// service, whose failures are tried one by one.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/windows/window/Host.h"
#include "tests/windows/window/LiveMachine.h"
#include "tests/windows/window/Person.h"
#include "tests/windows/window/RemoteMemory.h"
#include "tests/windows/window/RunningProgram.h"
#include "tests/windows/window/UsedWindow.h"
#include "toolkit/win32/Text.h"

namespace ostrevin {
namespace {

constexpr char kComputer[] = R"(winmgmts:{impersonationLevel=impersonate}!\\.\Root\CIMV2)";
constexpr char kNamespace[] = R"(winmgmts:{impersonationLevel=impersonate}!root\CIMV2)";
constexpr char kProcessQuery[] =
    "Select name from Win32_Process Where Name = 'explorer.exe' AND SessionId = 0";
constexpr char kGroupQuery[] = "Select GroupComponent, PartComponent from Win32_GroupUser";

constexpr char kAdministratorWarning[] =
    "You do not seem to be a member of the local Administrators Group.  Ostrevin will not work correctly "
    "unless you "
    "have Administrative access on this computer.  If you belong to another group with Administrative "
    "access, "
    "disregard this message.";

std::string NameQuery(const std::string& sid) {
    return "Select Name from Win32_UserAccount Where SID='" + sid + "'";
}

std::string Name(const std::string& part) {
    return "Windows Management Instrumentation " + part;
}

/// What the management service answers; each part can be another one.
struct Answers {
    std::string computer = "0";
    std::string nameSpace = "0";
    std::string processes;
    std::string groups;
    std::string names;

    [[nodiscard]] std::string Script() const {
        return "moniker\t" + computer + "\t" + kComputer + "\nmoniker\t" + nameSpace + "\t" + kNamespace +
               "\n" + processes + groups + names;
    }
};

class LiveWindowTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        SetUpWine();
        RegisterStandIns(TestPath(L"stand_in_server.dll"));
        accounts = MakeLiveMachine();
        SetEnvironmentVariableW(L"OSTREVIN_STAND_IN", TestPath(L"stand-in").c_str());
    }

    LiveWindowTest() {
        // Windows 2000 is what no warning is shown on.
        SetWindowsVersion(L"win2k");
        SetUserName("nobody");
        answers.processes = Query("0", kProcessQuery) + "process\t0\t0\t" + accounts[0].name + "\n";
        answers.groups = Query("0", kGroupQuery) + Member("Administrators", accounts[0].name);
        for (const LiveAccount& account : accounts) {
            answers.names += Query("0", NameQuery(account.sid)) + "record\tName\t" + account.name + "\n";
        }
    }
    void TearDown() override {
        if (HasFailure()) {
            Photograph(L"failure of " +
                       win32::Wide(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        }
    }

    static std::string Query(const std::string& result, const std::string& text) {
        return "query\t" + result + "\t" + text + "\n";
    }
    static std::string Member(const std::string& group, const std::string& name) {
        return R"(record	GroupComponent	\\PC\root\cimv2:Win32_Group.Domain="PC",Name=")" + group +
               "\"\tPartComponent\t" + R"(\\PC\root\cimv2:Win32_UserAccount.Domain="PC",Name=")" + name +
               "\"\n";
    }
    /// The user's name as the program's environment has it.
    static void SetUserName(const std::string& name) {
        SetEnvironmentVariableW(L"USERNAME", win32::Wide(name).c_str());
    }

    void WriteAnswers() const { WriteTestFile(L"stand-in/answers", answers.Script()); }
    void Start() {
        WriteAnswers();
        WriteTestFile(L"stand-in/asked", "");
        program = std::make_unique<RunningProgram>(TestPath(L"ostrevin.exe"));
    }
    /// Starts the program and expects its main window, after the messages.
    void ExpectStart(const Texts& messages = {}) {
        Start();
        for (const std::string& message : messages) {
            EXPECT_EQ(ConfirmMessage(*program, L"warning"), message);
        }
        program->AwaitStart();
    }
    /// Starts the program and expects that it ends with a message.
    void ExpectEnd(const std::string& message) {
        Start();
        EXPECT_EQ(ConfirmMessage(*program, L"end"), message);
        EXPECT_EQ(program->AwaitEnd(), 1U);
    }
    [[nodiscard]] static Texts Asked() {
        std::istringstream stream(ReadTestFile(L"stand-in/asked"));
        Texts lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    [[nodiscard]] Texts Roots() const {
        Texts roots;
        for (const Node& root : Nodes(ShownChild(program->MainWindow(), WC_TREEVIEWW))) {
            roots.push_back(root.text);
        }
        return roots;
    }

    static inline std::vector<LiveAccount> accounts;
    Answers answers;
    std::unique_ptr<RunningProgram> program;
};

/// The window of the program that a test has started.
class LiveWindow : public UsedWindow {
  public:
    explicit LiveWindow(const RunningProgram& program) : UsedWindow(program) {}

    /// Clicks a node and expects the rows of its list.
    void ExpectList(std::size_t account, Tab tab, const Table& rows) const {
        Choose(account, tab);
        ExpectBecomes([&] { return SelectedTab(tabs); }, int{tab});
        ExpectBecomes([&] { return Rows(List()); }, rows, kTabTexts.at(tab));
    }
    void Choose(std::size_t account, Tab tab) const { ClickNode(NodeOf(account, tab)); }
    void DoubleClickFirstRow() const { DoubleClick(List(), MiddleOf(CellBounds(0))); }
    void OpenReportDialog() const { ChooseMenu(kReporting, 0); }
};

// --- With all that a machine has.

TEST_F(LiveWindowTest, EveryListOfBothAccountsIsFilled) {
    ExpectStart();
    const LiveWindow window(*program);
    EXPECT_EQ(Roots(), (Texts{accounts[0].name, accounts[1].name}));
    for (std::size_t account = 0; account < accounts.size(); ++account) {
        for (const Tab tab : kTabs) {
            window.ExpectList(account, tab, accounts[account].rows.at(tab));
        }
        Photograph(L"account " + std::to_wstring(account));
    }
}

TEST_F(LiveWindowTest, TheServiceIsAskedTheseQuestionsInThisOrder) {
    ExpectStart();
    const Texts logOn = {std::string("bind ") + kComputer, std::string("query ") + kProcessQuery, "GetOwner"};
    Texts expected = logOn;
    expected.insert(expected.end(), logOn.begin(), logOn.end());  // for the administrator test
    expected.insert(expected.end(), {std::string("bind ") + kComputer, std::string("query ") + kGroupQuery,
                                     std::string("bind ") + kNamespace, "query " + NameQuery(accounts[0].sid),
                                     "query " + NameQuery(accounts[1].sid)});
    EXPECT_EQ(Asked(), expected);
    LiveWindow(*program).ExpectList(1, kRecent, accounts[1].rows.at(kRecent));
    expected.insert(expected.end(), logOn.begin(), logOn.end());
    EXPECT_EQ(Asked(), expected) << "the recent documents ask again who is logged on";
}

TEST_F(LiveWindowTest, AReportIsWrittenAndOpenedForTheMainWindow) {
    ExpectStart();
    const LiveWindow window(*program);
    window.OpenReportDialog();
    const HWND dialog = program->AwaitDialog("Report Creator");
    Press(VK_DOWN);
    Press(VK_DOWN);
    ExpectBecomes([&] { return TextOf(ShownChild(dialog, L"ComboBox")); }, accounts[1].name);
    for (int i = 0; i < 6; ++i) {
        Press(VK_TAB);  // past the sections
    }
    Type(TestPath(L"written.htm"));
    Press(VK_RETURN);
    const std::string opened =
        "open for " + std::to_string(reinterpret_cast<ULONG_PTR>(program->MainWindow()));
    ExpectBecomes([&] { return Asked().back(); }, opened, "the dialog is not its owner");
    const std::string report = ReadTestFile(L"written.htm");
    EXPECT_TRUE(report.ends_with("</HTML>\r\n"));
    for (const Tab tab : kTabs) {
        EXPECT_NE(report.find(accounts[1].rows.at(tab)[0][0]), std::string::npos) << kTabTexts.at(tab);
    }
    EXPECT_EQ(report.find(accounts[0].rows.at(kTyped)[0][0]), std::string::npos)
        << "the other account's traces";
    Press(VK_ESCAPE);
    program->AwaitMainWindow();
}

TEST_F(LiveWindowTest, ADocumentIsOpenedForTheMainWindow) {
    ExpectStart();
    const LiveWindow window(*program);
    window.ExpectList(1, kRecent, accounts[1].rows.at(kRecent));
    window.DoubleClickFirstRow();
    ExpectBecomes([&] { return Asked().back(); },
                  "open for " + std::to_string(reinterpret_cast<ULONG_PTR>(program->MainWindow())));
}

// --- The system.

TEST_F(LiveWindowTest, WindowsXPGetsNoWarning) {
    SetWindowsVersion(L"winxp64");
    ExpectStart();
}

TEST_F(LiveWindowTest, ALaterWindowsGetsAWarning) {
    SetWindowsVersion(L"win7");
    ExpectStart(
        {"Your Operating System is : \r\nOstrevin requires Windows 2000, or Windows XP to function "
         "properly."});
    EXPECT_EQ(Roots().size(), 2U);
}

// --- The owner of the shell. Whether the owner counts shows in the test for an administrator.

TEST_F(LiveWindowTest, OwnersThatWereToldBeforeTheAnswerBrokeOffCount) {
    answers.processes += "breaks\t80041033\n";
    ExpectStart();
}

TEST_F(LiveWindowTest, AProcessWhoseOwnerCannotBeToldIsPassedOver) {
    answers.processes += "process\t80041002\t0\t\nprocess\t0\t2\t\n";
    ExpectStart();
}

TEST_F(LiveWindowTest, WithoutAnOwnerTheEnvironmentTells) {
    answers.processes = Query("0", kProcessQuery) + "process\t80041002\t0\t\n";
    ExpectStart({kAdministratorWarning});
    SetUserName(accounts[0].name);
    for (const std::string& processes :
         {answers.processes, Query("0", kProcessQuery), Query("80041003", kProcessQuery),
          Query("0", kProcessQuery) + "breaks\t80041017\n"}) {
        answers.processes = processes;
        ExpectStart();
    }
}

// --- Its failures.

TEST_F(LiveWindowTest, WithoutTheServiceTheStartEndsAndSaysSo) {
    answers.computer = "80070422";
    ExpectEnd(Name("cannot be reached: Automation error 0x80070422"));
    answers.computer = "0";
    answers.nameSpace = "8004100E";
    ExpectEnd(Name("cannot be reached: Automation error 0x8004100E"));
}

TEST_F(LiveWindowTest, WithoutTheGroupsTheStartEndsAndSaysSo) {
    const std::string message =
        Name(std::string("does not answer \"") + kGroupQuery + "\": Automation error 0x80041003");
    const std::string groups = answers.groups;
    answers.groups = Query("80041003", kGroupQuery);
    ExpectEnd(message);
    answers.groups = groups + "breaks\t80041003\n";
    ExpectEnd(message);
}

TEST_F(LiveWindowTest, WithoutTheNamesTheStartEndsAndSaysSo) {
    answers.names = Query("0", NameQuery(accounts[0].sid)) + Query("80041010", NameQuery(accounts[1].sid));
    ExpectEnd(Name("does not answer \"" + NameQuery(accounts[1].sid) + "\": Automation error 0x80041010"));
}

TEST_F(LiveWindowTest, WithoutAGroupOfAdministratorsThereIsAWarning) {
    answers.groups = Query("0", kGroupQuery) + Member("Users", accounts[0].name);
    ExpectStart({kAdministratorWarning});
}

TEST_F(LiveWindowTest, AServiceThatNamesNoAccountsGivesAnEmptyTree) {
    answers.names.clear();
    for (const LiveAccount& account : accounts) {
        answers.names += Query("0", NameQuery(account.sid));
    }
    ExpectStart();
    EXPECT_EQ(Roots(), Texts{});
}

TEST_F(LiveWindowTest, AServiceThatGoesLaterEndsTheProgramWhereItIsNeeded) {
    ExpectStart();
    const LiveWindow window(*program);
    answers.computer = "800706BA";
    WriteAnswers();
    window.ExpectList(0, kPrograms, accounts[0].rows.at(kPrograms));
    window.Choose(0, kRecent);
    EXPECT_EQ(ConfirmMessage(*program, L"later"), Name("cannot be reached: Automation error 0x800706BA"));
    EXPECT_EQ(program->AwaitEnd(), 1U);
}

}  // namespace
}  // namespace ostrevin
