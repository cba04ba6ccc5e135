// A rectangle in pixels.
#pragma once

namespace ostrevin {

struct PixelRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

}  // namespace ostrevin
