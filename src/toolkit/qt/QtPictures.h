// The program's own pictures, by name.
#pragma once

#include <string>

#include <QIcon>
#include <QPixmap>

#include "controls/ImageList.h"

namespace ostrevin::qt {

/// An icon with every size that was drawn of it; empty for an unknown name.
[[nodiscard]] QIcon Icon(const std::string& name);
/// The icon of a key of an image list; empty when the list is null or has no such key.
[[nodiscard]] QIcon IconOf(const ImageList* images, const std::string& key);
/// A picture for a screen of this many device pixels to the pixel.
[[nodiscard]] QPixmap Picture(const std::string& name, double devicePixelRatio);

}  // namespace ostrevin::qt
