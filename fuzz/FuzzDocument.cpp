// Documents: any bytes are judged without harm and by reading little; what deflated data holds is bounded.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include "fuzz/DocumentInput.h"
#include "platform/volume/documents/DocumentKind.h"
#include "platform/volume/documents/Inflate.h"

using namespace ostrevin;
using namespace ostrevin::documents;

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class InputBytes final : public InputFile {
  public:
    explicit InputBytes(std::string_view bytes) : bytes_(bytes) {}
    [[nodiscard]] std::uint64_t Size() const override { return bytes_.size(); }
    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        Require(offset <= bytes_.size());
        const std::string_view part = bytes_.substr(offset, buffer.size());
        for (std::size_t i = 0; i < part.size(); ++i) {
            buffer[i] = static_cast<std::byte>(part[i]);
        }
        read_ += part.size();
        return part.size();
    }
    [[nodiscard]] std::size_t BytesRead() const { return read_; }

  private:
    std::string_view bytes_;
    std::size_t read_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    InputBytes file(bytes);
    const Verdict verdict = Judge(fuzz::kDocumentNames.at(data[0] % fuzz::kDocumentNames.size()), file);
    Require(verdict != Verdict::OtherName);
    // A chain of 1,024 sectors of 4,096 bytes, and the way to each by as many numbers.
    Require(file.BytesRead() < 12'000'000);
    constexpr std::size_t kMost = 100'000;
    const auto text = Inflate(bytes, kMost);
    Require(!text || text->size() <= kMost);
    return 0;
}
