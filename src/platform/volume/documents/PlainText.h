// Text for a person, as opposed to what a program takes for its own.
#pragma once

#include <string_view>

namespace ostrevin::documents {

enum class TextKind {
    Plain,       ///< or nothing at all
    Executes,    ///< a script, a page description, a starter of a desktop
    Markup,      ///< HTML, XML, SVG
    Structured,  ///< a letter of mail, a card, a document whose own name is another
    Binary,
};

/// What a text file is that begins so: in a single-byte code page, UTF-8, or UTF-16 with its mark.
[[nodiscard]] TextKind TextKindOf(std::string_view beginning);

}  // namespace ostrevin::documents
