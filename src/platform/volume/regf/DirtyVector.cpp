#include "platform/volume/regf/DirtyVector.h"

#include "platform/volume/regf/HiveBin.h"

namespace ostrevin::regf {

std::optional<DirtyVector> DirtyVector::Read(const FileImage& log, const BaseBlock& logBase) {
    constexpr std::size_t kSignatureSize = 4;
    constexpr std::uint32_t kLargestClusteringFactor = 8;
    if (logBase.clusteringFactor == 0 || logBase.clusteringFactor > kLargestClusteringFactor ||
        logBase.binsSize % HiveBin::kUnit != 0) {
        return std::nullopt;
    }
    const std::size_t sector = std::size_t{logBase.clusteringFactor} * 512;
    const std::size_t pageCount = logBase.binsSize / kPageSize;
    const std::size_t vectorSize = kSignatureSize + pageCount / 8;
    const std::size_t pagesStart = sector + (vectorSize + sector - 1) / sector * sector;
    if (log.Size() < pagesStart || !HasSignature(log.At(sector, kSignatureSize), "DIRT")) {
        return std::nullopt;
    }
    DirtyVector vector;
    vector.log_ = &log;
    vector.bitmap_ = log.At(sector + kSignatureSize, pageCount / 8);
    vector.pagesStart_ = pagesStart;
    for (std::size_t page = 0; page < pageCount; ++page) {
        if (vector.IsDirty(page)) {
            ++vector.count_;
            vector.end_ = (page + 1) * kPageSize;
        }
    }
    if ((log.Size() - pagesStart) / kPageSize < vector.count_) {
        return std::nullopt;
    }
    return vector;
}

bool DirtyVector::IsDirty(std::size_t page) const {
    return page / 8 < bitmap_.size() &&
           (std::to_integer<unsigned>(bitmap_[page / 8]) >> (page % 8) & 1U) != 0;
}

}  // namespace ostrevin::regf
