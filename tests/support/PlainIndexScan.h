// A scan of an index file ("index.dat") that does nothing but follow the rules, byte by byte: what the reader
// is held against.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

struct PlainIndexRecord {
    std::string address;  ///< bytes as stored, behind the first "@"
    FileTime accessed;
};

class PlainIndexScan {
  public:
    explicit PlainIndexScan(std::span<const std::byte> bytes) : bytes_(bytes) {}
    /// The records in the order in which they are met. To be called once.
    [[nodiscard]] std::vector<PlainIndexRecord> Records();

  private:
    std::byte Take();
    std::string Characters(int count);
    std::uint32_t Integer();
    std::string Text();
    PlainIndexRecord Record();

    std::span<const std::byte> bytes_;
    std::uint64_t next_ = 0;      ///< offset of the next byte
    std::uint64_t lastRead_ = 0;  ///< 1-based position of the last byte read
};

}  // namespace ostrevin
