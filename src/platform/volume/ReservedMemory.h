// A range of addresses of which only the parts in use have memory.
#pragma once

#include <cstddef>

namespace ostrevin {

class ReservedMemory {
  public:
    /// Throws std::bad_alloc when no such range is free.
    explicit ReservedMemory(std::size_t size);
    ~ReservedMemory();
    ReservedMemory(const ReservedMemory&) = delete;
    ReservedMemory& operator=(const ReservedMemory&) = delete;

    [[nodiscard]] std::byte* Data() const { return data_; }
    /// Gives memory to a part of the range before it is touched. Throws std::bad_alloc when there is none.
    void Provide(std::size_t at, std::size_t size);

  private:
    std::byte* data_ = nullptr;
    std::size_t size_;
};

}  // namespace ostrevin
