#include "platform/volume/CharsetConverter.h"

#include <windows.h>
#include <array>
#include <charconv>
#include <optional>

#include "platform/volume/windows/WideText.h"

namespace ostrevin {
namespace {

constexpr std::string_view kPrefix = "CP";

/// The page of a name; none for one that Windows does not have. The lowest numbers stand for whichever page
/// the host itself is set to.
std::optional<UINT> CodePageOf(std::string_view charset) {
    constexpr UINT kLastOfTheHost = 42;
    constexpr UINT kMostBytes = 2;
    UINT page = 0;
    if (!charset.starts_with(kPrefix)) {
        return std::nullopt;
    }
    charset.remove_prefix(kPrefix.size());
    const auto [end, error] = std::from_chars(charset.data(), charset.data() + charset.size(), page);
    CPINFO information{};
    if (error != std::errc() || end != charset.data() + charset.size() || page <= kLastOfTheHost ||
        GetCPInfo(page, &information) == 0 || information.MaxCharSize > kMostBytes) {
        return std::nullopt;
    }
    return page;
}

class FromCodePage final : public CharsetConverter {
  public:
    explicit FromCodePage(UINT page) : page_(page) {}

    Result Convert(std::string_view bytes, std::string& text) override {
        if (bytes.size() == 1 && IsDBCSLeadByteEx(page_, static_cast<BYTE>(bytes.front())) != 0) {
            return Result::Incomplete;
        }
        std::array<wchar_t, 8> wide{};
        const int length = MultiByteToWideChar(page_, MB_ERR_INVALID_CHARS, bytes.data(),
                                               static_cast<int>(bytes.size()), wide.data(), wide.size());
        if (length <= 0) {
            return Result::Invalid;
        }
        text = FromWide({wide.data(), static_cast<std::size_t>(length)});
        return Result::Done;
    }

  private:
    UINT page_;
};

class ToCodePage final : public CharsetConverter {
  public:
    explicit ToCodePage(UINT page) : page_(page) {}

    Result Convert(std::string_view bytes, std::string& text) override {
        const std::wstring wide = ToWide(bytes);
        std::array<char, 8> encoded{};
        BOOL replaced = FALSE;
        // Never a character that merely looks alike.
        const int length =
            WideCharToMultiByte(page_, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
                                encoded.data(), encoded.size(), nullptr, &replaced);
        if (length <= 0 || replaced != FALSE) {
            return Result::Invalid;
        }
        text.assign(encoded.data(), static_cast<std::size_t>(length));
        return Result::Done;
    }

  private:
    UINT page_;
};

template <typename Converter>
std::unique_ptr<CharsetConverter> MakeConverter(const std::string& charset) {
    const std::optional<UINT> page = CodePageOf(charset);
    return page ? std::make_unique<Converter>(*page) : nullptr;
}

}  // namespace

std::string CharsetName(std::uint32_t codePage) {
    return std::string(kPrefix).append(std::to_string(codePage));
}

std::unique_ptr<CharsetConverter> ConverterFrom(const std::string& charset) {
    return MakeConverter<FromCodePage>(charset);
}

std::unique_ptr<CharsetConverter> ConverterTo(const std::string& charset) {
    return MakeConverter<ToCodePage>(charset);
}

}  // namespace ostrevin
