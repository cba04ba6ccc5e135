// Bounded access to the bytes of a shell link file.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/LittleEndian.h"

namespace ostrevin::lnk {

using Bytes = std::span<const std::byte>;

/// Single-byte text in the code page of the examined machine, as UTF-8.
using AnsiDecoder = std::function<std::string(std::string_view)>;

/// The bytes from an offset to the end; empty when the offset lies beyond it.
[[nodiscard]] Bytes From(Bytes bytes, std::size_t at);

/// How many bytes stand before the first NUL byte; none when there is no NUL.
[[nodiscard]] std::optional<std::size_t> AnsiLength(Bytes bytes);

/// How many bytes stand before the first NUL code unit; none when there is no NUL.
[[nodiscard]] std::optional<std::size_t> Utf16ByteLength(Bytes bytes);

/// Single-byte text up to a NUL or the end.
[[nodiscard]] std::string AnsiText(Bytes bytes, const AnsiDecoder& decode);

/// UTF-16 text up to a NUL or the end.
[[nodiscard]] std::string Utf16Text(Bytes bytes);

/// Single-byte text at an offset; empty unless a NUL ends it within the bytes.
[[nodiscard]] std::string TerminatedAnsi(Bytes bytes, std::size_t at, const AnsiDecoder& decode);

/// UTF-16 text at an offset; empty unless a NUL ends it within the bytes.
[[nodiscard]] std::string TerminatedUtf16(Bytes bytes, std::size_t at);

}  // namespace ostrevin::lnk
