// The thumbnail of a file, as the shell makes it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "controls/Picture.h"
#include "platform/Platform.h"
#include "platform/ShellFolder.h"

namespace ostrevin {

class ThumbnailExtractor {
  public:
    explicit ThumbnailExtractor(Platform& platform) : platform_(platform) {}

    /// The picture of the last Generate that got as far as an extraction; null for none.
    [[nodiscard]] const PicturePtr& Picture() const { return picture_; }
    /// Makes the thumbnail of a file (its full path) to fit a box (in pixels); whether there is one now.
    bool Generate(const std::string& path, std::int16_t width, std::int16_t height);

  private:
    /// Null when the shell has none.
    [[nodiscard]] ShellMalloc* GetMalloc();
    [[nodiscard]] static PicturePtr BitmapToPicture(BitmapHandle bitmap);
    [[nodiscard]] std::unique_ptr<ShellFolder> GetDesktopFolder();
    [[nodiscard]] static std::string GetFolderPart(const std::string& path);
    [[nodiscard]] static std::string GetFileNamePart(const std::string& path);
    void Free(ItemList list);

    Platform& platform_;
    PicturePtr picture_;
    std::unique_ptr<ShellMalloc> malloc_;
};

}  // namespace ostrevin
