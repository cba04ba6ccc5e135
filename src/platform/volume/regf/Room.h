// How much can be read of a hive.
//
// The cells of a hive lie apart from each other, so that all that they hold, each thing counted once, is no
// larger than the hive. Cells that overlap, and lists and data that many keys and values share, could make a
// small file give gigabytes; reading ends where there would be more than a hive of this size can hold.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace ostrevin::regf {

class Room {
  public:
    /// size is the hive's, in bytes.
    Room(std::size_t size, std::function<void()> onExhausted)
        : left_(size), onExhausted_(std::move(onExhausted)) {}

    [[nodiscard]] std::size_t Left() const { return left_; }

    /// Takes the room of something that is read for the first time; false when there is not enough. Then half
    /// of what is left is lost, so that asking in vain has an end.
    [[nodiscard]] bool Take(std::size_t size) {
        if (size <= left_) {
            left_ -= size;
            return true;
        }
        left_ /= 2;
        if (onExhausted_) {
            std::exchange(onExhausted_, nullptr)();
        }
        return false;
    }

  private:
    std::size_t left_;
    std::function<void()> onExhausted_;
};

}  // namespace ostrevin::regf
