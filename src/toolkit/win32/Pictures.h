// The program's own pictures, which are resources, and image lists made of them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <type_traits>

#include "controls/ImageList.h"
#include "controls/Picture.h"
#include "toolkit/win32/Win32Toolkit.h"
#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

struct BitmapDeleter {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
using BitmapPtr = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

/// A picture by its name ("list-USER"), of the sizes that there are the one whose width in pixels is nearest
/// to the wanted one. A picture without points when there is none of that name.
[[nodiscard]] Picture ReadPicture(const std::string& name, int wantedWidth);

/// The picture as a bitmap with 32 bits to a point, the fourth byte being alpha.
[[nodiscard]] BitmapPtr MakeBitmap(const Picture& picture);

/// The native images of an image list, for a window that shows them.
class NativeImages final : public ImageListView {
  public:
    enum class Look { Plain, Disabled };

    /// size is in pixels of a screen with 96 to the inch; background is what common controls that know no
    /// alpha blend the edges with. images may be null, and outlives this.
    NativeImages(Win32Toolkit& toolkit, ImageList* images, int size, COLORREF background,
                 Look look = Look::Plain);
    ~NativeImages() override;

    [[nodiscard]] HIMAGELIST Handle() const { return handle_; }
    /// The place of an image by its key; -1 for none.
    [[nodiscard]] int IndexOf(const std::string& key) const;
    /// In pixels, width and height alike.
    [[nodiscard]] int Size() const { return size_; }
    void BkColorChanged() override;

  private:
    ImageList* images_;
    HIMAGELIST handle_ = nullptr;
    std::map<std::string, int> places_;
    int size_;
};

}  // namespace ostrevin::win32
