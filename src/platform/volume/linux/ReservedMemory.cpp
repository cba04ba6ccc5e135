#include "platform/volume/ReservedMemory.h"

#include <new>
#include <sys/mman.h>

namespace ostrevin {

ReservedMemory::ReservedMemory(std::size_t size) : size_(size) {
    if (size_ == 0) {
        return;
    }
    void* const memory =
        mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    // Large pages would give memory to much more than what is touched.
    madvise(memory, size_, MADV_NOHUGEPAGE);
    data_ = static_cast<std::byte*>(memory);
}

ReservedMemory::~ReservedMemory() {
    if (data_ != nullptr) {
        munmap(data_, size_);
    }
}

void ReservedMemory::Provide(std::size_t /*at*/, std::size_t /*size*/) {
    // The kernel does so when the part is touched.
}

}  // namespace ostrevin
