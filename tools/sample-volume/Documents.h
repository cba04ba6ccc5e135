// Contents of the documents that exist on the sample volume.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace ostrevin::samples {

/// A document by the extension of its path: text, rich text (also under .doc), web page, table or picture.
/// The sentences are UTF-8; which of them and which picture it gets depends on the path alone.
std::vector<std::byte> DocumentBytes(std::string_view path, std::span<const std::string_view> sentences);

/// What stands where a program would: two letters of a program file, and nothing that can run.
std::vector<std::byte> ProgramBytes(std::string_view path);

}  // namespace ostrevin::samples
