#include <windows.h>
#include <algorithm>
#include <shlobj.h>
#include <string>

#include "platform/windows/AnsiText.h"
#include "platform/windows/ComPointer.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

using windows::Ansi;
using windows::ComPointer;

constexpr DWORD kRead = 0;  // the mode that asks for nothing but reading

/// The shell's own shortcut object. Where it cannot be had, every call fails.
class WindowsShellLink final : public ShellLink {
  public:
    WindowsShellLink() {
        if (SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                       link_.PutVoid())) &&
            FAILED(link_->QueryInterface(IID_IPersistFile, file_.PutVoid()))) {
            link_ = {};
        }
    }

    bool Load(const std::string& path) override {
        return Succeeds([&] { return file_->Load(windows::Wide(path).c_str(), kRead); });
    }
    bool GetPath(TextBuffer& path, std::uint32_t flags) override {
        return GetText(path,
                       [&](char* text, int size) { return link_->GetPath(text, size, nullptr, flags); });
    }
    bool GetWorkingDirectory(TextBuffer& folder) override {
        return GetText(folder, [&](char* text, int size) { return link_->GetWorkingDirectory(text, size); });
    }
    bool GetArguments(TextBuffer& arguments) override {
        return GetText(arguments, [&](char* text, int size) { return link_->GetArguments(text, size); });
    }
    bool GetDescription(TextBuffer& description) override {
        return GetText(description, [&](char* text, int size) { return link_->GetDescription(text, size); });
    }
    bool GetHotkey(std::uint16_t& hotkey) override {
        return GetNumber(hotkey, [&](WORD& number) { return link_->GetHotkey(&number); });
    }
    bool GetIconLocation(TextBuffer& file, std::int32_t& index) override {
        int stored = 0;
        if (!GetText(file,
                     [&](char* text, int size) { return link_->GetIconLocation(text, size, &stored); })) {
            return false;
        }
        index = stored;
        return true;
    }
    bool GetShowCmd(std::int32_t& showCommand) override {
        return GetNumber(showCommand, [&](int& number) { return link_->GetShowCmd(&number); });
    }

    bool SetPath(const std::string& path) override {
        return Succeeds([&] { return link_->SetPath(Ansi(path).c_str()); });
    }
    bool SetWorkingDirectory(const std::string& folder) override {
        return Succeeds([&] { return link_->SetWorkingDirectory(Ansi(folder).c_str()); });
    }
    bool SetArguments(const std::string& arguments) override {
        return Succeeds([&] { return link_->SetArguments(Ansi(arguments).c_str()); });
    }
    bool SetDescription(const std::string& description) override {
        return Succeeds([&] { return link_->SetDescription(Ansi(description).c_str()); });
    }
    bool SetHotkey(std::uint16_t hotkey) override {
        return Succeeds([&] { return link_->SetHotkey(hotkey); });
    }
    bool SetIconLocation(const std::string& file, std::int32_t index) override {
        return Succeeds([&] { return link_->SetIconLocation(Ansi(file).c_str(), index); });
    }
    bool SetShowCmd(std::int32_t showCommand) override {
        return Succeeds([&] { return link_->SetShowCmd(showCommand); });
    }
    bool Save(const std::string& path) override {
        return Succeeds([&] { return file_->Save(windows::Wide(path).c_str(), TRUE); });
    }

  private:
    template <typename Call>
    [[nodiscard]] bool Succeeds(Call call) const {
        return link_ && SUCCEEDED(call());
    }

    template <typename Call>
    bool GetText(TextBuffer& buffer, Call call) const {
        std::string text(buffer.capacity, '\0');
        if (!Succeeds([&] { return call(text.data(), static_cast<int>(text.size())); })) {
            return false;
        }
        // An object may fill the buffer and leave the NUL out.
        const std::size_t most = text.empty() ? 0 : text.size() - 1;
        buffer.text = windows::AnsiToUtf8(text.substr(0, std::min(text.find('\0'), most)));
        return true;
    }

    template <typename Number, typename Call>
    bool GetNumber(Number& number, Call call) const {
        Number stored = 0;
        if (!Succeeds([&] { return call(stored); })) {
            return false;
        }
        number = stored;
        return true;
    }

    ComPointer<IShellLinkA> link_;
    ComPointer<IPersistFile> file_;
};

}  // namespace

std::unique_ptr<ShellLink> WindowsPlatform::CreateShellLink() {
    return std::make_unique<WindowsShellLink>();
}

}  // namespace ostrevin
