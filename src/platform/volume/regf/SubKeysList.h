// Sub-keys lists: index leaf ("li"), fast leaf ("lf"), hash leaf ("lh") and index root ("ri").
//
// Each begins with its signature and a 16-bit number of elements. An element of a leaf is the offset of a key
// node; in a fast leaf the first four characters of its name follow, in a hash leaf a hash of it. An element
// of an index root is the offset of another list. The keys are sorted by upper-cased name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/volume/regf/HiveBin.h"
#include "platform/volume/regf/Room.h"

namespace ostrevin::regf {

/// The elements of one leaf; there is at least one.
class SubKeysLeaf {
  public:
    /// elements holds whole elements of elementSize bytes each.
    SubKeysLeaf(Bytes elements, std::size_t elementSize) : elements_(elements), elementSize_(elementSize) {}

    [[nodiscard]] std::size_t Size() const { return elements_.size() / elementSize_; }
    /// The offset of the key node of an element below Size().
    [[nodiscard]] std::uint32_t KeyOffset(std::size_t index) const {
        return IntegerAt<std::uint32_t>(elements_, index * elementSize_);
    }

  private:
    Bytes elements_;
    std::size_t elementSize_;
};

/// The leaves of the list at an offset, in order, those below index roots included. An index root met again
/// is left out; the lists that are read take their room.
[[nodiscard]] std::vector<SubKeysLeaf> ReadSubKeysList(const HiveBins& bins, std::uint32_t offset,
                                                       Room& room);

}  // namespace ostrevin::regf
