// A growing run of bytes, integers little-endian: what the writers of sample files build them in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace ostrevin::samples {

class ByteBuffer {
  public:
    void U8(std::uint8_t value);
    void U16(std::uint16_t value);
    void U32(std::uint32_t value);
    void U64(std::uint64_t value);
    void Bytes(std::span<const std::byte> bytes);
    /// The characters' bytes, without a terminator.
    void Text(std::string_view bytes);
    /// The characters' bytes and a NUL.
    void TextZ(std::string_view bytes);
    void Utf16(std::u16string_view text);
    /// The code units and a NUL of two bytes.
    void Utf16Z(std::u16string_view text);
    /// Appends fill until the size is a multiple of unit.
    void Align(std::size_t unit, std::uint8_t fill = 0);
    /// Appends fill until the size is reached; does nothing when it is larger already.
    void PadTo(std::size_t size, std::uint8_t fill = 0);

    // Overwriting. Offset and length must lie inside of what is there: std::out_of_range otherwise.
    void PutU16(std::size_t offset, std::uint16_t value);
    void PutU32(std::size_t offset, std::uint32_t value);
    void PutU64(std::size_t offset, std::uint64_t value);
    void PutBytes(std::size_t offset, std::span<const std::byte> bytes);

    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    /// The size as the 32 bits in which the formats store offsets; std::length_error when it does not fit.
    [[nodiscard]] std::uint32_t Offset() const;
    [[nodiscard]] const std::vector<std::byte>& View() const { return bytes_; }
    [[nodiscard]] std::vector<std::byte> Take() { return std::move(bytes_); }

  private:
    std::vector<std::byte> bytes_;
};

/// The 32-bit integer at an offset; std::out_of_range when the bytes end before.
std::uint32_t U32At(std::span<const std::byte> bytes, std::size_t offset);

/// A size as 32 bits; std::length_error when it does not fit.
std::uint32_t Size32(std::size_t size);
/// A size as 16 bits; std::length_error when it does not fit.
std::uint16_t Size16(std::size_t size);

}  // namespace ostrevin::samples
