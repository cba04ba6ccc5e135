// The host's conversion between a character set and UTF-8, one character at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace ostrevin {

class CharsetConverter {
  public:
    enum class Result { Done, Incomplete, Invalid };

    CharsetConverter() = default;
    CharsetConverter(const CharsetConverter&) = delete;
    CharsetConverter& operator=(const CharsetConverter&) = delete;
    virtual ~CharsetConverter() = default;

    /// Converts the bytes of one character. The text is empty for one that the host passes over.
    virtual Result Convert(std::string_view bytes, std::string& text) = 0;
};

/// The host's name of a Windows code page of one or two bytes a character, whether or not it knows it.
[[nodiscard]] std::string CharsetName(std::uint32_t codePage);

/// Null for a set that the host does not know by this name.
[[nodiscard]] std::unique_ptr<CharsetConverter> ConverterFrom(const std::string& charset);
/// The other way: it takes a character in UTF-8.
[[nodiscard]] std::unique_ptr<CharsetConverter> ConverterTo(const std::string& charset);

}  // namespace ostrevin
