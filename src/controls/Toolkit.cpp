#include "controls/Toolkit.h"

#include <algorithm>
#include <numeric>

namespace ostrevin {

std::vector<std::size_t> Toolkit::RankTexts(std::span<const std::string_view> texts) const {
    std::vector<std::size_t> order(texts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        return CompareText(texts[left], texts[right]) < 0;
    });
    std::vector<std::size_t> ranks(texts.size());
    std::size_t rank = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        rank += CompareText(texts[order[i - 1]], texts[order[i]]) == 0 ? 0U : 1U;
        ranks[order[i]] = rank;
    }
    return ranks;
}

}  // namespace ostrevin
