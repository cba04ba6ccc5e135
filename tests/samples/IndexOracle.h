// What an independent reader ought to say of a cache index.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tools/writers/IndexWriter.h"

namespace ostrevin::samples {

/// Compares msiecfexport's account of the bytes with the records that were to be written, in order: kind,
/// address, both times and the cached file's name. Of LEAK records it tells the kind alone;
/// raw ones are left out.
void ExpectMsiecfexportAgrees(const std::vector<IndexRecord>& records, std::span<const std::byte> bytes);

}  // namespace ostrevin::samples
