#include "tests/report/ReportMachine.h"

#include <array>

#include "platform/Paths.h"
#include "sources/UserAssistList.h"
#include "tests/support/Profiles.h"
#include "tools/writers/IndexWriter.h"

namespace ostrevin {
namespace {

constexpr char kLoggedOn[] = "PERSON";

std::string ProfileOf(const std::string& account) {
    return "C:\\Documents and Settings\\" + account;
}

}  // namespace

ReportMachine::ReportMachine() {
    platform.now = 40029.640486111114;
    platform.AddFolder("C:\\Out");
    platform.shellProcessOwners = {{0, kLoggedOn}};
    platform.specialFolders[kFolderRecent] = ProfileOf(kLoggedOn) + "\\Recent";
}

void ReportMachine::AddPerson(const std::string& sid, const std::string& name) {
    AddProfile(platform, sid, ProfileOf(name));
    platform.accountNames[sid] = {name};
}

void ReportMachine::AddUserAssist(const std::string& sid, const std::string& name, std::int32_t runs,
                                  std::uint64_t lastRun) {
    std::array<std::byte, 16> data{};
    const auto stored = static_cast<std::uint32_t>(runs) + 5;
    for (std::size_t i = 0; i < 4; ++i) {
        data.at(4 + i) = static_cast<std::byte>(stored >> (8 * i));
    }
    for (std::size_t i = 0; i < 8; ++i) {
        data.at(8 + i) = static_cast<std::byte>(lastRun >> (8 * i));
    }
    Hive(sid)
        .Key(
            "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\UserAssist\\"
            "{75048700-EF1F-11D0-9888-006097DEACF9}\\Count")
        .SetData(Rot13(name), kRegBinary, data);
}

void ReportMachine::AddRecentDocument(const std::string& account, const std::string& target) {
    const std::string folder = ProfileOf(account) + "\\Recent";
    MemoryShortcut shortcut;
    shortcut.target = target;
    const std::size_t number = platform.ListDirectory(folder).size();
    platform.AddShortcut(folder + "\\" + std::to_string(number) + ".lnk", shortcut);
}

void ReportMachine::AddOpenSave(const std::string& sid, const std::vector<std::string>& documents) {
    MemoryKey& key =
        Hive(sid).Key("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU\\txt");
    std::string letters;
    for (const std::string& document : documents) {
        letters += static_cast<char>('a' + letters.size());
        key.SetText(letters.substr(letters.size() - 1), document);
    }
    key.SetText("MRUList", letters);
}

void ReportMachine::AddIEHistory(const std::string& account,
                                 const std::vector<std::pair<std::string, std::uint64_t>>& visits) {
    std::vector<samples::IndexRecord> records;
    for (const auto& [address, accessed] : visits) {
        samples::IndexRecord& record = records.emplace_back();
        record.address = address;
        record.accessed = accessed;
    }
    platform.AddFile(ProfileOf(account) + "\\Local Settings\\History\\History.IE5\\index.dat",
                     samples::WriteIndex(records, {}));
}

void ReportMachine::AddTypedURLs(const std::string& sid, const std::vector<std::string>& urls) {
    MemoryKey& key = Hive(sid).Key("Software\\Microsoft\\Internet Explorer\\TypedURLs");
    for (std::size_t i = 0; i < urls.size(); ++i) {
        key.SetText("url" + std::to_string(i + 1), urls[i]);
    }
}

void ReportMachine::Load() {
    accounts.LoadAccountSIDSFromRegistry();
    accounts.LoadAccountNamesFromSID();
}

std::string ReportMachine::Read(const std::string& path) {
    const MemoryFile* file = platform.Find(path);
    return file == nullptr
               ? "none"
               : std::string(reinterpret_cast<const char*>(file->bytes.data()), file->bytes.size());
}

}  // namespace ostrevin
