// The decoder of the volume's pictures, by what the toolkit reads.
#pragma once

#include <string>

#include "platform/volume/PictureDecoder.h"

namespace ostrevin {

/// The program is this one: it is started anew for each picture.
[[nodiscard]] PictureDecoder MakeQtPictureDecoder(const std::string& program);

}  // namespace ostrevin
