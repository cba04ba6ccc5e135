// The indexed lists of the program as tests look at them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ostrevin {

/// What an indexed text has for every index of its list.
template <typename List>
std::vector<std::string> All(const List& list, std::string (List::*text)(std::int32_t) const) {
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(list.Count()));
    for (std::int32_t i = 0; i < list.Count(); ++i) {
        texts.push_back((list.*text)(i));
    }
    return texts;
}

}  // namespace ostrevin
