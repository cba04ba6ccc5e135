#include "platform/volume/CharsetConverter.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <iconv.h>

namespace ostrevin {
namespace {

constexpr char kUtf8[] = "UTF-8";

class IconvConverter final : public CharsetConverter {
  public:
    IconvConverter(const std::string& to, const std::string& from)
        : handle_(iconv_open(to.c_str(), from.c_str())) {}
    ~IconvConverter() override {
        if (IsOpen()) {
            iconv_close(handle_);
        }
    }
    IconvConverter(const IconvConverter&) = delete;
    IconvConverter& operator=(const IconvConverter&) = delete;

    [[nodiscard]] bool IsOpen() const {
        // The library's own mark of a failed opening is the pointer of all bits set.
        return reinterpret_cast<std::uintptr_t>(handle_) != static_cast<std::uintptr_t>(-1);
    }

    Result Convert(std::string_view bytes, std::string& text) override {
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        std::string input(bytes);
        std::array<char, 32> output{};
        char* in = input.data();
        char* out = output.data();
        std::size_t inLeft = input.size();
        std::size_t outLeft = output.size();
        if (iconv(handle_, &in, &inLeft, &out, &outLeft) == kFailed) {
            return errno == EINVAL ? Result::Incomplete : Result::Invalid;
        }
        // Some sets hold a letter back, in case that a mark follows which belongs to it.
        iconv(handle_, nullptr, nullptr, &out, &outLeft);
        text.assign(output.data(), output.size() - outLeft);
        return Result::Done;
    }

  private:
    static constexpr auto kFailed = static_cast<std::size_t>(-1);

    iconv_t handle_;
};

std::unique_ptr<CharsetConverter> MakeConverter(const std::string& to, const std::string& from) {
    auto converter = std::make_unique<IconvConverter>(to, from);
    return converter->IsOpen() ? std::move(converter) : nullptr;
}

}  // namespace

std::string CharsetName(std::uint32_t codePage) {
    return "CP" + std::to_string(codePage);
}

std::unique_ptr<CharsetConverter> ConverterFrom(const std::string& charset) {
    return MakeConverter(kUtf8, charset);
}

std::unique_ptr<CharsetConverter> ConverterTo(const std::string& charset) {
    return MakeConverter(charset, kUtf8);
}

}  // namespace ostrevin
