#include "platform/windows/BitmapPoints.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace ostrevin::windows {

BitmapHandle PointsOf(HBITMAP bitmap) {
    BITMAP header{};
    if (GetObjectW(bitmap, sizeof header, &header) == 0) {
        return nullptr;
    }
    auto result = std::make_unique<Bitmap>();
    result->width = header.bmWidth;
    result->height = std::abs(header.bmHeight);
    result->points.resize(static_cast<std::size_t>(result->width) * static_cast<std::size_t>(result->height));
    BITMAPINFO wanted{};
    wanted.bmiHeader.biSize = sizeof wanted.bmiHeader;
    wanted.bmiHeader.biWidth = result->width;
    wanted.bmiHeader.biHeight = -result->height;  // the top row first
    wanted.bmiHeader.biPlanes = 1;
    wanted.bmiHeader.biBitCount = 32;
    wanted.bmiHeader.biCompression = BI_RGB;
    const HDC screen = GetDC(nullptr);
    const int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(result->height), result->points.data(),
                               &wanted, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    if (rows != result->height) {
        return nullptr;
    }
    for (std::uint32_t& point : result->points) {
        point |= 0xFF000000U;
    }
    return result;
}

}  // namespace ostrevin::windows
