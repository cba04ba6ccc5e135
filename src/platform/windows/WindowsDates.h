// Dates as text and back, by OLE automation's conversions in the locale of the person at the screen.
#pragma once

#include <optional>
#include <string>

#include "platform/Platform.h"

namespace ostrevin::windows {

class WindowsDates {
  public:
    /// Where the locale's own texts could not be read back (a weekday in its short date, for one), dates are
    /// written as year-month-day and hours:minutes:seconds.
    WindowsDates();

    [[nodiscard]] std::string Write(double date, DateForm form) const;
    [[nodiscard]] std::optional<double> Read(const std::string& text) const;

  private:
    [[nodiscard]] bool ReadsWhatItWrites() const;

    bool inLocale_ = true;
};

}  // namespace ostrevin::windows
