// What the program asks of the machine that it examines: one interface, in terms of the calls that it makes.
//
// The names, result codes and buffer rules are those of the Windows calls, because the code above depends on
// them: an enumeration ends at the first code that is not 0, a value larger than the buffer is code 234, and
// a short value leaves the rest of the caller's buffer as it was.
//
// All text is UTF-8. Where a call counts characters, it counts UTF-16 code units, as the machine would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrevin {

/// Result codes of the registry calls, with Windows' own numbers.
enum ResultCode : std::int32_t {
    kSuccess = 0,
    kFileNotFound = 2,
    kPathNotFound = 3,
    kAccessDenied = 5,
    kInvalidHandle = 6,
    kSharingViolation = 32,
    kBadNetworkPath = 53,
    kInvalidParameter = 87,
    kBadPathName = 161,
    kMoreData = 234,
    kNoMoreItems = 259,
    kBadDatabase = 1009,      // the registry database is corrupt
    kNotRegistryFile = 1017,  // the file is not a hive
};

/// Type numbers of registry values.
enum RegistryType : std::uint32_t {
    kRegNone = 0,
    kRegSz = 1,
    kRegExpandSz = 2,
    kRegBinary = 3,
    kRegDword = 4,
    kRegMultiSz = 7,
};

/// An open registry key, or one of the roots.
using KeyHandle = std::uint64_t;

inline constexpr KeyHandle kClassesRoot = 0x80000000;
inline constexpr KeyHandle kCurrentUser = 0x80000001;
inline constexpr KeyHandle kLocalMachine = 0x80000002;
inline constexpr KeyHandle kUsers = 0x80000003;
inline constexpr KeyHandle kPerformanceData = 0x80000004;
inline constexpr KeyHandle kCurrentConfig = 0x80000005;
inline constexpr KeyHandle kDynData = 0x80000006;

/// A caller's text buffer.
struct TextBuffer {
    std::uint32_t capacity = 0;  ///< in characters, the terminating NUL included
    std::string text;            ///< what the call stored; left as it was when the call stored nothing
};

/// What RegQueryInfoKeyA tells. Lengths are in characters, without the terminating NUL.
struct KeyInfo {
    std::uint32_t subKeys = 0;
    std::uint32_t longestSubKeyName = 0;
    std::uint32_t values = 0;
    std::uint32_t longestValueName = 0;
};

struct OSVersion {
    std::uint32_t platformId = 0;
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
};

/// What the method "getowner" of one process returned.
struct ProcessOwner {
    std::uint32_t result = 0;  ///< 0: user is valid
    std::string user;
};

/// One membership record: the object paths of a group and of a member of it.
struct GroupUser {
    std::string groupComponent;
    std::string partComponent;
};

/// 100-ns units since 1601-01-01, in two halves, as files and the registry hold it.
struct FileTime {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
};

struct SystemTime {
    int year = 0;   ///< 1601 and later
    int month = 0;  ///< 1 to 12
    int day = 0;    ///< 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int milliseconds = 0;
};

/// Attributes of a file or folder, with Windows' own numbers.
enum FileAttribute : std::uint32_t {
    kAttributeReadOnly = 0x1,
    kAttributeHidden = 0x2,
    kAttributeSystem = 0x4,
    kAttributeDirectory = 0x10,
};

struct DirectoryEntry {
    std::string name;
    std::uint32_t attributes = 0;
};

/// A file opened for reading.
class InputFile {
  public:
    virtual ~InputFile() = default;
    [[nodiscard]] virtual std::uint64_t Size() const = 0;
    /// Reads from a byte offset; returns how many bytes were read, fewer than asked for only at the end of
    /// the file or when it can no longer be read.
    virtual std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) = 0;
};

/// What becomes of a file in whose place a new one is to be written.
enum class Existing : std::uint8_t {
    Replace,
    Keep,  ///< and the new one is not written
};

/// A file opened for writing. It is closed at the end of its life; a failure that shows only then is not
/// told.
class OutputFile {
  public:
    virtual ~OutputFile() = default;
    // Both raise RuntimeError when not all of it could be written; what was written before stays in the file.
    virtual void Write(std::string_view bytes) = 0;
    virtual void Close() = 0;
};

/// The shell's shortcut object. Each call returns false when it fails, and then stores nothing.
class ShellLink {
  public:
    virtual ~ShellLink() = default;
    virtual bool Load(const std::string& path) = 0;
    /// The target's path; kPathUnc prefers the network form.
    virtual bool GetPath(TextBuffer& path, std::uint32_t flags) = 0;
    virtual bool GetWorkingDirectory(TextBuffer& folder) = 0;
    virtual bool GetArguments(TextBuffer& arguments) = 0;
    virtual bool GetDescription(TextBuffer& description) = 0;
    virtual bool GetHotkey(std::uint16_t& hotkey) = 0;
    virtual bool GetIconLocation(TextBuffer& file, std::int32_t& index) = 0;
    virtual bool GetShowCmd(std::int32_t& showCommand) = 0;

    virtual bool SetPath(const std::string& path) = 0;
    virtual bool SetWorkingDirectory(const std::string& folder) = 0;
    virtual bool SetArguments(const std::string& arguments) = 0;
    virtual bool SetDescription(const std::string& description) = 0;
    virtual bool SetHotkey(std::uint16_t hotkey) = 0;
    virtual bool SetIconLocation(const std::string& file, std::int32_t index) = 0;
    virtual bool SetShowCmd(std::int32_t showCommand) = 0;
    virtual bool Save(const std::string& path) = 0;

    static constexpr std::uint32_t kPathUnc = 2;
};

/// The forms in which a date becomes text, all in the locale of the person at the screen.
enum class DateForm {
    General,    ///< short date, a blank and long time; the time is left out when it is 0:00:00
    ShortDate,  ///< the year always in four digits
    LongTime,
};

class ShellFolder;
class ShellMalloc;

class Platform {
  public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    // --- Registry. Sub-key paths are separated by "\"; an empty one names the key itself.

    virtual std::int32_t RegConnectRegistryA(const std::string& computer, KeyHandle root,
                                             KeyHandle& result) = 0;
    virtual std::int32_t RegOpenKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                       KeyHandle& result) = 0;
    virtual std::int32_t RegCreateKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t access,
                                         KeyHandle& result) = 0;
    virtual std::int32_t RegCloseKey(KeyHandle key) = 0;
    virtual std::int32_t RegQueryInfoKeyA(KeyHandle key, KeyInfo& info) = 0;
    /// keyClass may be null. With kMoreData, what fits is stored.
    virtual std::int32_t RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                       TextBuffer* keyClass) = 0;
    /// A value's data is its bytes as stored; only text types (1, 2, 7) are converted to UTF-8, their NULs
    /// included. length is the buffer's size on entry and the data's size on return. A null data pointer asks
    /// for the type and the size alone.
    virtual std::int32_t RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                       std::uint32_t& type, std::byte* data, std::uint32_t& length) = 0;
    virtual std::int32_t RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                          std::byte* data, std::uint32_t& length) = 0;
    virtual std::int32_t RegSetValueExA(KeyHandle key, const std::string& name, std::uint32_t type,
                                        std::span<const std::byte> data) = 0;
    virtual std::int32_t RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file) = 0;

    /// Enables privileges of this process by their names, all in one adjustment; failures are not reported.
    virtual void EnablePrivileges(std::span<const std::string> names) = 0;

    // --- The host and its accounts.

    virtual OSVersion GetVersionExA() = 0;
    /// The owners of the shell's processes (explorer.exe) in session 0, in the order of the query. Throws
    /// std::runtime_error when the management service cannot be reached. A query that breaks off gives the
    /// records up to there.
    virtual std::vector<ProcessOwner> ShellProcessOwners() = 0;
    /// Every group membership of the machine. Throws std::runtime_error when it cannot be asked for.
    virtual std::vector<GroupUser> GroupUsers() = 0;
    /// For each security identifier the names of the accounts that have it: one, or none. The management
    /// service is bound once for all. Throws std::runtime_error when it cannot be, or does not answer.
    virtual std::vector<std::vector<std::string>> UserAccountNames(std::span<const std::string> sids) = 0;
    /// A variable of the examined session's environment; empty when it is not set.
    virtual std::string EnvironmentVariable(const std::string& name) = 0;

    // --- Folders and files of the machine.

    /// The folder of the executable, ending in the host's path separator; empty when nothing of the program's
    /// own may be kept.
    virtual std::string ApplicationFolder() = 0;
    /// Whether a file of the program's own may be kept at this path of the host.
    virtual bool MayKeep(const std::string& /*path*/) { return true; }
    virtual std::string GetWindowsDirectoryA() = 0;
    /// The folder with this CSIDL number, or the empty string.
    virtual std::string SpecialFolderPath(int csidl) = 0;
    /// Whether the path names an existing file or folder.
    virtual bool PathFileExistsA(const std::string& path) = 0;
    /// The entries of a folder but "." and "..", in the order in which the file system lists them. A folder
    /// that cannot be listed has none.
    virtual std::vector<DirectoryEntry> ListDirectory(const std::string& folder) = 0;
    /// What a directory query for exactly this path yields, hidden and system entries included.
    virtual std::optional<DirectoryEntry> FindEntry(const std::string& path) = 0;
    /// Null when it is not a file that can be read.
    virtual std::unique_ptr<InputFile> OpenFile(const std::string& path) = 0;
    /// Opens a file of the program's own for writing: a missing one is created, what another one held is gone
    /// if it may be replaced. From then on OwnFileExists finds it and OpenOwnFile opens it by exactly this
    /// path. Raises RuntimeError when it cannot be written, with a number of its own when there is one to be
    /// kept.
    virtual std::unique_ptr<OutputFile> CreateOutputFile(const std::string& path,
                                                         Existing existing = Existing::Replace) = 0;
    /// Makes a folder for such files in one that exists; one that is there stays as it is. Raises
    /// RuntimeError when it cannot be made.
    virtual void CreateOutputFolder(const std::string& path) = 0;
    virtual std::unique_ptr<ShellLink> CreateShellLink() = 0;
    /// The root of the shell's namespace (platform/ShellFolder.h); null when it cannot be had.
    virtual std::unique_ptr<ShellFolder> SHGetDesktopFolder() = 0;
    /// What frees the shell's item identifier lists; null when it cannot be had.
    virtual std::unique_ptr<ShellMalloc> SHGetMalloc() = 0;
    /// Starts a program in a normal window that gets the focus; false when it cannot.
    virtual bool StartProgram(const std::string& commandLine) = 0;
    /// Opens a document or an address; greater than 32 on success, else the shell's error number.
    virtual int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& folder,
                              int showCommand) = 0;
    /// Why the last call of ShellExecuteA was refused, for a person; empty where it was not, and on a machine
    /// whose system tells that itself.
    virtual std::string OpeningRefusal() { return {}; }

    // The program's own files: what it wrote, and its manual. A path that the machine names is never one of
    // them, though it may read the same; the live machine is the program's own.
    virtual bool OwnFileExists(const std::string& path) { return PathFileExistsA(path); }
    /// As ShellExecuteA with the verb "open".
    virtual int OpenOwnFile(const std::string& file, const std::string& folder, int showCommand) {
        return ShellExecuteA("open", file, folder, showCommand);
    }

    // --- Text, time and dates. A date is the double that counts days since 1899-12-30.

    /// Single-byte text in the machine's code page, as UTF-8.
    virtual std::string DecodeAnsi(std::string_view bytes) = 0;
    /// UTF-8 in the machine's code page, "?" for every character that it does not hold and every byte that is
    /// no UTF-8.
    virtual std::string EncodeAnsi(std::string_view text) = 0;
    /// None when the time cannot be converted.
    virtual std::optional<FileTime> FileTimeToLocalFileTime(const FileTime& time) = 0;
    /// None when the time cannot be converted.
    virtual std::optional<SystemTime> FileTimeToSystemTime(const FileTime& time) = 0;
    /// The date and time of the person at the screen.
    virtual double Now() = 0;
    virtual std::string DateToText(double date, DateForm form) = 0;
    /// Reads what DateToText wrote, and what the locale's user would type; none when it is not a date.
    virtual std::optional<double> TextToDate(const std::string& text) = 0;
};

}  // namespace ostrevin
