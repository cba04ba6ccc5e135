// A file made of bytes in memory.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

class BytesFile : public InputFile {
  public:
    explicit BytesFile(std::vector<std::byte> bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] std::uint64_t Size() const override { return bytes_.size(); }

    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        if (offset >= bytes_.size()) {
            return 0;
        }
        const auto rest = std::span(bytes_).subspan(static_cast<std::size_t>(offset));
        const std::size_t count = std::min(buffer.size(), rest.size());
        std::copy_n(rest.begin(), count, buffer.begin());
        return count;
    }

  private:
    std::vector<std::byte> bytes_;
};

}  // namespace ostrevin
