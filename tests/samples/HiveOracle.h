// What independent readers ought to say of a hive.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "tools/writers/HiveWriter.h"

namespace ostrevin::samples {

// Each compares the reader's account of the bytes, key by key and value by value, with what was to be
// written. The options are those of the writing.

/// Names of sub-keys, values with names, types and all data.
void ExpectHivexAgrees(const HiveKey& root, std::span<const std::byte> hive);
/// Paths and times of keys; names, types and data of values. What is not ASCII is left out.
void ExpectReglookupAgrees(const HiveKey& root, const HiveOptions& options, std::span<const std::byte> hive);
/// Paths of keys in their order, names of values, texts and numbers.
void ExpectRegfexportAgrees(const HiveKey& root, std::span<const std::byte> hive);

}  // namespace ostrevin::samples
