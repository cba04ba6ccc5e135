// Pictures for the sample volume: painted, and stored in the formats that a machine of that time holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ostrevin::samples {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

struct Picture {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<Color> pixels;  ///< row by row from the top

    [[nodiscard]] const Color& At(std::size_t x, std::size_t y) const { return pixels[y * width + x]; }
};

enum class Scene {
    Sunset,     ///< a sun over the sea
    Mountains,  ///< two ridges under a clear sky
    Chart,      ///< bars on a white sheet
    Quilt,      ///< a pattern of coloured squares
};

Picture Paint(Scene scene, std::size_t width, std::size_t height);

std::vector<std::byte> EncodePng(const Picture& picture);   ///< 24-bit, not compressed
std::vector<std::byte> EncodeBmp(const Picture& picture);   ///< 24-bit
std::vector<std::byte> EncodeGif(const Picture& picture);   ///< 216 colours, not compressed
std::vector<std::byte> EncodeJpeg(const Picture& picture);  ///< baseline, colours at full resolution
/// JPEG as a camera stores it: an upright picture lies on its side, with a tag that tells how to turn it.
std::vector<std::byte> EncodePhotograph(const Picture& picture);

}  // namespace ostrevin::samples
