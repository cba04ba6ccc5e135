#include "platform/volume/VolumePlatform.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "platform/Dates.h"
#include "platform/HostFiles.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/volume/lnk/FileShellLink.h"

namespace ostrevin {
namespace {

constexpr const char* kWindowsNt = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr const char* kTimeZone = "SYSTEM\\CurrentControlSet\\Control\\TimeZoneInformation";
constexpr const char* kCodePage = "SYSTEM\\CurrentControlSet\\Control\\Nls\\CodePage";

constexpr std::uint32_t kPlatformNt = 2;
constexpr std::int64_t kFileTimeUnitsPerMinute = 600'000'000;
constexpr std::uint64_t kLargestShortcut = std::uint64_t{16} << 20U;  // in bytes

/// The hives that the running machine keeps loaded, by the names of their files.
struct ConfigHive {
    KeyHandle root;
    const char* name;
    const char* file;
};

constexpr std::array<ConfigHive, 6> kConfigHives = {{{kLocalMachine, "SAM", "SAM"},
                                                     {kLocalMachine, "SECURITY", "SECURITY"},
                                                     {kLocalMachine, "SOFTWARE", "software"},
                                                     {kLocalMachine, "SYSTEM", "system"},
                                                     {kUsers, ".DEFAULT", "default"},
                                                     {kUsers, "S-1-5-18", "default"}}};

std::string ConfigFile(const std::string& windowsName, const char* file) {
    return "\\" + windowsName + "\\system32\\config\\" + file;
}

/// The top-level folder that Windows is in. Throws when there is none.
std::string FindWindowsName(const VolumeFiles& files) {
    std::vector<std::string> names = {"WINDOWS", "WINNT"};
    for (const DirectoryEntry& entry : files.List("\\")) {
        names.push_back(entry.name);
    }
    for (const std::string& name : names) {
        if (files.Exists(ConfigFile(name, "software"))) {
            return files.Find("\\" + name)->name;
        }
    }
    throw std::runtime_error(
        files.RootPath() +
        ": no Windows folder (none of the top-level folders, such as WINDOWS or WINNT, holds "
        "system32/config/software)");
}

bool IsFolderOnDrive(const std::string& path) {
    return path.size() >= 3 && UpperCase(path.substr(0, 1)) >= "A" && UpperCase(path.substr(0, 1)) <= "Z" &&
           path[1] == ':' && path[2] == '\\';
}

std::uint32_t NumberIn(std::string_view text, std::uint32_t otherwise) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() ? number : otherwise;
}

}  // namespace

std::unique_ptr<VolumePlatform> VolumePlatform::Open(const std::string& folder, Notice notice,
                                                     PictureDecoder decoder) {
    return std::unique_ptr<VolumePlatform>(new VolumePlatform(folder, std::move(notice), std::move(decoder)));
}

VolumePlatform::VolumePlatform(const std::string& folder, Notice notice, PictureDecoder decoder)
    : files_(folder),
      windowsName_(FindWindowsName(files_)),
      hives_(files_, notice),
      registry_(files_, hives_),
      windowsFolder_(ReadWindowsFolder()),
      environment_(registry_, windowsFolder_, std::move(notice)),
      accounts_(hives_, registry_, environment_),
      folders_(registry_, environment_),
      outputs_(files_),
      opener_(files_, outputs_, examiner_),
      shell_(files_, std::move(decoder)) {
    if (accounts_.LoggedOnUser()) {
        LogOn(*accounts_.LoggedOnUser());
    }
}

/// Mounts the machine's hives and finds out what its Windows folder and its system drive were.
std::string VolumePlatform::ReadWindowsFolder() {
    for (const ConfigHive& hive : kConfigHives) {
        registry_.Mount(hive.root, hive.name, ConfigFile(windowsName_, hive.file));
    }
    std::string folder = registry_.Text(kLocalMachine, kWindowsNt, "SystemRoot");
    if (!IsFolderOnDrive(folder)) {
        folder = "C:\\" + windowsName_;
    }
    files_.SetDrive(UpperCase(folder.substr(0, 1)).front());
    return folder;
}

void VolumePlatform::LogOn(const VolumeAccounts::User& user) {
    registry_.Mount(kUsers, user.profile.sid, user.profile.HiveFile());
    registry_.SetCurrentUser(user.profile.sid);
    environment_.SetUser(user.name, user.profile.folder);
}

std::int32_t VolumePlatform::RegConnectRegistryA(const std::string& computer, KeyHandle root,
                                                 KeyHandle& result) {
    return registry_.RegConnectRegistryA(computer, root, result);
}

std::int32_t VolumePlatform::RegOpenKeyExA(KeyHandle key, const std::string& subKey, std::uint32_t /*access*/,
                                           KeyHandle& result) {
    return registry_.RegOpenKeyExA(key, subKey, result);
}

std::int32_t VolumePlatform::RegCreateKeyExA(KeyHandle key, const std::string& subKey,
                                             std::uint32_t /*access*/, KeyHandle& result) {
    return registry_.RegCreateKeyExA(key, subKey, result);
}

std::int32_t VolumePlatform::RegCloseKey(KeyHandle key) {
    return registry_.RegCloseKey(key);
}

std::int32_t VolumePlatform::RegQueryInfoKeyA(KeyHandle key, KeyInfo& info) {
    return registry_.RegQueryInfoKeyA(key, info);
}

std::int32_t VolumePlatform::RegEnumKeyExA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                           TextBuffer* keyClass) {
    return registry_.RegEnumKeyExA(key, index, name, keyClass);
}

std::int32_t VolumePlatform::RegEnumValueA(KeyHandle key, std::uint32_t index, TextBuffer& name,
                                           std::uint32_t& type, std::byte* data, std::uint32_t& length) {
    return registry_.RegEnumValueA(key, index, name, type, data, length);
}

std::int32_t VolumePlatform::RegQueryValueExA(KeyHandle key, const std::string& name, std::uint32_t& type,
                                              std::byte* data, std::uint32_t& length) {
    return registry_.RegQueryValueExA(key, name, type, data, length);
}

std::int32_t VolumePlatform::RegSetValueExA(KeyHandle key, const std::string& /*name*/,
                                            std::uint32_t /*type*/, std::span<const std::byte> /*data*/) {
    return registry_.RegSetValueExA(key);
}

std::int32_t VolumePlatform::RegLoadKeyA(KeyHandle root, const std::string& subKey, const std::string& file) {
    return registry_.RegLoadKeyA(root, subKey, file);
}

void VolumePlatform::EnablePrivileges(std::span<const std::string> /*names*/) {
    // What may be read of a volume is decided by the rights to its files.
}

OSVersion VolumePlatform::GetVersionExA() {
    const std::string version = registry_.Text(kLocalMachine, kWindowsNt, "CurrentVersion");
    const std::size_t dot = std::min(version.find('.'), version.size());
    const std::string_view text = version;
    return {kPlatformNt, NumberIn(text.substr(0, dot), 0),
            NumberIn(text.substr(std::min(dot + 1, text.size())), 0)};
}

std::vector<ProcessOwner> VolumePlatform::ShellProcessOwners() {
    const auto& user = accounts_.LoggedOnUser();
    return user ? std::vector<ProcessOwner>{{0, user->name}} : std::vector<ProcessOwner>();
}

std::vector<GroupUser> VolumePlatform::GroupUsers() {
    std::vector<std::string> configFiles;
    configFiles.reserve(kConfigHives.size());
    for (const ConfigHive& hive : kConfigHives) {
        configFiles.push_back(ConfigFile(windowsName_, hive.file));
    }
    const bool administrator = accounts_.LoggedOnUser() && accounts_.CanReadEverything(configFiles);
    return administrator ? std::vector<GroupUser>{accounts_.Administratorship()} : std::vector<GroupUser>();
}

std::vector<std::vector<std::string>> VolumePlatform::UserAccountNames(std::span<const std::string> sids) {
    std::vector<std::vector<std::string>> names(sids.size());
    for (std::size_t i = 0; i < sids.size(); ++i) {
        if (const std::optional<std::string> name = accounts_.NameOf(sids[i])) {
            names[i].push_back(*name);
        }
    }
    return names;
}

std::string VolumePlatform::EnvironmentVariable(const std::string& name) {
    return environment_.Get(name);
}

std::string VolumePlatform::ApplicationFolder() {
    if (!applicationFolder_) {
        applicationFolder_ = examiner_.ApplicationFolder(files_);
    }
    return *applicationFolder_;
}

std::string VolumePlatform::GetWindowsDirectoryA() {
    return windowsFolder_;
}

std::string VolumePlatform::SpecialFolderPath(int csidl) {
    return folders_.Path(csidl);
}

bool VolumePlatform::PathFileExistsA(const std::string& path) {
    return files_.Exists(path);
}

std::vector<DirectoryEntry> VolumePlatform::ListDirectory(const std::string& folder) {
    return files_.List(folder);
}

std::optional<DirectoryEntry> VolumePlatform::FindEntry(const std::string& path) {
    return files_.Find(path);
}

std::unique_ptr<InputFile> VolumePlatform::OpenFile(const std::string& path) {
    std::int32_t result = kSuccess;
    return files_.Open(path, result);
}

std::unique_ptr<OutputFile> VolumePlatform::CreateOutputFile(const std::string& path, Existing existing) {
    return outputs_.Create(path, existing);
}

void VolumePlatform::CreateOutputFolder(const std::string& path) {
    outputs_.CreateFolder(path);
}

std::unique_ptr<ShellLink> VolumePlatform::CreateShellLink() {
    const auto load = [this](const std::string& path) -> std::optional<std::vector<std::byte>> {
        const std::unique_ptr<InputFile> file = OpenFile(path);
        return file ? ReadAll(*file, kLargestShortcut) : std::nullopt;
    };
    const auto save = [this](const std::string& path, std::span<const std::byte> bytes) {
        return SaveOutside(path, bytes);
    };
    return std::make_unique<lnk::FileShellLink>(
        load, save,
        lnk::ShellHost{[this](std::string_view bytes) { return DecodeAnsi(bytes); },
                       [this](const std::string& text) { return environment_.Expand(text); },
                       [this](int csidl) { return SpecialFolderPath(csidl); }});
}

std::unique_ptr<ShellFolder> VolumePlatform::SHGetDesktopFolder() {
    return shell_.DesktopFolder();
}

std::unique_ptr<ShellMalloc> VolumePlatform::SHGetMalloc() {
    return shell_.Malloc();
}

bool VolumePlatform::StartProgram(const std::string& /*commandLine*/) {
    return false;
}

/// Writes a file by an absolute path of the host, unless that lies within the evidence.
bool VolumePlatform::SaveOutside(const std::string& hostPath, std::span<const std::byte> bytes) {
    if (!IsAbsoluteHostPath(hostPath)) {
        return false;
    }
    try {
        const std::unique_ptr<OutputFile> file = outputs_.Create(hostPath);
        file->Write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        file->Close();
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

int VolumePlatform::ShellExecuteA(const std::string& verb, const std::string& file,
                                  const std::string& /*folder*/, int /*showCommand*/) {
    return verb == "open" || verb.empty() ? opener_.Open(file, Ansi()) : kOpenRefused;
}

bool VolumePlatform::OwnFileExists(const std::string& path) {
    return outputs_.Find(path).has_value();
}

int VolumePlatform::OpenOwnFile(const std::string& file, const std::string& /*folder*/, int /*showCommand*/) {
    return opener_.OpenOwn(file, ApplicationFolder());
}

std::string VolumePlatform::DecodeAnsi(std::string_view bytes) {
    return Ansi().Decode(bytes);
}

std::string VolumePlatform::EncodeAnsi(std::string_view text) {
    if (!ansiEncoder_) {
        ansiEncoder_.emplace(AnsiCodePage());
    }
    return ansiEncoder_->Encode(text);
}

std::uint32_t VolumePlatform::AnsiCodePage() {
    return NumberIn(registry_.Text(kLocalMachine, kCodePage, "ACP"), kWesternCodePage);
}

const CharsetDecoder& VolumePlatform::Ansi() {
    if (!ansi_) {
        ansi_.emplace(AnsiCodePage());
    }
    return *ansi_;
}

std::optional<FileTime> VolumePlatform::FileTimeToLocalFileTime(const FileTime& time) {
    const std::uint64_t utc = (std::uint64_t{time.high} << 32U) | time.low;
    if (utc == 0) {
        return std::nullopt;  // no time at all, which no zone may turn into one
    }
    // The live call subtracts without looking at the result.
    const std::uint64_t local = utc - static_cast<std::uint64_t>(Bias() * kFileTimeUnitsPerMinute);
    return FileTime{static_cast<std::uint32_t>(local), static_cast<std::uint32_t>(local >> 32U)};
}

std::optional<SystemTime> VolumePlatform::FileTimeToSystemTime(const FileTime& time) {
    return CivilFromFileTime(time);
}

/// Minutes from the machine's local time to UTC: the bias that was in force, as the live conversion takes it.
std::int32_t VolumePlatform::Bias() {
    if (!bias_) {
        const std::optional<std::uint32_t> active =
            registry_.Number(kLocalMachine, kTimeZone, "ActiveTimeBias");
        bias_ = active ? static_cast<std::int32_t>(*active) : examiner_.UtcBias();
    }
    return *bias_;
}

double VolumePlatform::Now() {
    return examiner_.Now();
}

std::string VolumePlatform::DateToText(double date, DateForm form) {
    return examiner_.Dates().Write(date, form);
}

std::optional<double> VolumePlatform::TextToDate(const std::string& text) {
    return examiner_.Dates().Read(text);
}

}  // namespace ostrevin
