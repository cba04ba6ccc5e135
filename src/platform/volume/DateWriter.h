// Dates as text and back, in the manner of one locale. What is written can be read back: the year stands in
// four digits always, and every month as a number.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

/// How a locale writes dates, in the formats of strftime, and its texts for the halves of the day (UTF-8).
struct DateFormats {
    std::string date = "%-m/%-d/%Y";
    std::string time = "%-I:%M:%S %p";
    std::string timeOfHalfDay = "%-I:%M:%S %p";  ///< what %r stands for
    std::string am = "AM";
    std::string pm = "PM";
};

class DateWriter {
  public:
    /// Works the formats out once. A format with a part missing or twice is replaced by year-month-day or by
    /// hours:minutes:seconds, and both are when what they write could not be read back.
    explicit DateWriter(const DateFormats& formats);

    [[nodiscard]] std::string Write(double date, DateForm form) const;
    /// Reads what Write wrote and what a person would type: a date in the locale's order or beginning with
    /// its year in four digits, a time with or without seconds, both or either; fields of one or two digits.
    /// A year of two digits lies in 1930 to 2029. None when it is no date.
    [[nodiscard]] std::optional<double> Read(std::string_view text) const;

  private:
    enum class Part { Text, Year, Month, Day, Hour24, Hour12, Minute, Second, HalfDay };
    struct Piece {
        Part part = Part::Text;
        bool padded = false;  ///< a number: at least two digits
        std::string text;
    };
    using Pieces = std::vector<Piece>;
    class FormatReader;
    class Scanner;

    void Follow(const DateFormats& formats);
    [[nodiscard]] bool ReadsWhatItWrites() const;
    [[nodiscard]] static bool HasExactly(const Pieces& pieces, std::vector<Part> parts);
    static std::vector<std::string> Separators(const Pieces& pieces, std::vector<std::string> separators);
    void WritePieces(std::string& text, const Pieces& pieces, const SystemTime& civil) const;
    bool ReadDate(Scanner& scanner, SystemTime& civil) const;
    bool ReadTime(Scanner& scanner, SystemTime& civil) const;
    [[nodiscard]] std::optional<bool> ReadHalfDay(Scanner& scanner) const;

    Pieces date_;
    Pieces time_;
    std::array<Part, 3> order_{};              // of year, month and day
    std::vector<std::string> dateSeparators_;  // what may stand between the numbers, blanks around it aside
    std::vector<std::string> timeSeparators_;
    std::string am_;
    std::string pm_;
};

}  // namespace ostrevin
