// A whole examination of a volume, as far as one can go.
#pragma once

#include <cstddef>
#include <string>

#include "platform/volume/VolumePlatform.h"

namespace ostrevin {

/// Asks for every account and source, and makes every call that would like to write. root is the host's path
/// of the volume. Returns how many entries there are.
std::size_t Examine(VolumePlatform& platform, const std::string& root);

}  // namespace ostrevin
