#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "settings/IniFile.h"

#ifdef __linux__
#include <csignal>
#include <sys/resource.h>
#endif

#include "platform/RuntimeError.h"
#include "tests/support/ScratchFolder.h"

namespace ostrevin {
namespace {

constexpr char kName[] = "ostrevin.ini";

class IniFileTest : public testing::Test {
  protected:
    IniFile Load() {
        IniFile ini;
        ini.SetINIFileName(folder.Path(kName));
        ini.LoadINI();
        return ini;
    }
    IniFile Load(std::string_view bytes) {
        folder.Write(kName, bytes);
        return Load();
    }
    /// What a file becomes when it is loaded and saved.
    std::string Saved(std::string_view bytes) {
        Load(bytes).SaveINI();
        return folder.Read(kName);
    }

    ScratchFolder folder;
};

// --- Reading.

TEST_F(IniFileTest, AMissingFileLeavesTheSettingsEmpty) {
    const IniFile ini = Load();
    EXPECT_FALSE(ini.Loaded());
    EXPECT_TRUE(ini.Sections().empty());
    EXPECT_EQ(ini.GetVariableValue("ShowPreview"), "");
    EXPECT_FALSE(folder.Has(kName)) << "reading makes no file";
}

TEST_F(IniFileTest, AFolderIsNoFile) {
    folder.MakeFolder(kName);
    EXPECT_FALSE(Load().Loaded());
}

TEST_F(IniFileTest, AnEmptyFileIsLoaded) {
    const IniFile ini = Load("");
    EXPECT_TRUE(ini.Loaded());
    EXPECT_TRUE(ini.Sections().empty());
}

TEST_F(IniFileTest, SplitsAVariableAtItsFirstEqualsSign) {
    const IniFile ini = Load("a=b=c\n=nameless\nempty=\n");
    EXPECT_EQ(ini.GetVariableValue("a"), "b=c");
    EXPECT_EQ(ini.GetVariableValue(""), "nameless");
    EXPECT_EQ(ini.GetVariableValue("empty"), "");
    EXPECT_EQ(ini.GetVariableValue("a=b"), "");
}

TEST_F(IniFileTest, TrimsNothing) {
    const IniFile ini = Load(" ShowPreview=True\nShowPreview =True\n[ View ]\nx= y \n");
    EXPECT_EQ(ini.GetVariableValue("ShowPreview"), "");
    EXPECT_EQ(ini.GetVariableValue(" ShowPreview"), "True");
    EXPECT_EQ(ini.GetVariableValue("ShowPreview "), "True");
    EXPECT_EQ(ini.GetSectionVariableValue(" View ", "x"), " y ");
    EXPECT_EQ(ini.GetSectionVariableValue("View", "x"), "");
}

TEST_F(IniFileTest, ComparesWithRegardToCase) {
    const IniFile ini = Load("[View]\nShowPreview=True\n");
    EXPECT_EQ(ini.GetVariableValue("showpreview"), "");
    EXPECT_EQ(ini.GetSectionVariableValue("view", "ShowPreview"), "");
    EXPECT_EQ(ini.GetSectionVariableValue("View", "ShowPreview"), "True");
}

TEST_F(IniFileTest, FindsTheFirstOfANameInAnySection) {
    const IniFile ini = Load("[A]\nx=1\nx=2\n[B]\nx=3\n");
    EXPECT_EQ(ini.GetVariableValue("x"), "1");
    EXPECT_EQ(ini.GetSectionVariableValue("A", "x"), "1");
    EXPECT_EQ(ini.GetSectionVariableValue("B", "x"), "3");
    EXPECT_EQ(ini.GetSectionVariableValue("", "x"), "");
}

TEST_F(IniFileTest, KeepsSectionsInTheOrderOfTheirHeaders) {
    const IniFile ini = Load("above=1\n[B]\n[A]\nx=1\n[B]\n");
    EXPECT_EQ(ini.Sections(), (std::vector<std::string>{"B", "A", "B"}));
    EXPECT_EQ(ini.GetSectionVariableValue("", "above"), "1");
    EXPECT_EQ(ini.GetSectionVariableValue("A", "x"), "1");
}

TEST_F(IniFileTest, TwoBracketsAreASectionWithTheEmptyName) {
    const IniFile ini = Load("[A]\n[]\nx=1\n");
    EXPECT_EQ(ini.Sections(), (std::vector<std::string>{"A", ""}));
    EXPECT_EQ(ini.GetSectionVariableValue("", "x"), "1");
}

TEST_F(IniFileTest, AHeaderGoesFromTheFirstToTheLastCharacter) {
    const IniFile ini = Load("[a=b]\nx=1\n[c=d\n[e] \n[\n]\n[[f]]\n");
    EXPECT_EQ(ini.Sections(), (std::vector<std::string>{"a=b", "[f]"}));
    EXPECT_EQ(ini.GetSectionVariableValue("a=b", "x"), "1");
    EXPECT_EQ(ini.GetVariableValue("[c"), "d");
}

TEST_F(IniFileTest, CommentsHoldNoVariables) {
    const IniFile ini = Load("#a=1\n'b=2\n#[C]\n #d=3\n");
    EXPECT_EQ(ini.GetVariableValue("a"), "");
    EXPECT_EQ(ini.GetVariableValue("#a"), "");
    EXPECT_EQ(ini.GetVariableValue("'b"), "");
    EXPECT_TRUE(ini.Sections().empty());
    EXPECT_EQ(ini.GetVariableValue(" #d"), "3") << "a comment begins at the first character";
}

TEST_F(IniFileTest, LinesEndWithAnyOfTheThreeEnds) {
    for (const std::string end : {"\n", "\r", "\r\n"}) {
        std::string text;
        for (const std::string_view line : {"a=1", "[S]", "", "b=2"}) {
            text.append(line).append(end);
        }
        const IniFile ini = Load(text + "c=3");
        EXPECT_EQ(ini.GetVariableValue("a"), "1");
        EXPECT_EQ(ini.GetSectionVariableValue("S", "b"), "2");
        EXPECT_EQ(ini.GetSectionVariableValue("S", "c"), "3") << "the last line needs no end";
    }
}

TEST_F(IniFileTest, KeepsBytesAsTheyStand) {
    const std::string value("\0\x01\xFF\xD0", 4);
    EXPECT_EQ(Load("a=" + value + "\n").GetVariableValue("a"), value);
    EXPECT_EQ(Saved("a=" + value + "\n"), "a=" + value + "\r\n");
}

#ifdef __linux__
TEST_F(IniFileTest, AFileThatCannotBeReadIsNotWrittenOver) {
    IniFile ini;
    ini.SetINIFileName("/proc/self/mem");  // an ordinary file, of which nothing can be read at its beginning
    EXPECT_THROW(ini.LoadINI(), RuntimeError);
    EXPECT_FALSE(ini.Loaded());
    EXPECT_THROW(ini.SaveINI(), RuntimeError);
}
#endif

// --- Changing.

TEST_F(IniFileTest, ChangesTheFirstMatch) {
    IniFile ini = Load("[A]\nx=1\n[B]\nx=2\n");
    EXPECT_TRUE(ini.ChangeVariable("x", "3"));
    EXPECT_TRUE(ini.ChangeSectionVariable("B", "x", "4"));
    EXPECT_EQ(ini.GetSectionVariableValue("A", "x"), "3");
    EXPECT_EQ(ini.GetSectionVariableValue("B", "x"), "4");
    EXPECT_FALSE(ini.ChangeVariable("y", "5"));
    EXPECT_FALSE(ini.ChangeSectionVariable("", "x", "5"));
    EXPECT_EQ(ini.GetVariableValue("y"), "");
}

TEST_F(IniFileTest, AddsOnlyWhatItsSectionDoesNotHave) {
    IniFile ini = Load("[A]\nx=1\n");
    EXPECT_FALSE(ini.AddSectionVariable("A", "x", "2"));
    EXPECT_EQ(ini.GetSectionVariableValue("A", "x"), "1");
    EXPECT_TRUE(ini.AddVariable("x", "3")) << "that of section A is another one";
    EXPECT_EQ(ini.GetSectionVariableValue("", "x"), "3");
    EXPECT_EQ(ini.GetVariableValue("x"), "1") << "the new one comes last";
    EXPECT_TRUE(ini.AddSectionVariable("B", "x", "4"));
    EXPECT_FALSE(ini.AddVariable("x", "5"));
}

TEST_F(IniFileTest, DeletesInOneSectionOnly) {
    IniFile ini = Load("x=0\n[A]\nx=1\n");
    EXPECT_TRUE(ini.DeleteVariable("x"));
    EXPECT_FALSE(ini.DeleteVariable("x"));
    EXPECT_EQ(ini.GetVariableValue("x"), "1");
    EXPECT_TRUE(ini.DeleteSectionVariable("A", "x"));
    EXPECT_EQ(ini.GetVariableValue("x"), "");
}

// --- Writing.

TEST_F(IniFileTest, WritesAnEmptyLineAndAHeaderWhereTheSectionChanges) {
    EXPECT_EQ(Saved("a=1\nb=2\n[S]\nc=3\n[T]\nd=4\n"), "a=1\r\nb=2\r\n\r\n[S]\r\nc=3\r\n\r\n[T]\r\nd=4\r\n");
}

TEST_F(IniFileTest, WritesAHeaderAgainForWhatIsNotTogether) {
    IniFile ini = Load("[A]\nx=1\n[B]\ny=2\n");
    ini.AddSectionVariable("A", "z", "3");
    ini.AddVariable("u", "4");
    ini.SaveINI();
    EXPECT_EQ(folder.Read(kName), "\r\n[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n\r\n[A]\r\nz=3\r\n\r\n[]\r\nu=4\r\n");
    const IniFile again = Load();
    EXPECT_EQ(again.GetSectionVariableValue("A", "z"), "3");
    EXPECT_EQ(again.GetSectionVariableValue("", "u"), "4") << "still of the unnamed section";
}

TEST_F(IniFileTest, DropsEmptySectionsAndWhatIsNoLineOfItsKinds) {
    EXPECT_EQ(Saved("[Empty]\nnothing\n[S]\na=1\n[Also]\n"), "\r\n[S]\r\na=1\r\n");
}

TEST_F(IniFileTest, PutsCommentsBackAtTheirLines) {
    const std::string text =
        "#one\r\n'two\r\na=1\r\n#four\r\n\r\n[S]\r\n#six\r\nb=2\r\n#eight\r\n\r\n[T]\r\nc=3\r\n#eleven\r\n";
    EXPECT_EQ(Saved(text), text);
}

TEST_F(IniFileTest, KeepsEveryCommentInOrderWhenLinesBeforeThemAreGone) {
    IniFile ini = Load("ignored\n[Empty]\n#one\na=1\nb=2\n#two\n#three\nc=3\n#four\n");
    ini.DeleteVariable("b");
    ini.DeleteVariable("c");
    ini.SaveINI();
    const std::string saved = folder.Read(kName);
    std::size_t at = 0;
    for (const std::string comment : {"#one\r\n", "#two\r\n", "#three\r\n", "#four\r\n"}) {
        const std::size_t found = saved.find(comment, at);
        ASSERT_NE(found, std::string::npos) << comment << " in " << saved;
        at = found + comment.size();
    }
    EXPECT_NE(saved.find("a=1\r\n"), std::string::npos);
}

TEST_F(IniFileTest, KeepsCommentsOfAFileWithoutVariables) {
    EXPECT_EQ(Saved("#one\n\n'two\n"), "#one\r\n'two\r\n");
}

TEST_F(IniFileTest, WhatIsSavedOnceStaysAsItIs) {
    for (const std::string_view text : {"#c\n[A]\nx=1\nx=1\n#d\n[A]\ny=\n[]\nz=3\n'e", "a=1\r#b\r\r\r[]\rc=2",
                                        "[x]\n#only\n", "junk\n#a\njunk\n#b\nv=1\n[n]\n#c\n[m]\n#d\nw=2\n"}) {
        const std::string once = Saved(text);
        EXPECT_EQ(Saved(once), once);
    }
}

TEST_F(IniFileTest, MakesAFileThatWasNotThere) {
    Load().SaveINI();
    EXPECT_EQ(folder.Read(kName), "");
    EXPECT_EQ(folder.Count(), 1U);
}

TEST_F(IniFileTest, KeepsALineOfFiftyMegabytes) {
    constexpr std::size_t kLong = 50'000'000;
    const std::string value(kLong, 'v');
    EXPECT_EQ(Saved("a=" + value + "\nb=2\n"), "a=" + value + "\r\nb=2\r\n");
    const std::string comment = "#" + value;
    EXPECT_EQ(Saved(comment + "\nb=2"), comment + "\r\nb=2\r\n");
    EXPECT_EQ(Load(value).GetVariableValue(value), "") << "no line of any kind";
}

// --- Writing that fails.

TEST_F(IniFileTest, AFailureLeavesTheFormerFile) {
    IniFile ini = Load("#kept\na=1\n");
    ini.AddVariable("b", "2");
    // Where the fresh file would be written stands something that is no file.
    folder.MakeFolder("ostrevin.ini.new");
    folder.Write("ostrevin.ini.new/x", "");
    EXPECT_THROW(ini.SaveINI(), RuntimeError);
    EXPECT_EQ(folder.Read(kName), "#kept\na=1\n");
}

TEST_F(IniFileTest, AFolderInTheFilesPlaceIsAFailure) {
    folder.MakeFolder(kName);
    folder.Write("ostrevin.ini/x", "");
    EXPECT_THROW(Load().SaveINI(), RuntimeError);
    EXPECT_EQ(folder.Count(), 1U) << "nothing is left lying about";
}

TEST_F(IniFileTest, AMissingFolderIsAFailure) {
    IniFile ini;
    ini.SetINIFileName(folder.Path("none/ostrevin.ini"));
    ini.LoadINI();
    try {
        ini.SaveINI();
        FAIL() << "written into a folder that is not there";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), RuntimeError::kPathFileAccess);
    }
}

#ifdef __linux__
TEST_F(IniFileTest, AFullDiskLeavesTheFormerFile) {
    IniFile ini = Load("a=1\n");
    ini.AddVariable("b", std::string(100000, 'x'));
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit small = limit;
    small.rlim_cur = 1000;
    const auto former = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_THROW(ini.SaveINI(), RuntimeError);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, former);
    EXPECT_EQ(folder.Read(kName), "a=1\n");
    EXPECT_EQ(folder.Count(), 1U) << "nothing is left lying about";
}

TEST_F(IniFileTest, WritesThroughALink) {
    folder.Write("elsewhere", "a=1\n");
    std::filesystem::create_symlink("elsewhere", folder.Path(kName));
    Load().SaveINI();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(kName)));
    EXPECT_EQ(folder.Read("elsewhere"), "a=1\r\n");
}
#endif

}  // namespace
}  // namespace ostrevin
