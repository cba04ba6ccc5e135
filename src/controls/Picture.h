// A picture made of points, as a picture box shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ostrevin {

struct Picture {
    int width = 0;  ///< in points of the screen, as height
    int height = 0;
    /// width x height of them, row by row from the top left: 0xAARRGGBB, the colour not multiplied by alpha.
    std::vector<std::uint32_t> pixels;
};

/// A picture that its holders share; null for none.
using PicturePtr = std::shared_ptr<const Picture>;

}  // namespace ostrevin
