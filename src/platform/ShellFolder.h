// The part of the shell's namespace that the thumbnail of a file is asked of. Each call returns false when it
// fails, and then stores nothing. None of these objects may outlive its platform.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

/// An item identifier list, which names an item within a folder. It stays allocated until it is freed; 0 is
/// none.
using ItemList = std::uint64_t;

/// A picture made of points; null is the zero handle.
struct Bitmap {
    int width = 0;
    int height = 0;
    /// width x height of them, row by row from the top left: 0xAARRGGBB, the colour not multiplied by alpha.
    std::vector<std::uint32_t> points;
};
using BitmapHandle = std::unique_ptr<Bitmap>;

class ShellMalloc {
  public:
    virtual ~ShellMalloc() = default;
    virtual void Free(ItemList list) = 0;
};

struct ImageSize {
    std::int32_t cx = 0;  ///< in pixels, as cy
    std::int32_t cy = 0;
};

/// Makes the thumbnail of one file.
class ImageExtractor {
  public:
    virtual ~ImageExtractor() = default;
    /// Announces the wanted image. flags are those below; the location is a name for the image.
    virtual bool GetLocation(TextBuffer& location, std::uint32_t& priority, const ImageSize& size,
                             std::uint32_t colorDepth, std::uint32_t& flags) = 0;
    /// An image that keeps its ratio within the announced size. A success may give the zero handle.
    virtual bool Extract(BitmapHandle& bitmap) = 0;

    static constexpr std::uint32_t kOffline = 0x8;  ///< from the file alone, without a network
    static constexpr std::uint32_t kScreen = 0x20;
    static constexpr std::uint32_t kNoBorder = 0x100;
    static constexpr std::uint32_t kQuality = 0x200;  ///< good rather than fast
};

class ShellFolder {
  public:
    virtual ~ShellFolder() = default;
    /// The list of an item in this folder; to the desktop, a path is a name, too.
    virtual bool ParseDisplayName(const std::string& name, ItemList& list) = 0;
    virtual bool BindToObject(ItemList list, std::unique_ptr<ShellFolder>& folder) = 0;
    /// Fails for an item that has no thumbnail handler.
    virtual bool GetUIObjectOf(ItemList item, std::unique_ptr<ImageExtractor>& extractor) = 0;
};

}  // namespace ostrevin
