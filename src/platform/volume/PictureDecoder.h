// What makes pictures of the volume's picture files; the program's start-up gives one.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include "platform/ShellFolder.h"

namespace ostrevin {

/// Both functions are there, or neither: then no file has a picture.
struct PictureDecoder {
    /// Whether files with this extension ("JPG", in upper case) are read.
    std::function<bool(const std::string& extension)> reads;
    /// The picture in a file, upright, scaled down to fit the size; null when it cannot be read.
    std::function<BitmapHandle(std::span<const std::byte> file, const ImageSize& size)> decode;
};

}  // namespace ostrevin
