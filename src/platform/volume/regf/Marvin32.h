// The Marvin32 hash, under which the entries of a transaction log stand.
#pragma once

#include <cstdint>

#include "platform/volume/regf/Bytes.h"

namespace ostrevin::regf {

[[nodiscard]] std::uint64_t Marvin32(Bytes bytes, std::uint64_t seed);

}  // namespace ostrevin::regf
