// Bytes of one character set as UTF-8, and back.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace ostrevin {

/// The code page of western Windows, taken where none is named or the named one is not known here.
inline constexpr std::uint32_t kWesternCodePage = 1252;

class CharsetConverter;  // the host's conversion

class CharsetDecoder {
  public:
    /// For a Windows code page of one or two bytes a character; kWesternCodePage for one that is not known.
    explicit CharsetDecoder(std::uint32_t codePage);
    /// For a character set by the host's name of it; kWesternCodePage for one that is not known.
    explicit CharsetDecoder(const std::string& charset);
    ~CharsetDecoder();
    CharsetDecoder(CharsetDecoder&&) noexcept;
    CharsetDecoder& operator=(CharsetDecoder&&) noexcept;

    /// Every byte becomes text: one of 0x80 to 0x9F that the set leaves open becomes the control character of
    /// its number, as in Windows, and what else is no character U+FFFD.
    [[nodiscard]] std::string Decode(std::string_view bytes) const;

  private:
    std::unique_ptr<CharsetConverter> converter_;
    std::array<std::string, 256> characters_;  // of the bytes that stand alone; empty for those that lead
    std::array<bool, 256> plain_{};            // the bytes that stand for themselves in UTF-8
};

class CharsetEncoder {
  public:
    /// For a Windows code page, as the decoder has it.
    explicit CharsetEncoder(std::uint32_t codePage);
    ~CharsetEncoder();
    CharsetEncoder(CharsetEncoder&&) noexcept;
    CharsetEncoder& operator=(CharsetEncoder&&) noexcept;

    /// "?" for a character that the set does not hold and for a byte that is no UTF-8. What the decoder makes
    /// of a byte that the set leaves open becomes that byte again.
    [[nodiscard]] std::string Encode(std::string_view text) const;

  private:
    void AppendEncoded(std::string& bytes, std::string_view character) const;

    std::unique_ptr<CharsetConverter> converter_;
    CharsetDecoder decoder_;
};

}  // namespace ostrevin
