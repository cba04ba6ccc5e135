// An open file of the host's system, closed at the end of its life.
#pragma once

#include <unistd.h>
#include <utility>

namespace ostrevin {

class FileDescriptor {
  public:
    explicit FileDescriptor(int number = -1) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }
    [[nodiscard]] int Number() const { return number_; }
    [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
    /// Hands the number over to the caller.
    int Release() { return std::exchange(number_, -1); }

  private:
    int number_;
};

}  // namespace ostrevin
