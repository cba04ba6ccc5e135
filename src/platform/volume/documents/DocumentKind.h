// The kinds of documents that may be handed to the examiner's desktop, by their names and their contents.
//
// A desktop may choose the program for a file by its content as well as by its name. So a document counts
// only when both say the same, and nothing in it makes it something else for another reader.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/Platform.h"

namespace ostrevin::documents {

enum class Verdict : std::uint8_t {
    Document,      ///< what its name says, and passive
    OtherName,     ///< the name is that of no kind that is opened
    Executes,      ///< a program, a script, a starter of a desktop
    Markup,        ///< HTML, XML, SVG
    Archive,       ///< an archive, or something that has one in it
    OtherContent,  ///< not what its name says
};

/// Whether a name has the ending of a kind that is opened.
[[nodiscard]] bool IsDocumentName(std::string_view name);
/// Reads some parts of the file, however large that is. Macros in an office document are not looked for, but
/// for those that the list of its parts' types tells.
[[nodiscard]] Verdict Judge(std::string_view name, InputFile& file);

}  // namespace ostrevin::documents
