// Bounded reading of parts of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/Platform.h"

namespace ostrevin::documents {

/// The bytes at an offset; as many as the file has of them.
[[nodiscard]] std::string BytesAt(InputFile& file, std::uint64_t offset, std::size_t count);
/// The last bytes of the file.
[[nodiscard]] std::string BytesAtEnd(InputFile& file, std::size_t count);

/// The little-endian number at an offset of some bytes; 0 when it does not lie within them.
[[nodiscard]] std::uint16_t Number16(std::string_view bytes, std::size_t at);
[[nodiscard]] std::uint32_t Number32(std::string_view bytes, std::size_t at);

}  // namespace ostrevin::documents
