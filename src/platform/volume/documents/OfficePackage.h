// Office documents that are ZIP files: those of Office Open XML (docx) and of OpenDocument (odt).
#pragma once

#include <initializer_list>
#include <string_view>

#include "platform/Platform.h"

namespace ostrevin::documents {

/// Whether the list of its parts' types makes the file a document of this main type, without macros. The file
/// holds no program for a Java machine.
[[nodiscard]] bool IsOfficeOpenXml(InputFile& file, std::string_view mainType);
/// Whether the file begins as a document of one of these types does, and holds no such program.
[[nodiscard]] bool IsOpenDocument(InputFile& file, std::initializer_list<std::string_view> types);

}  // namespace ostrevin::documents
