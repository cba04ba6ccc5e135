// A host made up in memory: it answers what a test has said of it, by the rules of the platform's calls.
//
// Registry paths, file paths, computers and variables are found without regard to case, as Windows does. A
// call that the test wants to fail is named to Fail; what the program asked for is kept in public logs.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "platform/ShellFolder.h"

namespace ostrevin {

/// A key of the made-up registry: values in stored order, sub-keys by upper-cased name as the machine lists
/// them.
class MemoryKey {
  public:
    struct Value {
        std::string name;
        std::uint32_t type = kRegNone;
        std::vector<std::byte> data;  ///< text types in UTF-8, with their NULs
    };

    /// The key at a path below this one, found or made; "" is this key itself.
    MemoryKey& Key(std::string_view path);
    /// The same, but null where it is not there.
    [[nodiscard]] MemoryKey* Find(std::string_view path);

    // Each sets a value, in its place if there is one of this name; the key is returned for more of them.
    /// Text of type 1, 2 or 7; a terminating NUL is added.
    MemoryKey& SetText(std::string_view name, std::string_view text, std::uint32_t type = kRegSz);
    MemoryKey& SetDword(std::string_view name, std::uint32_t number);
    MemoryKey& SetData(std::string_view name, std::uint32_t type, std::span<const std::byte> data);

    [[nodiscard]] const Value* FindValue(std::string_view name) const;
    /// The text of a value up to its NUL; "" when there is no such value.
    [[nodiscard]] std::string Text(std::string_view name) const;

    std::string className;
    /// What opening this key returns instead of kSuccess.
    std::int32_t openResult = kSuccess;

  private:
    friend class MemoryPlatform;
    struct SubKey {
        std::string name;
        std::shared_ptr<MemoryKey> key;
    };

    [[nodiscard]] const SubKey* FindSubKey(std::string_view name) const;
    void AddSubKey(std::string_view name, std::shared_ptr<MemoryKey> key);

    std::vector<SubKey> subKeys_;
    std::vector<Value> values_;
};

/// What a shortcut file holds.
struct MemoryShortcut {
    std::string target;
    std::string networkTarget;  ///< what GetPath gives with kPathUnc, unless it is empty
    std::string workingDirectory;
    std::string arguments;
    std::string description;
    std::string iconFile;
    std::int32_t iconIndex = 0;
    std::int32_t showCommand = 1;
    std::uint16_t hotkey = 0;
};

/// A file or folder.
struct MemoryFile {
    std::string path;
    std::uint32_t attributes = 0;
    std::vector<std::byte> bytes;
    bool readable = true;
    /// Bytes from here on can be read no longer.
    std::optional<std::uint64_t> readableUpTo;
    /// Held open by somebody else: it cannot be loaded as a hive.
    bool inUse = false;
    /// Opens the file in place of what stands above.
    std::function<std::unique_ptr<InputFile>()> open;
    std::optional<MemoryShortcut> shortcut;
    std::shared_ptr<MemoryKey> hive;
    /// Whether the shell has a thumbnail handler for it.
    bool hasThumbnail = false;
    /// What the handler extracts; none for the zero handle.
    std::optional<Bitmap> thumbnail;
};

class MemoryPlatform : public Platform {
  public:
    // --- What the host answers. A fresh one is a Windows XP on C: without a person at it.

    OSVersion version{2, 5, 1};
    std::vector<ProcessOwner> shellProcessOwners;
    std::vector<GroupUser> groupUsers;
    std::map<std::string, std::vector<std::string>> accountNames;  ///< by security identifier
    std::map<std::string, std::string> environment;                ///< by upper-cased name
    std::string applicationFolder = "C:\\Program Files\\Ostrevin\\";
    std::string windowsDirectory = "C:\\WINDOWS";
    std::map<int, std::string> specialFolders;  ///< by CSIDL number
    std::int64_t biasMinutes = 0;               ///< UTC = local time + bias
    double now = 0;
    int shellExecuteResult = 42;
    bool mayKeep = true;         ///< files of the program's own
    std::string openingRefusal;  ///< why; empty where the system tells that
    /// Writes dates in place of the form below, for a person of another country.
    std::function<std::string(double, DateForm)> writeDate;
    /// How many bytes output files can still take.
    std::uint64_t freeBytes = std::numeric_limits<std::uint64_t>::max();

    // --- Setting it up. References stay valid as long as the platform.

    MemoryKey& Root(KeyHandle root);
    /// A root of another computer, which can be connected to from now on.
    MemoryKey& RemoteRoot(const std::string& computer, KeyHandle root);
    /// Adds a file that RegLoadKeyA can load; the key is the hive's root.
    MemoryKey& AddHive(const std::string& file);
    /// Loads a hive under HKEY_USERS as a session does that holds it open.
    void MountHive(const std::string& name, const std::string& file);

    /// Adds a file, or replaces what was there; folders above are made as needed. A folder lists its entries
    /// in the order in which they were added.
    MemoryFile& AddFile(const std::string& path, std::span<const std::byte> bytes = {},
                        std::uint32_t attributes = 0);
    MemoryFile& AddFolder(const std::string& path, std::uint32_t attributes = 0);
    MemoryFile& AddShortcut(const std::string& path, const MemoryShortcut& shortcut);
    [[nodiscard]] MemoryFile* Find(const std::string& path);

    /// Makes a call, named as in Platform.h, fail: registry calls with this code, calls of the shell's
    /// objects, starts of programs and time conversions as failures, the management service's and those of
    /// output files by throwing. The first few may be let through.
    void Fail(const std::string& call, std::int32_t code = kAccessDenied, int after = 0);

    // --- What the program asked for, in order.

    /// The security identifiers of each look-up of names.
    std::vector<std::vector<std::string>> sidsLookedUp;
    struct KeyOpened {
        KeyHandle key;
        std::string subKey;
        std::uint32_t access;
        std::int32_t result;
    };
    struct HiveLoaded {
        KeyHandle root;
        std::string subKey;
        std::string file;
        std::int32_t result;
    };
    struct Executed {
        std::string verb;
        std::string file;
        std::string folder;
        int showCommand;
    };
    std::vector<KeyOpened> keysOpened;  ///< by RegOpenKeyExA and RegCreateKeyExA
    std::vector<HiveLoaded> hivesLoaded;
    std::vector<std::vector<std::string>> privilegesEnabled;  ///< one element for each adjustment
    std::vector<Executed> executed;
    std::vector<std::string> programsStarted;  ///< their command lines
    std::vector<std::string> filesOpened;
    /// "malloc", "desktop", "parse NAME", "bind PATH", "object PATH", "location WIDTH x HEIGHT, DEPTH bits,
    /// flags FLAGS, buffer SIZE", "extract PATH", "free PATH"; the path of no item is empty.
    std::vector<std::string> shellCalls;
    /// The item identifier lists that were not freed, with the paths of their items.
    std::map<ItemList, std::string> itemLists;
    /// Keys that are open at this time.
    [[nodiscard]] std::size_t OpenKeys() const { return openKeys_.size(); }

    // --- Platform.

    std::int32_t RegConnectRegistryA(const std::string& computer, KeyHandle root, KeyHandle& result) override;
    std::int32_t RegOpenKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                               KeyHandle& result) override;
    std::int32_t RegCreateKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                 KeyHandle& result) override;
    std::int32_t RegCloseKey(KeyHandle key) override;
    std::int32_t RegQueryInfoKeyA(KeyHandle key, KeyInfo& info) override;
    std::int32_t RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                               TextBuffer* keyClass) override;
    std::int32_t RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name, std::uint32_t& type,
                               std::byte* data, std::uint32_t& length) override;
    std::int32_t RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                  std::byte* data, std::uint32_t& length) override;
    std::int32_t RegSetValueExA(KeyHandle key, const std::string& name, std::uint32_t type,
                                std::span<const std::byte> data) override;
    std::int32_t RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file) override;
    void EnablePrivileges(std::span<const std::string> names) override;

    OSVersion GetVersionExA() override { return version; }
    std::vector<ProcessOwner> ShellProcessOwners() override;
    std::vector<GroupUser> GroupUsers() override;
    std::vector<std::vector<std::string>> UserAccountNames(std::span<const std::string> sids) override;
    std::string EnvironmentVariable(const std::string& name) override;

    std::string ApplicationFolder() override { return applicationFolder; }
    bool MayKeep(const std::string& /*path*/) override { return mayKeep; }
    std::string GetWindowsDirectoryA() override { return windowsDirectory; }
    std::string SpecialFolderPath(int csidl) override;
    bool PathFileExistsA(const std::string& path) override { return Find(path) != nullptr; }
    std::vector<DirectoryEntry> ListDirectory(const std::string& folder) override;
    std::optional<DirectoryEntry> FindEntry(const std::string& path) override;
    std::unique_ptr<InputFile> OpenFile(const std::string& path) override;
    std::unique_ptr<OutputFile> CreateOutputFile(const std::string& path,
                                                 Existing existing = Existing::Replace) override;
    void CreateOutputFolder(const std::string& path) override;
    std::unique_ptr<ShellLink> CreateShellLink() override;
    std::unique_ptr<ShellFolder> SHGetDesktopFolder() override;
    std::unique_ptr<ShellMalloc> SHGetMalloc() override;
    bool StartProgram(const std::string& commandLine) override;
    int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& folder,
                      int showCommand) override;
    std::string OpeningRefusal() override { return openingRefusal; }

    /// Code page 1252.
    std::string DecodeAnsi(std::string_view bytes) override;
    std::string EncodeAnsi(std::string_view text) override;
    std::optional<FileTime> FileTimeToLocalFileTime(const FileTime& time) override;
    std::optional<SystemTime> FileTimeToSystemTime(const FileTime& time) override;
    double Now() override { return now; }
    /// M/D/YYYY and h:mm:ss AM/PM; "" for what no calendar has.
    std::string DateToText(double date, DateForm form) override;
    std::optional<double> TextToDate(const std::string& text) override;

  private:
    friend class MemoryShellLink;
    friend class MemoryShellFolder;
    friend class MemoryImageExtractor;
    friend class MemoryOutputFile;
    struct OpenKey {
        std::shared_ptr<MemoryKey> key;
        std::uint32_t access = 0;
    };
    struct Failure {
        std::int32_t code;
        int after;
    };
    struct NoCaseLess {
        bool operator()(std::string_view left, std::string_view right) const;
    };

    /// What the test wants of this call: kSuccess to let it do its work.
    std::int32_t FailureOf(const std::string& call);
    void ThrowIfManagementFails(const std::string& call);
    [[nodiscard]] std::shared_ptr<MemoryKey> KeyOf(KeyHandle handle);
    /// The key behind a handle that was opened with this access.
    std::int32_t KeyFor(KeyHandle handle, std::uint32_t access, std::shared_ptr<MemoryKey>& key);
    KeyHandle Handle(std::shared_ptr<MemoryKey> key, std::uint32_t access);
    std::int32_t LoadHive(KeyHandle root, const std::string& subKey, const std::string& file);
    std::int32_t OpenAt(KeyHandle key, const std::string& subKey, KeyHandle& result, std::uint32_t access);
    std::int32_t CreateAt(KeyHandle key, const std::string& subKey, KeyHandle& result, std::uint32_t access);

    std::map<KeyHandle, std::shared_ptr<MemoryKey>> roots_;
    std::map<std::string, std::map<KeyHandle, std::shared_ptr<MemoryKey>>, NoCaseLess> computers_;
    std::map<KeyHandle, OpenKey> openKeys_;
    KeyHandle nextHandle_ = 0x100;
    ItemList nextItemList_ = 1;
    std::vector<std::string> enabledPrivileges_;
    std::deque<MemoryFile> files_;
    std::map<std::string, MemoryFile*, NoCaseLess> filesByPath_;
    std::map<std::string, Failure> failures_;
};

}  // namespace ostrevin
