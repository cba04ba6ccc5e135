#include "platform/TextIntake.h"

#include "platform/Text.h"

namespace ostrevin {

bool TextIntake::Take(std::string& text) {
    constexpr std::size_t kEach = 32;  // of memory, however short a text is
    // A character has one byte at least, so that most texts need not be counted.
    const std::size_t kept = text.size() <= longest_ ? text.size() : Beginning(text, longest_).size();
    if (full_ || kept + kEach > most_ - taken_) {
        full_ = true;
        return false;
    }
    taken_ += kept + kEach;
    if (kept < text.size()) {
        cut_ = true;
        text.resize(kept);
        text.shrink_to_fit();
    }
    return true;
}

std::string TextIntake::Loss() const {
    std::string loss;
    if (cut_) {
        loss = "Texts of more than " + std::to_string(longest_) + " characters are cut.";
    }
    if (full_) {
        loss += loss.empty() ? "" : " ";
        loss += "There is more text than any real list holds: the rest is left out.";
    }
    return loss;
}

}  // namespace ostrevin
