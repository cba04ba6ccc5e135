// The form of the inputs of the documents' fuzz target: the first byte picks a name, the others are the file.
#pragma once

#include <array>

namespace ostrevin::fuzz {

inline constexpr std::array kDocumentNames = {"a.docx", "a.odt", "a.doc", "a.xls",
                                              "a.txt",  "a.mp3", "a.ppm", "a.bmp"};

}  // namespace ostrevin::fuzz
