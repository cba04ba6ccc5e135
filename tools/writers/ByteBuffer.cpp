#include "tools/writers/ByteBuffer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

namespace ostrevin::samples {
namespace {

template <typename Integer>
std::array<std::byte, sizeof(Integer)> LittleEndian(Integer value) {
    std::array<std::byte, sizeof(Integer)> bytes{};
    auto rest = static_cast<std::uint64_t>(value);
    for (std::byte& byte : bytes) {
        byte = static_cast<std::byte>(rest & 0xFF);
        rest >>= 8U;
    }
    return bytes;
}

template <typename Integer>
Integer Narrow(std::size_t size) {
    if (size > std::numeric_limits<Integer>::max()) {
        throw std::length_error("too large for the field of the format");
    }
    return static_cast<Integer>(size);
}

}  // namespace

void ByteBuffer::U8(std::uint8_t value) {
    bytes_.push_back(static_cast<std::byte>(value));
}
void ByteBuffer::U16(std::uint16_t value) {
    Bytes(LittleEndian(value));
}
void ByteBuffer::U32(std::uint32_t value) {
    Bytes(LittleEndian(value));
}
void ByteBuffer::U64(std::uint64_t value) {
    Bytes(LittleEndian(value));
}

void ByteBuffer::Bytes(std::span<const std::byte> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void ByteBuffer::Text(std::string_view bytes) {
    Bytes(std::as_bytes(std::span(bytes)));
}

void ByteBuffer::TextZ(std::string_view bytes) {
    Text(bytes);
    U8(0);
}

void ByteBuffer::Utf16(std::u16string_view text) {
    for (const char16_t unit : text) {
        U16(unit);
    }
}

void ByteBuffer::Utf16Z(std::u16string_view text) {
    Utf16(text);
    U16(0);
}

void ByteBuffer::Align(std::size_t unit, std::uint8_t fill) {
    PadTo((bytes_.size() + unit - 1) / unit * unit, fill);
}

void ByteBuffer::PadTo(std::size_t size, std::uint8_t fill) {
    if (bytes_.size() < size) {
        bytes_.resize(size, static_cast<std::byte>(fill));
    }
}

void ByteBuffer::PutU16(std::size_t offset, std::uint16_t value) {
    PutBytes(offset, LittleEndian(value));
}
void ByteBuffer::PutU32(std::size_t offset, std::uint32_t value) {
    PutBytes(offset, LittleEndian(value));
}
void ByteBuffer::PutU64(std::size_t offset, std::uint64_t value) {
    PutBytes(offset, LittleEndian(value));
}

void ByteBuffer::PutBytes(std::size_t offset, std::span<const std::byte> bytes) {
    if (offset > bytes_.size() || bytes.size() > bytes_.size() - offset) {
        throw std::out_of_range("overwriting beyond the end");
    }
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
}

std::uint32_t ByteBuffer::Offset() const {
    return Size32(bytes_.size());
}

std::uint32_t U32At(std::span<const std::byte> bytes, std::size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < 4) {
        throw std::out_of_range("reading beyond the end");
    }
    std::uint32_t value = 0;
    for (std::size_t i = 4; i > 0; --i) {
        value = (value << 8U) | std::to_integer<std::uint32_t>(bytes[offset + i - 1]);
    }
    return value;
}

std::uint32_t Size32(std::size_t size) {
    return Narrow<std::uint32_t>(size);
}
std::uint16_t Size16(std::size_t size) {
    return Narrow<std::uint16_t>(size);
}

}  // namespace ostrevin::samples
