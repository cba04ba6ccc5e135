#include "platform/volume/regf/KeyNode.h"

#include <algorithm>
#include <limits>

#include "platform/Text.h"

namespace ostrevin::regf {
namespace {

constexpr std::uint16_t kCompressedName = 0x0020;
constexpr std::uint16_t kPredefinedHandle = 0x0040;

}  // namespace

std::optional<KeyNode> KeyNode::Read(const HiveBins& bins, std::uint32_t offset) {
    const Bytes cell = bins.Cell(offset, kFixedSize + std::numeric_limits<std::uint16_t>::max());
    if (cell.size() < kFixedSize || !HasSignature(cell, "nk")) {
        return std::nullopt;
    }
    const auto flags = IntegerAt<std::uint16_t>(cell, 2);
    const std::size_t nameLength = IntegerAt<std::uint16_t>(cell, 72);
    if (nameLength > cell.size() - kFixedSize) {
        return std::nullopt;
    }
    KeyNode node;
    node.lastWritten = IntegerAt<std::uint64_t>(cell, 4);
    node.parent = IntegerAt<std::uint32_t>(cell, 16);
    node.subKeyCount = IntegerAt<std::uint32_t>(cell, 20);
    node.subKeysList = IntegerAt<std::uint32_t>(cell, 28);
    node.valueCount = (flags & kPredefinedHandle) != 0 ? 0 : IntegerAt<std::uint32_t>(cell, 36);
    node.valuesList = IntegerAt<std::uint32_t>(cell, 40);
    node.classOffset = IntegerAt<std::uint32_t>(cell, 48);
    node.classLength = IntegerAt<std::uint16_t>(cell, 74);
    node.name = {cell.subspan(kFixedSize, nameLength),
                 bins.HasCompressedNames() && (flags & kCompressedName) != 0};
    return node;
}

std::string KeyNode::ClassName(const HiveBins& bins) const {
    if (classLength == 0) {
        return {};
    }
    return Utf16ToUtf8(bins.Cell(classOffset, classLength));
}

Bytes KeyNode::ValuesList(const HiveBins& bins) const {
    if (valueCount == 0) {
        return {};
    }
    constexpr std::size_t kOffset = sizeof(std::uint32_t);
    const Bytes list =
        bins.Cell(valuesList, std::min<std::size_t>(valueCount, bins.Size() / kOffset) * kOffset);
    return list.first(list.size() / kOffset * kOffset);
}

}  // namespace ostrevin::regf
