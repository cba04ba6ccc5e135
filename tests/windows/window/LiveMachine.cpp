#include "tests/windows/window/LiveMachine.h"

#include <windows.h>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <shlobj.h>
#include <stdexcept>

#include "platform/windows/ComPointer.h"
#include "tests/windows/management/Opener.h"
#include "toolkit/win32/Text.h"
#include "tools/writers/IndexWriter.h"
#include "tools/writers/Times.h"

namespace ostrevin {
namespace {

using win32::Utf8;
using win32::Wide;

constexpr wchar_t kProfileList[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
constexpr wchar_t kSecondSid[] = L"S-1-5-21-7-7-7-1001";
constexpr wchar_t kSecondName[] = L"berta";
const std::uint64_t kMoment = samples::FileTimeOf({2009, 8, 4, 15, 22, 18});
constexpr char kMomentText[] = "8/4/2009 3:22:18 PM";  // where the time zone is UTC

void Require(bool done, const std::string& what) {
    if (!done) {
        throw std::runtime_error("cannot " + what);
    }
}

class OpenedKey {
  public:
    OpenedKey(HKEY root, const std::wstring& path) {
        Require(RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr) ==
                    ERROR_SUCCESS,
                "make the key " + Utf8(path));
    }
    ~OpenedKey() { RegCloseKey(key_); }
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;

    [[nodiscard]] HKEY Handle() const { return key_; }
    void Set(const std::wstring& name, DWORD type, const void* data, std::size_t size) const {
        RegSetValueExW(key_, name.c_str(), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    }
    void SetText(const std::wstring& name, const std::wstring& text, DWORD type = REG_SZ) const {
        Set(name, type, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    }

  private:
    HKEY key_ = nullptr;
};

std::wstring SpecialFolder(int csidl) {
    std::array<wchar_t, MAX_PATH> path{};
    Require(SHGetSpecialFolderPathW(nullptr, path.data(), csidl, TRUE) != FALSE, "find a folder");
    return path.data();
}

std::wstring UserName() {
    std::array<wchar_t, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    Require(GetUserNameW(name.data(), &size) != FALSE, "tell the user's name");
    return name.data();
}

/// The same folder of another user: with the one's name wherever the other's stands.
std::wstring OfUser(std::wstring folder, const std::wstring& name) {
    const std::wstring own = UserName();
    for (std::size_t at = 0; (at = folder.find(own, at)) != std::wstring::npos; at += name.size()) {
        folder.replace(at, own.size(), name);
    }
    return folder;
}

void WriteFile(const std::filesystem::path& path, const void* bytes, std::size_t size) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size));
    Require(file.good(), "write " + path.string());
}

/// A shortcut as the system writes it.
void WriteShortcut(const std::filesystem::path& path, const std::wstring& target) {
    std::filesystem::create_directories(path.parent_path());
    windows::ComPointer<IShellLinkW> link;
    windows::ComPointer<IPersistFile> file;
    Require(SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                       link.PutVoid())) &&
                SUCCEEDED(link->SetPath(target.c_str())) &&
                SUCCEEDED(link->QueryInterface(IID_IPersistFile, file.PutVoid())) &&
                SUCCEEDED(file->Save(path.c_str(), TRUE)),
            "write a shortcut");
}

/// Traces in a hive: a program with its runs, a document of the Open dialog, a typed address.
void AddTraces(HKEY hive, const std::wstring& name) {
    constexpr wchar_t kPrograms[] =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
        L"{75048700-EF1F-11D0-9888-006097DEACF9}\\Count";
    constexpr wchar_t kDocuments[] =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt";
    constexpr wchar_t kAddresses[] = L"Software\\Microsoft\\Internet Explorer\\TypedURLs";
    constexpr std::uint32_t kNineRuns = 14;
    std::array<char, 16> data{};
    std::memcpy(data.data() + 4, &kNineRuns, sizeof kNineRuns);
    std::memcpy(data.data() + 8, &kMoment, sizeof kMoment);
    const OpenedKey programs(hive, kPrograms);
    programs.Set(L"HRZR_EHACNGU:P:\\Gbbyf\\k.rkr", REG_BINARY, data.data(), data.size());
    const OpenedKey documents(hive, kDocuments);
    documents.SetText(L"MRUList", L"a");
    documents.SetText(L"a", L"C:\\Docs\\opened by " + name + L".txt");
    const OpenedKey addresses(hive, kAddresses);
    addresses.SetText(L"url1", L"http://example.org/typed-by-" + name);
}

/// The shortcut and the index in the folders of an account.
void AddFiles(const std::wstring& name) {
    const std::wstring document = L"C:\\Docs\\recent of " + name + L".htm";
    WriteFile(document, "page", 4);
    WriteShortcut(OfUser(SpecialFolder(CSIDL_RECENT), name) + L"\\document.lnk", document);
    samples::IndexRecord visit;
    visit.accessed = kMoment;
    visit.address = "Visited: " + Utf8(name) + "@http://example.org/visited-by-" + Utf8(name);
    const std::vector<std::byte> index = samples::WriteIndex({visit}, {});
    WriteFile(OfUser(SpecialFolder(CSIDL_HISTORY), name) + L"\\index.dat", index.data(), index.size());
}

std::vector<std::vector<Texts>> RowsOf(const std::string& name) {
    return {{{"C:\\Tools\\x.exe", "9", kMomentText, ""}},
            {{"C:\\Docs\\recent of " + name + ".htm", ""}},
            {{"C:\\Docs\\opened by " + name + ".txt", ""}},
            {{"http://example.org/visited-by-" + name, kMomentText}},
            {{"http://example.org/typed-by-" + name}}};
}

void EnablePrivilege(const wchar_t* name) {
    HANDLE token = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &token);
    TOKEN_PRIVILEGES wanted{1, {{{}, SE_PRIVILEGE_ENABLED}}};
    LookupPrivilegeValueW(nullptr, name, &wanted.Privileges[0].Luid);
    Require(AdjustTokenPrivileges(token, FALSE, &wanted, 0, nullptr, nullptr) != FALSE, "have a privilege");
    CloseHandle(token);
}

/// The profile of an account that is not logged on: its hive is a file, which the system writes.
void AddProfile() {
    constexpr wchar_t kTemporary[] = L"Software\\Ostrevin-test-hive";
    const std::wstring folder = L"C:\\users\\" + std::wstring(kSecondName);
    std::filesystem::create_directories(folder);
    const OpenedKey hive(HKEY_CURRENT_USER, kTemporary);
    AddTraces(hive.Handle(), kSecondName);
    EnablePrivilege(L"SeBackupPrivilege");
    Require(RegSaveKeyW(hive.Handle(), (folder + L"\\NTUSER.DAT").c_str(), nullptr) == ERROR_SUCCESS,
            "save a hive");
    OpenedKey(HKEY_LOCAL_MACHINE, std::wstring(kProfileList) + L"\\" + kSecondSid)
        .SetText(L"ProfileImagePath", L"%SystemDrive%\\users\\" + std::wstring(kSecondName), REG_EXPAND_SZ);
}

/// The identifier of the one account that Wine has.
std::wstring OwnSid() {
    std::array<wchar_t, 256> name{};
    Require(RegEnumKeyW(OpenedKey(HKEY_LOCAL_MACHINE, kProfileList).Handle(), 0, name.data(),
                        static_cast<DWORD>(name.size())) == ERROR_SUCCESS,
            "find the user's profile");
    return name.data();
}

}  // namespace

std::vector<LiveAccount> MakeLiveMachine() {
    const std::wstring ownSid = OwnSid();
    const std::wstring ownName = UserName();
    Require(SUCCEEDED(OleInitialize(nullptr)), "call objects");
    AddTraces(HKEY_CURRENT_USER, ownName);
    AddProfile();
    AddFiles(ownName);
    AddFiles(kSecondName);
    OleUninitialize();
    return {{Utf8(ownSid), Utf8(ownName), RowsOf(Utf8(ownName))},
            {Utf8(kSecondSid), Utf8(kSecondName), RowsOf(Utf8(kSecondName))}};
}

void RegisterStandIns(const std::wstring& library) {
    constexpr wchar_t kManagement[] = L"{172BDDF8-CEEA-11D1-8B05-00600806D9B6}";
    const std::wstring classes = L"Software\\Classes\\";
    for (const std::wstring id : {kManagement, kOpenerClassText}) {
        const OpenedKey server(HKEY_LOCAL_MACHINE, classes + L"CLSID\\" + id + L"\\InprocServer32");
        server.SetText(L"", library);
        server.SetText(L"ThreadingModel", L"Apartment");
    }
    OpenedKey(HKEY_LOCAL_MACHINE, classes + L".htm").SetText(L"", L"ostrevin-test");
    OpenedKey(HKEY_LOCAL_MACHINE,
              classes + L"ostrevin-test\\shellex\\ContextMenuHandlers\\" + kOpenerClassText);
}

void SetWindowsVersion(const std::wstring& version) {
    OpenedKey(HKEY_CURRENT_USER, L"Software\\Wine\\AppDefaults\\ostrevin.exe").SetText(L"Version", version);
}

}  // namespace ostrevin
