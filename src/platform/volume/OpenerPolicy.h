// What of an examined volume may be handed to the examiner's desktop: addresses of the web and of mail, and
// no file that could execute. Which documents may be is told in documents/DocumentKind.h.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ostrevin {

/// How many bytes of a file's beginning LooksExecutable wants to see.
inline constexpr std::size_t kTellingBytes = 4096;

/// Whether a file that begins so is a program, a script or a starter of the desktop, whatever its name says.
[[nodiscard]] bool LooksExecutable(std::span<const std::byte> beginning);

/// The scheme of an address in lower case ("http"); empty for a path, whose drive letter is no scheme.
[[nodiscard]] std::string SchemeOf(std::string_view address);

/// An address of the web or of mail in the form in which it may be handed on. Of the web: it names a host,
/// and what has no place in an address (blanks, quotes, controls, other than ASCII) is in percent form. Of
/// mail: one address without anything behind it. None for any other scheme, and for an address of more than
/// 2,083 bytes.
[[nodiscard]] std::optional<std::string> PermittedAddress(std::string_view address);

/// The path in an address such as file:///C:/My%20Documents/a.txt, its percent forms replaced by the bytes
/// that they stand for. A host in the address gives a network path.
[[nodiscard]] std::string PathOfFileAddress(std::string_view address);

}  // namespace ostrevin
