#include "tools/sample-volume/Profile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tools/sample-volume/Documents.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/SampleText.h"

namespace ostrevin::samples {
namespace {

constexpr std::uint32_t kVolumeSerial = 0x3C5D1A70;
constexpr std::uint32_t kExpandString = 2;
constexpr std::size_t kDialogLetters = 10;  // the dialogs keep ten paths of each kind

std::string_view FileName(std::string_view path) {
    return path.substr(path.rfind('\\') + 1);
}

std::string ExtensionOf(std::string_view path) {
    const std::string_view name = FileName(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string() : std::string(name.substr(dot + 1));
}

char Letter(std::size_t index) {
    return static_cast<char>('a' + index);
}

/// Values a, b, c, ... and the list of letters, the last path first.
void WriteMru(HiveKey& key, std::span<const std::string> paths) {
    std::string list;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        key.SetString(std::string(1, Letter(i)), paths[i]);
        list.insert(list.begin(), Letter(i));
    }
    key.SetString("MRUList", list);
}

std::span<const std::string> LastOnes(const std::vector<std::string>& paths) {
    return std::span(paths).last(std::min(paths.size(), kDialogLetters));
}

}  // namespace

std::string Rot13(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if ((c >= 'A' && c <= 'M') || (c >= 'a' && c <= 'm')) {
            c = static_cast<char>(c + 13);
        } else if ((c >= 'N' && c <= 'Z') || (c >= 'n' && c <= 'z')) {
            c = static_cast<char>(c - 13);
        }
    }
    return result;
}

std::vector<std::byte> CountData(std::uint32_t storedCount, std::uint64_t lastRun) {
    ByteBuffer data;
    data.U32(1);
    data.U32(storedCount);
    data.U64(lastRun);
    return data.Take();
}

Link LinkTo(std::string_view path, std::uint32_t size, std::uint64_t opened) {
    Link link;
    const bool folder = ExtensionOf(path).empty();
    const std::string narrow = ToWindows1252(path);
    link.attributes = folder ? 0x10 : 0x20;
    link.created = opened - 40 * kDay;
    link.modified = opened - kDay;
    link.accessed = opened;
    link.size = size;
    FileItem last;
    last.folder = folder;
    last.size = size;
    last.modified = link.modified;
    last.created = link.created;
    last.accessed = link.accessed;
    link.items = ItemsForPath(path, last);
    LinkInfo info;
    info.volume = LinkVolume{3, kVolumeSerial, "SYSTEM", {}};
    info.localBasePath = narrow;
    // The shell adds the Unicode form where the code page cannot hold the path.
    const std::u16string wide = ToUtf16(path);
    if (std::any_of(wide.begin(), wide.end(), [](char16_t unit) { return unit > 0xFF; })) {
        info.unicodeLocalBasePath = path;
    }
    link.info = info;
    link.workingFolder = std::string(path.substr(0, path.rfind('\\')));
    link.tracker = LinkTracker{"kontor-7"};
    return link;
}

Profile::Profile(SampleVolume& volume, std::string folder, std::uint64_t start)
    : volume_(volume), folder_(std::move(folder)), clock_(start) {
    root_.name = "$$$PROTO.HIV";
    explorer_ = &root_.Key("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer");
    AddShellFolders(root_, folder_);
    root_.Key(kFirstUserAssist).SetDword("Version", 3);
    root_.Key(kSecondUserAssist).SetDword("Version", 3);
    root_.Key("Software\\Microsoft\\Internet Explorer\\Main")
        .SetString("Start Page", "http://start.example.com/");
    root_.Key("Control Panel\\International").SetString("Locale", "00000409");
    root_.Key("Control Panel\\Desktop").SetString("Wallpaper", "C:\\WINDOWS\\Web\\Wallpaper\\Bliss.bmp");
}

void Profile::AddShellFolders(HiveKey& root, const std::string& folder) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 16> kFolders = {{
        {"AppData", "Application Data"},
        {"Cookies", "Cookies"},
        {"Desktop", "Desktop"},
        {"Favorites", "Favorites"},
        {"NetHood", "NetHood"},
        {"Personal", "My Documents"},
        {"My Pictures", "My Documents\\My Pictures"},
        {"PrintHood", "PrintHood"},
        {"Recent", "Recent"},
        {"SendTo", "SendTo"},
        {"Start Menu", "Start Menu"},
        {"Programs", "Start Menu\\Programs"},
        {"Startup", "Start Menu\\Programs\\Startup"},
        {"Local AppData", "Local Settings\\Application Data"},
        {"Cache", "Local Settings\\Temporary Internet Files"},
        {"History", "Local Settings\\History"},
    }};
    HiveKey& explorer = root.Key("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer");
    for (const auto& [name, below] : kFolders) {
        explorer.Key("Shell Folders").SetString(name, folder + "\\" + std::string(below));
        explorer.Key("User Shell Folders")
            .SetString(name, "%USERPROFILE%\\" + std::string(below), kExpandString);
    }
    HiveKey& environment = root.Key("Environment");
    environment.SetString("TEMP", "%USERPROFILE%\\Local Settings\\Temp", kExpandString);
    environment.SetString("TMP", "%USERPROFILE%\\Local Settings\\Temp", kExpandString);
}

HiveKey& Profile::Counts() {
    return root_.Key(std::string(kFirstUserAssist) + "\\Count");
}

HiveKey& Profile::SecondCounts() {
    return root_.Key(kSecondUserAssist);
}

std::string Profile::Expand(std::string_view path) const {
    return path.starts_with("~") ? folder_ + std::string(path.substr(1)) : std::string(path);
}

void Profile::Ran(HiveKey& key, std::string_view name, std::uint32_t storedCount) {
    key.Add(Rot13(Expand(name)), 3, CountData(storedCount, clock_.Next()));
}

void Profile::RanPrograms(std::span<const ProgramEntry> programs) {
    for (const ProgramEntry& program : programs) {
        const std::string path = Expand(program.path);
        Ran("UEME_RUNPATH:" + path, program.runs + 5);
        if (program.exists) {
            volume_.Add(path, ProgramBytes(path));
        }
    }
}

void Profile::UsedDocuments(std::span<const DocumentEntry> documents,
                            std::span<const std::string_view> sentences) {
    for (const DocumentEntry& document : documents) {
        const std::string path = Expand(document.path);
        std::uint32_t size = 20480;
        if ((document.uses & DocumentEntry::kExists) != 0) {
            std::vector<std::byte> bytes = DocumentBytes(path, sentences);
            size = Size32(bytes.size());
            volume_.Add(path, std::move(bytes));
        }
        if ((document.uses & DocumentEntry::kRecent) != 0) {
            AddRecent(FileName(path), LinkTo(path, size, clock_.Next()));
        }
        if ((document.uses & DocumentEntry::kDialog) != 0) {
            ChoseInDialog(ExtensionOf(path), path);
        }
    }
}

void Profile::AddRecent(std::string_view fileName, const Link& link) {
    volume_.Add(folder_ + "\\Recent\\" + std::string(fileName) + ".lnk", link);
}

void Profile::ChoseInDialog(const std::string& extension, const std::string& path) {
    dialogs_[extension].push_back(path);
    dialogs_["*"].push_back(path);
}

void Profile::Typed(std::span<const std::string_view> addresses) {
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        TypedUrls().SetString("url" + std::to_string(i + 1), addresses[i]);
    }
}

void Profile::Visited(std::string_view prefix, std::span<const std::string_view> addresses) {
    for (const std::string_view address : addresses) {
        IndexRecord record;
        record.accessed = clock_.Next();
        record.modified = record.accessed;
        record.expires = record.accessed + 20 * kDay;
        record.address = ToWindows1252(std::string(prefix) + Expand(address));
        visits_.push_back(record);
    }
}

void Profile::AddIndex(std::string_view path, IndexOptions options) {
    volume_.Add(Expand(path), IndexFile{visits_, std::move(options)});
}

void Profile::WriteDialogs() {
    HiveKey& dialogs = root_.Key(kOpenSaveMru);
    for (const auto& [extension, paths] : dialogs_) {
        WriteMru(dialogs.Key(extension), LastOnes(paths));
    }
    dialogs_.clear();
}

void Profile::AddHive(const HiveOptions& options) {
    WriteDialogs();
    AddHiveFile({root_, options, {}});
}

void Profile::AddHiveFile(HiveFile hive) {
    hive.options.fileName = folder_ + "\\ntuser.dat";
    volume_.Add(folder_ + "\\NTUSER.DAT", std::move(hive));
    volume_.AddFolder(folder_ + "\\Desktop");
    volume_.AddFolder(folder_ + "\\Start Menu\\Programs\\Startup");
}

}  // namespace ostrevin::samples
