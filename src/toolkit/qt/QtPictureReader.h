// Pictures from the bytes of picture files, decoded in a process of their own.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "controls/Picture.h"

namespace ostrevin::qt {

class QtPictureReader {
  public:
    /// The program is one that does the worker's work (QtPictureWorker.h); a worker that takes longer than
    /// the patience is killed.
    explicit QtPictureReader(std::string program,
                             std::chrono::milliseconds patience = std::chrono::seconds(10));

    /// Whether files with this extension ("JPG", in any case) are read.
    [[nodiscard]] static bool Reads(const std::string& extension);
    /// The first picture of a file, upright, scaled down to fit the box (in points, greater than 0); none
    /// when it cannot be read, whatever the file does to the decoder.
    [[nodiscard]] std::optional<Picture> Read(std::span<const std::byte> file, int width, int height) const;

  private:
    std::string program_;
    std::chrono::milliseconds patience_;
};

}  // namespace ostrevin::qt
