// What an independent reader ought to say of a shortcut.
#pragma once

#include <cstddef>
#include <span>

#include "tools/writers/LinkWriter.h"

namespace ostrevin::samples {

/// Compares lnkinfo's account of the bytes with what was to be written: times, size, icon, strings, paths,
/// volume, names in the identifier list.
void ExpectLnkinfoAgrees(const Link& link, std::span<const std::byte> bytes);

}  // namespace ostrevin::samples
