#include "platform/volume/regf/Hive.h"

#include <algorithm>
#include <utility>

#include "platform/volume/regf/BaseBlock.h"
#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/KeyNode.h"

namespace ostrevin::regf {
namespace {

/// Throws unless the base block is that of a hive which can be read, whether sound or not.
BaseBlock Usable(Bytes primary) {
    if (primary.size() < BaseBlock::kSize) {
        throw HiveError("The file is too short to be a registry hive.");
    }
    const auto block = BaseBlock::Read(primary);
    if (!block) {
        throw HiveError("The file is not a registry hive: it does not begin with \"regf\".");
    }
    if (block->type != FileType::Primary) {
        throw HiveError("The file is a transaction log of a registry hive, not the hive.");
    }
    if (!block->IsSupportedVersion()) {
        throw HiveError("The file is a registry hive of the unknown version " +
                        std::to_string(block->majorVersion) + "." + std::to_string(block->minorVersion) +
                        ".");
    }
    return *block;
}

}  // namespace

Hive::Hive(std::vector<std::byte> bytes, const BaseBlock& baseBlock, Recovery recovery)
    : bytes_(std::move(bytes)),
      rootCell_(baseBlock.rootCell),
      binsSize_(baseBlock.binsSize),
      minorVersion_(baseBlock.minorVersion),
      recovery_(recovery) {}

std::unique_ptr<Hive> Hive::Open(std::vector<std::byte> primary, const Logs& /*logs*/) {
    const BaseBlock baseBlock = Usable(primary);
    const Recovery recovery = IsDirty(primary) ? Recovery::DirtyNoLogs : Recovery::None;
    if (!HiveBin::Read(Bytes(primary).subspan(BaseBlock::kSize), 0)) {
        throw HiveError("The registry hive is damaged: it has no first hive bin.");
    }
    std::unique_ptr<Hive> hive(new Hive(std::move(primary), baseBlock, recovery));
    if (!KeyNode::Read(hive->Bins(), hive->rootCell_)) {
        throw HiveError("The registry hive is damaged: it has no root key.");
    }
    return hive;
}

bool Hive::IsDirty(std::span<const std::byte> baseBlock) {
    const auto block = BaseBlock::Read(baseBlock);
    return !block || !block->IsSound() || !block->IsClean();
}

std::optional<std::uint64_t> Hive::LastWritten(std::span<const std::byte> baseBlock) {
    const auto block = BaseBlock::Read(baseBlock);
    return block ? std::optional(block->lastWritten) : std::nullopt;
}

Key Hive::Root() const {
    return {*this, rootCell_};
}

HiveBins Hive::Bins() const {
    const Bytes bins = Bytes(bytes_).subspan(BaseBlock::kSize);
    return {bins.first(std::min<std::size_t>(binsSize_, bins.size())), minorVersion_};
}

}  // namespace ostrevin::regf
