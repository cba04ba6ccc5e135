// The comb sort that orders the entries of a source.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace ostrevin {

/// The order into which the comb sort brings these keys, compared byte by byte: order[i] is the former index
/// of what ends up at place i. The gap starts at the count and shrinks by 1.3, with 9 and 10 becoming 11 and
/// 0 becoming 1; equal keys may change places, and the way in which they do is part of the order.
[[nodiscard]] std::vector<std::size_t> CombSortOrder(std::span<const std::string* const> keys);

/// Sorts entries by one of their texts, by comb sort.
template <typename Entry>
void CombSort(std::vector<Entry>& entries, std::string Entry::*key) {
    std::vector<const std::string*> keys;
    keys.reserve(entries.size());
    for (const Entry& entry : entries) {
        keys.push_back(&(entry.*key));
    }
    std::vector<Entry> sorted;
    sorted.reserve(entries.size());
    for (const std::size_t index : CombSortOrder(keys)) {
        sorted.push_back(std::move(entries[index]));
    }
    entries = std::move(sorted);
}

}  // namespace ostrevin
