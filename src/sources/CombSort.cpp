#include "sources/CombSort.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <string_view>

namespace ostrevin {
namespace {

/// A key's place among the distinct keys, and where its entry stood.
struct Ranked {
    std::uint32_t rank;
    std::uint32_t index;
};

/// Ranks stand for the keys: they compare alike, and faster than texts do.
std::vector<Ranked> RanksOf(std::span<const std::string* const> keys) {
    // The eight characters behind what all keys share decide nearly every comparison.
    struct Key {
        std::uint64_t head;
        std::uint32_t index;
    };
    std::size_t shared = keys.front()->size();
    for (const std::string* key : keys) {
        const auto [left, right] =
            std::mismatch(keys.front()->begin(), keys.front()->begin() + static_cast<std::ptrdiff_t>(shared),
                          key->begin(), key->end());
        shared = static_cast<std::size_t>(left - keys.front()->begin());
    }
    std::vector<Key> order;
    order.reserve(keys.size());
    for (const std::string* key : keys) {
        std::uint64_t head = 0;
        for (std::size_t i = shared; i < shared + sizeof(head); ++i) {
            head = (head << 8U) | (i < key->size() ? static_cast<unsigned char>((*key)[i]) : 0U);
        }
        order.push_back({head, static_cast<std::uint32_t>(order.size())});
    }
    std::sort(order.begin(), order.end(), [&](const Key& left, const Key& right) {
        return left.head != right.head ? left.head < right.head : *keys[left.index] < *keys[right.index];
    });
    std::vector<Ranked> ranked(keys.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && *keys[order[i - 1].index] != *keys[order[i].index]) {
            ++rank;
        }
        ranked[order[i].index] = {rank, order[i].index};
    }
    return ranked;
}

/// Whether no two keys are equal: only then does the highest rank reach the last place.
bool AllDiffer(const std::vector<Ranked>& ranked) {
    return std::any_of(ranked.begin(), ranked.end(),
                       [&](const Ranked& entry) { return entry.rank + 1 == ranked.size(); });
}

std::size_t NextGap(std::size_t gap) {
    gap = gap * 10 / 13;
    if (gap == 9 || gap == 10) {
        return 11;
    }
    return std::max<std::size_t>(gap, 1);
}

}  // namespace

std::vector<std::size_t> CombSortOrder(std::span<const std::string* const> keys) {
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (keys.size() < 2) {
        return order;
    }
    std::vector<Ranked> ranked = RanksOf(keys);
    if (AllDiffer(ranked)) {
        // Without equal keys there is but one order.
        for (const Ranked& entry : ranked) {
            order[entry.rank] = entry.index;
        }
        return order;
    }
    for (std::size_t gap = NextGap(ranked.size()); gap > 1; gap = NextGap(gap)) {
        for (std::size_t i = 0; i + gap < ranked.size(); ++i) {
            if (ranked[i].rank > ranked[i + gap].rank) {
                std::swap(ranked[i], ranked[i + gap]);
            }
        }
    }
    // The passes with gap 1 exchange neighbours only and never equal ones, so that they come to the stable
    // order, for which bad luck, or ill will, could make them need as many passes as there are keys.
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const Ranked& left, const Ranked& right) { return left.rank < right.rank; });
    std::transform(ranked.begin(), ranked.end(), order.begin(),
                   [](const Ranked& entry) { return entry.index; });
    return order;
}

}  // namespace ostrevin
