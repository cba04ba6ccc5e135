#include "platform/volume/regf/SubKeysList.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

namespace ostrevin::regf {
namespace {

constexpr std::size_t kHeaderSize = 4;
constexpr std::size_t kLargestElement = 8;
constexpr std::size_t kLargestList =
    kHeaderSize + kLargestElement * std::numeric_limits<std::uint16_t>::max();

/// The size of an element of the leaf in a cell; 0 when it is no leaf.
std::size_t LeafElementSize(Bytes cell) {
    if (HasSignature(cell, "lf") || HasSignature(cell, "lh")) {
        return 8;
    }
    return HasSignature(cell, "li") ? 4 : 0;
}

/// The elements of a list that lie within its cell.
Bytes Elements(Bytes cell, std::size_t elementSize) {
    const std::size_t stored = IntegerAt<std::uint16_t>(cell, 2);
    const std::size_t count = std::min(stored, (cell.size() - kHeaderSize) / elementSize);
    return cell.subspan(kHeaderSize, count * elementSize);
}

}  // namespace

std::vector<SubKeysLeaf> ReadSubKeysList(const HiveBins& bins, std::uint32_t offset, Room& room) {
    std::vector<SubKeysLeaf> leaves;
    std::unordered_set<std::uint32_t> rootsMet;
    // Lists still to read, the next one last, so that index roots may stand in index roots without recursion.
    std::vector<std::uint32_t> waiting = {offset};
    while (!waiting.empty()) {
        const std::uint32_t next = waiting.back();
        waiting.pop_back();
        const Bytes cell = bins.Cell(next, kLargestList);
        if (cell.size() < kHeaderSize) {
            continue;
        }
        const std::size_t leafElementSize = LeafElementSize(cell);
        const bool isRoot = HasSignature(cell, "ri");
        if (isRoot ? !rootsMet.insert(next).second : leafElementSize == 0) {
            continue;
        }
        const Bytes elements = Elements(cell, isRoot ? sizeof(std::uint32_t) : leafElementSize);
        if (!room.Take(kHeaderSize + elements.size())) {
            break;
        }
        if (isRoot) {
            for (std::size_t at = elements.size(); at > 0;) {
                at -= sizeof(std::uint32_t);
                waiting.push_back(IntegerAt<std::uint32_t>(elements, at));
            }
        } else if (!elements.empty()) {
            leaves.emplace_back(elements, leafElementSize);
        }
    }
    return leaves;
}

}  // namespace ostrevin::regf
