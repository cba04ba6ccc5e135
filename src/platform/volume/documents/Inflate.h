// Deflated data (RFC 1951), as the parts of an office document are stored.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ostrevin::documents {

/// What deflated data holds; none when it is damaged, or more than the most. The cost is linear in the bytes
/// read and made.
[[nodiscard]] std::optional<std::string> Inflate(std::string_view deflated, std::size_t most);

}  // namespace ostrevin::documents
