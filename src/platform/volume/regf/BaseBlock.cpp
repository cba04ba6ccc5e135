#include "platform/volume/regf/BaseBlock.h"

namespace ostrevin::regf {
namespace {

constexpr std::size_t kChecksumOffset = 508;
constexpr std::uint32_t kMemoryFormat = 1;
constexpr std::uint32_t kLargestMinorVersion = 6;

}  // namespace

std::uint32_t BaseBlockChecksum(Bytes baseBlock) {
    std::uint32_t checksum = 0;
    for (std::size_t at = 0; at < kChecksumOffset; at += sizeof(checksum)) {
        checksum ^= IntegerAt<std::uint32_t>(baseBlock, at);
    }
    if (checksum == 0xFFFFFFFF) {
        return 0xFFFFFFFE;
    }
    return checksum == 0 ? 1 : checksum;
}

std::optional<BaseBlock> BaseBlock::Read(Bytes bytes) {
    if (bytes.size() < kFieldsSize || !HasSignature(bytes, "regf")) {
        return std::nullopt;
    }
    BaseBlock block;
    block.primarySequence = IntegerAt<std::uint32_t>(bytes, 4);
    block.secondarySequence = IntegerAt<std::uint32_t>(bytes, 8);
    block.lastWritten = IntegerAt<std::uint64_t>(bytes, 12);
    block.majorVersion = IntegerAt<std::uint32_t>(bytes, 20);
    block.minorVersion = IntegerAt<std::uint32_t>(bytes, 24);
    block.type = FileType{IntegerAt<std::uint32_t>(bytes, 28)};
    block.format = IntegerAt<std::uint32_t>(bytes, 32);
    block.rootCell = IntegerAt<std::uint32_t>(bytes, 36);
    block.binsSize = IntegerAt<std::uint32_t>(bytes, 40);
    block.clusteringFactor = IntegerAt<std::uint32_t>(bytes, 44);
    block.rightChecksum = IntegerAt<std::uint32_t>(bytes, kChecksumOffset) == BaseBlockChecksum(bytes);
    return block;
}

bool BaseBlock::IsSupportedVersion() const {
    return majorVersion == 1 && minorVersion <= kLargestMinorVersion;
}

bool BaseBlock::IsSound() const {
    return rightChecksum && IsSupportedVersion() && format == kMemoryFormat;
}

}  // namespace ostrevin::regf
