// The platform of the live machine: every question is put to Windows itself, in the A forms of its calls
// where these take or give text of the registry and the shell. That text is converted here, at the call.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "platform/windows/ComApartment.h"
#include "platform/windows/WindowsDates.h"

struct HWND__;  // what an HWND points to; Windows' own header would bring its macros along

namespace ostrevin {

class WindowsPlatform final : public Platform {
  public:
    /// What the shell shows when it opens something belongs to the window that mainWindow gives, which may be
    /// none.
    explicit WindowsPlatform(std::function<HWND__*()> mainWindow = [] { return nullptr; })
        : mainWindow_(std::move(mainWindow)) {}

    // Registry (WindowsRegistry.cpp).
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

    // The management service's answers (WindowsAccounts.cpp).
    std::vector<ProcessOwner> ShellProcessOwners() override;
    std::vector<GroupUser> GroupUsers() override;
    std::vector<std::vector<std::string>> UserAccountNames(std::span<const std::string> sids) override;

    // The host, its folders and its time (WindowsHost.cpp).
    void EnablePrivileges(std::span<const std::string> names) override;
    OSVersion GetVersionExA() override;
    std::string EnvironmentVariable(const std::string& name) override;
    std::string ApplicationFolder() override;
    std::string GetWindowsDirectoryA() override;
    std::string SpecialFolderPath(int csidl) override;
    std::string DecodeAnsi(std::string_view bytes) override;
    std::string EncodeAnsi(std::string_view text) override;
    std::optional<FileTime> FileTimeToLocalFileTime(const FileTime& time) override;
    std::optional<SystemTime> FileTimeToSystemTime(const FileTime& time) override;
    double Now() override;
    std::string DateToText(double date, DateForm form) override;
    std::optional<double> TextToDate(const std::string& text) override;

    // Files (WindowsFiles.cpp).
    bool PathFileExistsA(const std::string& path) override;
    std::vector<DirectoryEntry> ListDirectory(const std::string& folder) override;
    std::optional<DirectoryEntry> FindEntry(const std::string& path) override;
    std::unique_ptr<InputFile> OpenFile(const std::string& path) override;
    std::unique_ptr<OutputFile> CreateOutputFile(const std::string& path,
                                                 Existing existing = Existing::Replace) override;
    void CreateOutputFolder(const std::string& path) override;

    // The shell (WindowsShellLink.cpp, WindowsShell.cpp).
    std::unique_ptr<ShellLink> CreateShellLink() override;
    std::unique_ptr<ShellFolder> SHGetDesktopFolder() override;
    std::unique_ptr<ShellMalloc> SHGetMalloc() override;
    bool StartProgram(const std::string& commandLine) override;
    int ShellExecuteA(const std::string& verb, const std::string& file, const std::string& folder,
                      int showCommand) override;

  private:
    std::function<HWND__*()> mainWindow_;
    windows::ComApartment apartment_;
    windows::WindowsDates dates_;
};

}  // namespace ostrevin
