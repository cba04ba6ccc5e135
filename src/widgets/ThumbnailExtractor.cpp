#include "widgets/ThumbnailExtractor.h"

#include <utility>

namespace ostrevin {
namespace {

constexpr std::uint32_t kLocationSize = 260;
constexpr std::uint32_t kColorDepth = 32;
constexpr std::uint32_t kWanted =
    ImageExtractor::kOffline | ImageExtractor::kScreen | ImageExtractor::kNoBorder | ImageExtractor::kQuality;

}  // namespace

bool ThumbnailExtractor::Generate(const std::string& path, std::int16_t width, std::int16_t height) {
    const std::unique_ptr<ShellFolder> desktop = GetDesktopFolder();
    ItemList folderList = 0;
    if (desktop == nullptr || !desktop->ParseDisplayName(GetFolderPart(path), folderList)) {
        return false;
    }
    std::unique_ptr<ShellFolder> folder;
    if (!desktop->BindToObject(folderList, folder)) {
        return false;  // the list stays allocated here, and where the extraction fails
    }
    ItemList fileList = 0;
    // A name that is not found shows in the next call, which is asked for no item then.
    static_cast<void>(folder->ParseDisplayName(GetFileNamePart(path), fileList));
    std::unique_ptr<ImageExtractor> extractor;
    if (!folder->GetUIObjectOf(fileList, extractor)) {
        Free(folderList);
        Free(fileList);
        return false;
    }
    TextBuffer location{kLocationSize, {}};
    std::uint32_t priority = 0;
    std::uint32_t flags = kWanted;
    // A size that is refused shows in the extraction.
    static_cast<void>(extractor->GetLocation(location, priority, {width, height}, kColorDepth, flags));
    BitmapHandle bitmap;
    if (!extractor->Extract(bitmap)) {
        return false;
    }
    Free(folderList);
    Free(fileList);
    picture_ = BitmapToPicture(std::move(bitmap));
    return picture_ != nullptr;
}

ShellMalloc* ThumbnailExtractor::GetMalloc() {
    if (malloc_ == nullptr) {
        malloc_ = platform_.SHGetMalloc();
    }
    return malloc_.get();
}

void ThumbnailExtractor::Free(ItemList list) {
    if (ShellMalloc* const allocator = GetMalloc()) {
        allocator->Free(list);
    }
}

PicturePtr ThumbnailExtractor::BitmapToPicture(BitmapHandle bitmap) {
    if (bitmap == nullptr) {
        return nullptr;
    }
    return std::make_shared<const ostrevin::Picture>(
        ostrevin::Picture{bitmap->width, bitmap->height, std::move(bitmap->points)});
}

std::unique_ptr<ShellFolder> ThumbnailExtractor::GetDesktopFolder() {
    return platform_.SHGetDesktopFolder();
}

/// The path before its last "\", which stays where it stands for a drive's root.
std::string ThumbnailExtractor::GetFolderPart(const std::string& path) {
    const std::size_t last = path.rfind('\\');
    if (last == std::string::npos) {
        return {};
    }
    const std::string folder = path.substr(0, last);
    return folder.ends_with(':') ? path.substr(0, last + 1) : folder;
}

/// What follows the last "\"; without one, nothing: a bare name is no full path.
std::string ThumbnailExtractor::GetFileNamePart(const std::string& path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string::npos ? std::string() : path.substr(last + 1);
}

}  // namespace ostrevin
