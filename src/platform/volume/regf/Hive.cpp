#include "platform/volume/regf/Hive.h"

#include <algorithm>
#include <utility>

#include "platform/volume/regf/BaseBlock.h"
#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/KeyNode.h"
#include "platform/volume/regf/Recovery.h"

namespace ostrevin::regf {
namespace {

/// Throws unless the base block is that of a hive which can be read, whether sound or not.
BaseBlock UsableBaseBlock(Bytes primary) {
    if (primary.size() < BaseBlock::kFieldsSize) {
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

std::unique_ptr<Hive> Hive::Open(std::vector<std::byte> primary, const Logs& logs) {
    const bool isDirty = IsDirty(primary);
    const auto recovered = isDirty ? RecoverFromLogs(primary, logs) : std::nullopt;
    const BaseBlock baseBlock = recovered ? *recovered : UsableBaseBlock(primary);
    const Recovery recovery = recovered ? Recovery::FromLogs
                              : isDirty ? Recovery::DirtyNoLogs
                                        : Recovery::None;
    std::unique_ptr<Hive> hive(new Hive(std::move(primary), baseBlock, recovery));
    if (!HiveBin::Read(hive->BinsBytes(), 0)) {
        throw HiveError("The registry hive is damaged: it has no first hive bin.");
    }
    if (!KeyNode::Read(hive->Bins(), hive->rootCell_)) {
        throw HiveError("The registry hive is damaged: it has no root key.");
    }
    return hive;
}

bool Hive::IsDirty(std::span<const std::byte> baseBlock) {
    const auto block = BaseBlock::Read(baseBlock);
    return !block || !block->IsSoundPrimary() || !block->IsClean();
}

std::optional<std::uint64_t> Hive::LastWritten(std::span<const std::byte> baseBlock) {
    const auto block = BaseBlock::Read(baseBlock);
    return block ? std::optional(block->lastWritten) : std::nullopt;
}

Key Hive::Root() const {
    return {*this, rootCell_};
}

std::span<const std::byte> Hive::BinsBytes() const {
    const Bytes bins = Bytes(bytes_).subspan(std::min(BaseBlock::kSize, bytes_.size()));
    return bins.first(std::min<std::size_t>(binsSize_, bins.size()));
}

HiveBins Hive::Bins() const {
    return {BinsBytes(), minorVersion_};
}

}  // namespace ostrevin::regf
