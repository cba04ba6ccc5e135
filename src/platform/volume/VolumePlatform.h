// The platform of an offline Windows volume: every question is answered as the examined machine would have
// answered it, and nothing is ever written.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "platform/volume/CharsetDecoder.h"
#include "platform/volume/Examiner.h"
#include "platform/volume/HiveStore.h"
#include "platform/volume/OutputFiles.h"
#include "platform/volume/PictureDecoder.h"
#include "platform/volume/VolumeAccounts.h"
#include "platform/volume/VolumeEnvironment.h"
#include "platform/volume/VolumeFiles.h"
#include "platform/volume/VolumeFolders.h"
#include "platform/volume/VolumeOpener.h"
#include "platform/volume/VolumeRegistry.h"
#include "platform/volume/VolumeShell.h"

namespace ostrevin {

class VolumePlatform final : public Platform {
  public:
    /// Opens a mounted disk or a copied tree. Throws std::runtime_error with one line for the examiner when
    /// the folder cannot be opened or holds no Windows. notice, which may be empty, hears of every hive that
    /// cannot be read or had to be recovered, once each, now or later. The decoder makes the thumbnails;
    /// without one no file has any.
    static std::unique_ptr<VolumePlatform> Open(const std::string& folder, Notice notice,
                                                PictureDecoder decoder = {});

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

    OSVersion GetVersionExA() override;
    std::vector<ProcessOwner> ShellProcessOwners() override;
    std::vector<GroupUser> GroupUsers() override;
    std::vector<std::vector<std::string>> UserAccountNames(std::span<const std::string> sids) override;
    std::string EnvironmentVariable(const std::string& name) override;

    std::string ApplicationFolder() override;
    bool MayKeep(const std::string& path) override { return outputs_.MayKeep(path); }
    std::string GetWindowsDirectoryA() override;
    std::string SpecialFolderPath(int csidl) override;
    bool PathFileExistsA(const std::string& path) override;
    std::vector<DirectoryEntry> ListDirectory(const std::string& folder) override;
    std::optional<DirectoryEntry> FindEntry(const std::string& path) override;
    std::unique_ptr<InputFile> OpenFile(const std::string& path) override;
    /// By the host's paths, and never within the evidence.
    std::unique_ptr<OutputFile> CreateOutputFile(const std::string& path,
                                                 Existing existing = Existing::Replace) override;
    void CreateOutputFolder(const std::string& path) override;
    /// It loads from the volume and saves, by the host's paths, to the examiner's own disk alone.
    std::unique_ptr<ShellLink> CreateShellLink() override;
    std::unique_ptr<ShellFolder> SHGetDesktopFolder() override;
    std::unique_ptr<ShellMalloc> SHGetMalloc() override;
    /// Always false: no program of an examined machine is ever started.
    bool StartProgram(const std::string& commandLine) override;
    int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& folder,
                      int showCommand) override;
    std::string OpeningRefusal() override { return opener_.Refusal(); }
    bool OwnFileExists(const std::string& path) override;
    int OpenOwnFile(const std::string& file, const std::string& folder, int showCommand) override;

    std::string DecodeAnsi(std::string_view bytes) override;
    std::string EncodeAnsi(std::string_view text) override;
    std::optional<FileTime> FileTimeToLocalFileTime(const FileTime& time) override;
    std::optional<SystemTime> FileTimeToSystemTime(const FileTime& time) override;
    double Now() override;
    std::string DateToText(double date, DateForm form) override;
    std::optional<double> TextToDate(const std::string& text) override;

  private:
    VolumePlatform(const std::string& folder, Notice notice, PictureDecoder decoder);

    [[nodiscard]] std::string ReadWindowsFolder();
    void LogOn(const VolumeAccounts::User& user);
    [[nodiscard]] std::uint32_t AnsiCodePage();
    [[nodiscard]] const CharsetDecoder& Ansi();
    [[nodiscard]] std::int32_t Bias();
    bool SaveOutside(const std::string& hostPath, std::span<const std::byte> bytes);

    Examiner examiner_;
    VolumeFiles files_;
    std::string windowsName_;  // of the top-level folder
    HiveStore hives_;
    VolumeRegistry registry_;
    std::string windowsFolder_;  // as the machine knew it
    VolumeEnvironment environment_;
    VolumeAccounts accounts_;
    VolumeFolders folders_;
    OutputFiles outputs_;
    VolumeOpener opener_;
    VolumeShell shell_;
    std::optional<CharsetDecoder> ansi_;
    std::optional<CharsetEncoder> ansiEncoder_;
    std::optional<std::int32_t> bias_;
    std::optional<std::string> applicationFolder_;
};

}  // namespace ostrevin
