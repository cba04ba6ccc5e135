// The fonts of windows and controls.
#pragma once

#include <map>
#include <string>

#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

class Fonts {
  public:
    Fonts() = default;
    Fonts(const Fonts&) = delete;
    Fonts& operator=(const Fonts&) = delete;
    ~Fonts();

    /// A typeface in the size of the system's font for messages, or that font itself for an empty name. It
    /// goes with this object.
    [[nodiscard]] HFONT Get(const std::string& typeface);

  private:
    std::map<std::string, HFONT> fonts_;
};

}  // namespace ostrevin::win32
