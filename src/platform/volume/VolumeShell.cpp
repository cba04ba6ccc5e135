#include "platform/volume/VolumeShell.h"

#include <optional>
#include <utility>
#include <vector>

#include "platform/Text.h"
#include "platform/volume/VolumeFiles.h"

namespace ostrevin {
namespace {

constexpr std::uint64_t kLargestPicture = std::uint64_t{64} << 20U;  // in bytes

class VolumeShellMalloc final : public ShellMalloc {
  public:
    explicit VolumeShellMalloc(VolumeShell& shell) : shell_(shell) {}
    void Free(ItemList list) override { shell_.Free(list); }

  private:
    VolumeShell& shell_;
};

class VolumeImageExtractor final : public ImageExtractor {
  public:
    VolumeImageExtractor(const VolumeShell& shell, std::string path)
        : shell_(shell), path_(std::move(path)) {}

    bool GetLocation(TextBuffer& location, std::uint32_t& /*priority*/, const ImageSize& size,
                     std::uint32_t /*colorDepth*/, std::uint32_t& /*flags*/) override {
        if (Utf16Length(path_) >= location.capacity) {
            return false;
        }
        location.text = path_;
        size_ = size;
        return true;
    }

    bool Extract(BitmapHandle& bitmap) override {
        std::int32_t result = kSuccess;
        const std::unique_ptr<InputFile> file = shell_.Files().Open(path_, result);
        if (file == nullptr || size_.cx <= 0 || size_.cy <= 0) {
            return false;
        }
        const std::optional<std::vector<std::byte>> bytes = ReadAll(*file, kLargestPicture);
        BitmapHandle decoded = bytes ? shell_.Decoder().decode(*bytes, size_) : nullptr;
        if (decoded == nullptr) {
            return false;
        }
        bitmap = std::move(decoded);
        return true;
    }

  private:
    const VolumeShell& shell_;
    std::string path_;
    ImageSize size_;
};

/// A folder, or the desktop, whose path is empty.
class VolumeShellFolder final : public ShellFolder {
  public:
    VolumeShellFolder(VolumeShell& shell, std::string path) : shell_(shell), path_(std::move(path)) {}

    bool ParseDisplayName(const std::string& name, ItemList& list) override {
        const ItemList allocated = name.empty() ? 0 : shell_.Allocate(PathTo(name));
        if (allocated == 0) {
            return false;
        }
        list = allocated;
        return true;
    }

    bool BindToObject(ItemList list, std::unique_ptr<ShellFolder>& folder) override {
        std::string path = shell_.PathOf(list);
        if (!shell_.IsFolder(path)) {
            return false;
        }
        folder = std::make_unique<VolumeShellFolder>(shell_, std::move(path));
        return true;
    }

    bool GetUIObjectOf(ItemList item, std::unique_ptr<ImageExtractor>& extractor) override {
        std::string path = shell_.PathOf(item);
        if (!shell_.HasThumbnail(path)) {
            return false;
        }
        extractor = std::make_unique<VolumeImageExtractor>(shell_, std::move(path));
        return true;
    }

  private:
    [[nodiscard]] std::string PathTo(const std::string& name) const {
        return path_.empty() || path_.ends_with('\\') ? path_ + name : path_ + "\\" + name;
    }

    VolumeShell& shell_;
    std::string path_;
};

}  // namespace

VolumeShell::VolumeShell(const VolumeFiles& files, PictureDecoder decoder)
    : files_(files), decoder_(std::move(decoder)) {}

std::unique_ptr<ShellFolder> VolumeShell::DesktopFolder() {
    return std::make_unique<VolumeShellFolder>(*this, std::string());
}

std::unique_ptr<ShellMalloc> VolumeShell::Malloc() {
    return std::make_unique<VolumeShellMalloc>(*this);
}

ItemList VolumeShell::Allocate(const std::string& path) {
    if (!files_.Exists(path)) {
        return 0;
    }
    paths_[++last_] = path;
    return last_;
}

std::string VolumeShell::PathOf(ItemList list) const {
    const auto found = paths_.find(list);
    return found == paths_.end() ? std::string() : found->second;
}

bool VolumeShell::IsFolder(const std::string& path) const {
    const std::optional<std::vector<std::string>> components = PathComponents(path, files_.Drive());
    if (components && components->empty()) {
        return true;
    }
    const std::optional<DirectoryEntry> entry = files_.Find(path);
    return entry && (entry->attributes & kAttributeDirectory) != 0;
}

bool VolumeShell::HasThumbnail(const std::string& path) const {
    const std::optional<std::vector<std::string>> components = PathComponents(path, files_.Drive());
    if (!decoder_.reads || !components || components->empty() || IsFolder(path)) {
        return false;
    }
    const std::string& name = components->back();
    const std::size_t dot = name.rfind('.');
    return dot != std::string::npos && decoder_.reads(UpperCase(std::string_view(name).substr(dot + 1)));
}

}  // namespace ostrevin
