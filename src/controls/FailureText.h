// What a person is told of a failure that nobody else has handled.
#pragma once

#include <exception>
#include <new>
#include <string>

namespace ostrevin {

/// The failure's own text, but plain words where memory ran out, which the language's library calls by its
/// name for it.
[[nodiscard]] inline std::string FailureText(const std::exception& failure) {
    return dynamic_cast<const std::bad_alloc*>(&failure) == nullptr ? failure.what()
                                                                    : "There is not enough memory.";
}

}  // namespace ostrevin
