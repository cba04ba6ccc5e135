// The dirty vector ("DIRT") of a transaction log, and the dirty pages behind it.
//
// The vector begins in the log's second sector. Its signature is followed by a bitmap: one bit for each page
// of 512 bytes of the hive bins, the least significant bit of a byte first. The pages whose bits are set
// stand in order from the next sector on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/volume/regf/BaseBlock.h"
#include "platform/volume/regf/Bytes.h"
#include "platform/volume/regf/FileImage.h"

namespace ostrevin::regf {

class DirtyVector {
  public:
    static constexpr std::size_t kPageSize = 512;

    /// Reads the vector of a log with this base block; none when it or one of its pages is missing. The log
    /// has to live as long as the vector.
    [[nodiscard]] static std::optional<DirtyVector> Read(const FileImage& log, const BaseBlock& logBase);

    [[nodiscard]] bool IsDirty(std::size_t page) const;
    /// How many pages are dirty.
    [[nodiscard]] std::size_t Count() const { return count_; }
    /// Where the last dirty page ends, in bytes of the hive bins; 0 when there is none.
    [[nodiscard]] std::size_t End() const { return end_; }
    /// The content of the n-th dirty page; n is below Count().
    [[nodiscard]] Bytes Page(std::size_t n) const { return log_->At(pagesStart_ + n * kPageSize, kPageSize); }

  private:
    const FileImage* log_ = nullptr;
    Bytes bitmap_;
    std::size_t pagesStart_ = 0;
    std::size_t count_ = 0;
    std::size_t end_ = 0;
};

}  // namespace ostrevin::regf
