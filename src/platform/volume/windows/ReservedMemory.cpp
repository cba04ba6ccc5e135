#include "platform/volume/ReservedMemory.h"

#include <windows.h>
#include <new>

namespace ostrevin {

ReservedMemory::ReservedMemory(std::size_t size) : size_(size) {
    if (size_ == 0) {
        return;
    }
    data_ = static_cast<std::byte*>(VirtualAlloc(nullptr, size_, MEM_RESERVE, PAGE_NOACCESS));
    if (data_ == nullptr) {
        throw std::bad_alloc();
    }
}

ReservedMemory::~ReservedMemory() {
    if (data_ != nullptr) {
        VirtualFree(data_, 0, MEM_RELEASE);
    }
}

void ReservedMemory::Provide(std::size_t at, std::size_t size) {
    if (VirtualAlloc(data_ + at, size, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        throw std::bad_alloc();
    }
}

}  // namespace ostrevin
