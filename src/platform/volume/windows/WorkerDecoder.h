// The decoder of the volume's pictures on Windows: JPEG, GIF and BMP, in a process of their own.
#pragma once

#include <chrono>
#include <string>

#include "platform/volume/PictureDecoder.h"

namespace ostrevin {

/// The program, by its UTF-8 path, is one that does the worker's work (PictureWorker.h): it is started anew
/// for each picture. A worker that takes longer than the patience is killed.
[[nodiscard]] PictureDecoder MakeWorkerDecoder(const std::string& program,
                                               std::chrono::milliseconds patience = std::chrono::seconds(10));

}  // namespace ostrevin
