// Which way up a photograph is, as the camera noted it in the file.
#pragma once

#include <cstddef>
#include <span>

namespace ostrevin {

/// The orientation of a JPEG file, 1 to 8 as Exif numbers them; 1, upright, where the file tells none that is
/// sound.
[[nodiscard]] int JpegOrientation(std::span<const std::byte> file);

}  // namespace ostrevin
