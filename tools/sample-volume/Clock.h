// The passing of time in the sample volume.
#pragma once

#include <cstdint>

#include "tools/writers/Times.h"

namespace ostrevin::samples {

/// Gives one moment after the other, a few minutes to some hours apart, on working hours; the same ones every
/// time.
class Clock {
  public:
    explicit Clock(std::uint64_t start) : now_(start) {}

    std::uint64_t Next() {
        constexpr std::uint64_t kOpening = 7 * kHour;
        constexpr std::uint64_t kClosing = 19 * kHour;
        seed_ = seed_ * 6364136223846793005U + 1442695040888963407U;
        now_ += kMinute + (seed_ >> 33U) % 9000 * kSecond;
        if (now_ % kDay > kClosing || now_ % kDay < kOpening) {
            now_ += kDay - (now_ + kDay - kOpening) % kDay + (seed_ >> 40U) % 3600 * kSecond;
        }
        return now_;
    }

    [[nodiscard]] std::uint64_t Now() const { return now_; }

  private:
    std::uint64_t now_;
    std::uint64_t seed_ = 20091127;
};

}  // namespace ostrevin::samples
