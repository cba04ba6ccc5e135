#include "platform/volume/regf/Hive.h"

#include <utility>

#include "platform/volume/regf/BaseBlock.h"
#include "platform/volume/regf/CellLists.h"
#include "platform/volume/regf/FileImage.h"
#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/Recovery.h"

namespace ostrevin::regf {
namespace {

/// A hive of up to so many bytes is read at once, and its file does not stay open.
constexpr std::size_t kSmallHive = std::size_t{1} << 20U;

/// The base block as it stands; throws unless it is that of a hive which can be read.
BaseBlock UsableBaseBlock(const FileImage& primary) {
    if (primary.Size() < BaseBlock::kFieldsSize) {
        throw HiveError("The file is too short to be a registry hive.");
    }
    const auto block = BaseBlockAsItStands(primary);
    if (!block) {
        throw HiveError("The file is not a registry hive: it does not begin with \"regf\".");
    }
    if (block->type == FileType::Log || block->type == FileType::LogOfNt ||
        block->type == FileType::EntriesLog) {
        throw HiveError("The file is a transaction log of a registry hive, not the hive.");
    }
    if (!block->IsSupportedVersion()) {
        throw HiveError("The file is a registry hive of the unknown version " +
                        std::to_string(block->majorVersion) + "." + std::to_string(block->minorVersion) +
                        ".");
    }
    return *block;
}

std::unique_ptr<FileImage> ImageOf(const std::unique_ptr<InputFile>& file) {
    return file ? std::make_unique<FileImage>(*file) : nullptr;
}

std::size_t SizeOf(const std::unique_ptr<FileImage>& image) {
    return image ? image->Size() : 0;
}

}  // namespace

Hive::Hive(std::unique_ptr<InputFile> file, std::unique_ptr<FileImage> image, const BaseBlock& baseBlock,
           const OnTrouble& onTrouble)
    : file_(std::move(file)),
      image_(std::move(image)),
      rootCell_(baseBlock.rootCell),
      binsSize_(baseBlock.binsSize),
      minorVersion_(baseBlock.minorVersion),
      lists_(std::make_unique<CellLists>(Bins(), rootCell_, Room(Bins().Size(), [onTrouble] {
                                             if (onTrouble) {
                                                 onTrouble(Trouble::Overlapping);
                                             }
                                         }))) {}

Hive::~Hive() = default;

std::unique_ptr<Hive> Hive::Open(std::unique_ptr<InputFile> primary, const Logs& logs,
                                 const OnTrouble& onTrouble) {
    LogImages logImages;
    logImages.log = ImageOf(logs.log);
    logImages.log1 = ImageOf(logs.log1);
    logImages.log2 = ImageOf(logs.log2);
    auto image = std::make_unique<FileImage>(
        *primary, SizeOf(logImages.log) + SizeOf(logImages.log1) + SizeOf(logImages.log2));
    if (onTrouble) {
        image->OnUnreadable([onTrouble] { onTrouble(Trouble::Unreadable); });
    }
    const auto stored = BaseBlock::Read(image->At(0, BaseBlock::kFieldsSize));
    const bool isSound = stored && stored->IsSoundPrimary();
    const bool isDirty = !isSound || !stored->IsClean();
    const auto recovered = isDirty ? RecoverFromLogs(*image, logImages) : std::nullopt;
    const BaseBlock baseBlock = recovered ? *recovered : UsableBaseBlock(*image);
    if (!ReadBin(*image, 0)) {
        throw HiveError("The registry hive is damaged: it has no first hive bin.");
    }
    if (!HasRootKey(*image, baseBlock)) {
        throw HiveError("The registry hive is damaged: it has no root key.");
    }
    if (image->Size() <= kSmallHive) {
        image->ReadAll();
        primary.reset();
    }
    std::unique_ptr<Hive> hive(new Hive(std::move(primary), std::move(image), baseBlock, onTrouble));
    hive->hadDamagedBaseBlock_ = !isSound;
    hive->recovery_ = recovered ? Recovery::FromLogs : isDirty ? Recovery::DirtyNoLogs : Recovery::None;
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

std::size_t Hive::Held() const {
    return image_->Held();
}

HiveBins Hive::Bins() const {
    return {*image_, binsSize_, minorVersion_};
}

}  // namespace ostrevin::regf
