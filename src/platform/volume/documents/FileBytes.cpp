#include "platform/volume/documents/FileBytes.h"

#include <algorithm>

#include "platform/LittleEndian.h"

namespace ostrevin::documents {

std::string BytesAt(InputFile& file, std::uint64_t offset, std::size_t count) {
    if (offset >= file.Size()) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, file.Size() - offset)), '\0');
    bytes.resize(file.Read(offset, std::as_writable_bytes(std::span(bytes))));
    return bytes;
}

std::string BytesAtEnd(InputFile& file, std::size_t count) {
    return BytesAt(file, file.Size() - std::min<std::uint64_t>(count, file.Size()), count);
}

std::uint16_t Number16(std::string_view bytes, std::size_t at) {
    return IntegerAt<std::uint16_t>(std::as_bytes(std::span(bytes)), at);
}

std::uint32_t Number32(std::string_view bytes, std::size_t at) {
    return IntegerAt<std::uint32_t>(std::as_bytes(std::span(bytes)), at);
}

}  // namespace ostrevin::documents
