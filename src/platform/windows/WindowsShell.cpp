#include <windows.h>
#include <shlobj.h>
#include <string>
#include <utility>

#include "platform/ShellFolder.h"
#include "platform/windows/AnsiText.h"
#include "platform/windows/BitmapPoints.h"
#include "platform/windows/ComPointer.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

using windows::ComPointer;
using windows::Wide;

constexpr const wchar_t* kShellFolderId = L"{000214E6-0000-0000-C000-000000000046}";
constexpr const wchar_t* kExtractImageId = L"{BB2E617C-0920-11d1-9A0B-00C04FC2D6C1}";

/// The identifier of an interface by its text; one that no object has when the text is wrong.
IID InterfaceId(const wchar_t* text) {
    IID id{};
    return SUCCEEDED(IIDFromString(text, &id)) ? id : IID{};
}

ItemList ListOf(LPITEMIDLIST list) {
    return reinterpret_cast<ULONG_PTR>(list);
}

LPITEMIDLIST Native(ItemList list) {
    return reinterpret_cast<LPITEMIDLIST>(static_cast<ULONG_PTR>(list));
}

class WindowsShellMalloc final : public ShellMalloc {
  public:
    explicit WindowsShellMalloc(ComPointer<IMalloc> allocator) : allocator_(std::move(allocator)) {}

    void Free(ItemList list) override { allocator_->Free(Native(list)); }

  private:
    ComPointer<IMalloc> allocator_;
};

class WindowsImageExtractor final : public ImageExtractor {
  public:
    explicit WindowsImageExtractor(ComPointer<IExtractImage> extractor) : extractor_(std::move(extractor)) {}

    bool GetLocation(TextBuffer& location, std::uint32_t& priority, const ImageSize& size,
                     std::uint32_t colorDepth, std::uint32_t& flags) override {
        std::wstring name(location.capacity, L'\0');
        const SIZE wanted{size.cx, size.cy};
        DWORD nativePriority = priority;
        DWORD nativeFlags = flags;
        if (FAILED(extractor_->GetLocation(name.data(), location.capacity, &nativePriority, &wanted,
                                           colorDepth, &nativeFlags))) {
            return false;
        }
        location.text = windows::Utf8(name.c_str());
        priority = nativePriority;
        flags = nativeFlags;
        return true;
    }

    bool Extract(BitmapHandle& bitmap) override {
        HBITMAP extracted = nullptr;
        if (FAILED(extractor_->Extract(&extracted))) {
            return false;
        }
        bitmap = extracted == nullptr ? nullptr : windows::PointsOf(extracted);
        DeleteObject(extracted);
        return true;
    }

  private:
    ComPointer<IExtractImage> extractor_;
};

class WindowsShellFolder final : public ShellFolder {
  public:
    explicit WindowsShellFolder(ComPointer<IShellFolder> folder) : folder_(std::move(folder)) {}

    bool ParseDisplayName(const std::string& name, ItemList& list) override {
        std::wstring wide = Wide(name);
        LPITEMIDLIST parsed = nullptr;
        if (FAILED(folder_->ParseDisplayName(nullptr, nullptr, wide.data(), nullptr, &parsed, nullptr))) {
            return false;
        }
        list = ListOf(parsed);
        return true;
    }

    bool BindToObject(ItemList list, std::unique_ptr<ShellFolder>& folder) override {
        ComPointer<IShellFolder> bound;
        if (FAILED(
                folder_->BindToObject(Native(list), nullptr, InterfaceId(kShellFolderId), bound.PutVoid()))) {
            return false;
        }
        folder = std::make_unique<WindowsShellFolder>(std::move(bound));
        return true;
    }

    bool GetUIObjectOf(ItemList item, std::unique_ptr<ImageExtractor>& extractor) override {
        LPCITEMIDLIST items = Native(item);
        ComPointer<IExtractImage> found;
        // The call wants an item: a shell handed none reads at the address 0.
        if (items == nullptr ||
            FAILED(folder_->GetUIObjectOf(nullptr, 1, &items, InterfaceId(kExtractImageId), nullptr,
                                          found.PutVoid()))) {
            return false;
        }
        extractor = std::make_unique<WindowsImageExtractor>(std::move(found));
        return true;
    }

  private:
    ComPointer<IShellFolder> folder_;
};

}  // namespace

std::unique_ptr<ShellFolder> WindowsPlatform::SHGetDesktopFolder() {
    ComPointer<IShellFolder> desktop;
    if (FAILED(::SHGetDesktopFolder(desktop.Put()))) {
        return nullptr;
    }
    return std::make_unique<WindowsShellFolder>(std::move(desktop));
}

std::unique_ptr<ShellMalloc> WindowsPlatform::SHGetMalloc() {
    ComPointer<IMalloc> allocator;
    if (FAILED(::SHGetMalloc(allocator.Put()))) {
        return nullptr;
    }
    return std::make_unique<WindowsShellMalloc>(std::move(allocator));
}

bool WindowsPlatform::StartProgram(const std::string& commandLine) {
    std::wstring line = Wide(commandLine);
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESHOWWINDOW;
    how.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &process) ==
        0) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

int WindowsPlatform::ShellExecuteA(const std::string& verb, const std::string& file,
                                   const std::string& folder, int showCommand) {
    const HWND owner = mainWindow_();
    const std::optional<std::string> ansiFile = windows::ExactAnsi(file);
    const std::optional<std::string> ansiFolder = windows::ExactAnsi(folder);
    // A path that the code page does not hold can be opened in the W form alone.
    const HINSTANCE result = ansiFile && ansiFolder
                                 ? ::ShellExecuteA(owner, windows::Ansi(verb).c_str(), ansiFile->c_str(),
                                                   nullptr, ansiFolder->c_str(), showCommand)
                                 : ::ShellExecuteW(owner, Wide(verb).c_str(), Wide(file).c_str(), nullptr,
                                                   Wide(folder).c_str(), showCommand);
    return static_cast<int>(reinterpret_cast<INT_PTR>(result));
}

}  // namespace ostrevin
