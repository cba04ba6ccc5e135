// The bounds of what is taken in of texts that the machine stores.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

namespace ostrevin {

/// No path of Windows has more characters (UTF-16 code units), and no text that is read here means more.
inline constexpr std::uint32_t kLongestText = 32767;

/// Takes in the texts of one list. A few bytes of a hive can stand for a long text, many times over: each
/// text is cut to kLongestText, and once the texts together take more memory than the most, no more are
/// taken.
class TextIntake {
  public:
    /// Far more than any list of Windows' own takes, in bytes.
    static constexpr std::size_t kMostOfList = std::size_t{32} << 20U;
    static constexpr std::size_t kUnbounded = std::numeric_limits<std::size_t>::max();

    explicit TextIntake(std::uint32_t longest = kLongestText, std::size_t most = kMostOfList)
        : longest_(longest), most_(most) {}

    /// Cuts a text to what is taken of it; false when nothing is taken any more.
    [[nodiscard]] bool Take(std::string& text);
    /// Notes that a text was cut by whoever read it.
    void NoteCut() { cut_ = true; }
    /// What was cut off, in one sentence; empty when nothing was.
    [[nodiscard]] std::string Loss() const;

  private:
    std::uint32_t longest_;  // in characters
    std::size_t most_;
    std::size_t taken_ = 0;
    bool cut_ = false;
    bool full_ = false;
};

}  // namespace ostrevin
