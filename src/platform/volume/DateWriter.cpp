#include "platform/volume/DateWriter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/Dates.h"
#include "platform/Text.h"

namespace ostrevin {
namespace {

constexpr const char* kPlainDate = "%Y-%m-%d";
constexpr const char* kPlainTime = "%H:%M:%S";
constexpr const char* kBlanks = " \t";
constexpr int kFirstYearOfTwoDigits = 1930;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string_view TrimEnds(std::string_view text, std::string_view characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

void AppendNumber(std::string& text, int number, int leastDigits) {
    std::array<char, 4> digits{};
    std::size_t start = digits.size();
    while (start > 0 && (number > 0 || digits.size() - start < static_cast<std::size_t>(leastDigits))) {
        digits[--start] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    text.append(digits.data() + start, digits.size() - start);
}

}  // namespace

/// Turns a format of strftime into pieces.
class DateWriter::FormatReader {
  public:
    explicit FormatReader(std::string_view timeOfHalfDay) : timeOfHalfDay_(timeOfHalfDay) {}

    static Pieces Read(std::string_view format, std::string_view timeOfHalfDay) {
        FormatReader reader(timeOfHalfDay);
        reader.ReadFormat(format, 0);
        reader.TrimPieces();
        return std::move(reader.pieces_);
    }

  private:
    void ReadFormat(std::string_view format, int depth) {
        for (std::size_t i = 0; i < format.size(); ++i) {
            if (format[i] != '%') {
                AddText(format.substr(i, 1));
                continue;
            }
            // Flags, a width, and the modifiers for other eras and digits stand before the letter.
            const std::size_t letter = format.find_first_not_of("-_0^#+123456789EO", i + 1);
            if (letter == std::string_view::npos) {
                return;
            }
            const bool padded = format.substr(i, letter - i).find_first_of("-_") == std::string_view::npos;
            ReadDirective(format[letter], padded, depth);
            i = letter;
        }
    }

    void ReadDirective(char letter, bool padded, int depth) {
        if (const std::string_view format = Abbreviated(letter); !format.empty()) {
            if (depth == 0) {
                ReadFormat(format, 1);
            }
            return;
        }
        switch (letter) {
            case 'd':
                return AddNumber(Part::Day, padded);
            case 'e':
                return AddNumber(Part::Day, false);
            case 'm':
            case 'b':
            case 'B':
            case 'h':
                return AddNumber(Part::Month, padded);
            case 'y':
            case 'Y':
                return AddNumber(Part::Year, true);
            case 'H':
                return AddNumber(Part::Hour24, padded);
            case 'k':
                return AddNumber(Part::Hour24, false);
            case 'I':
                return AddNumber(Part::Hour12, padded);
            case 'l':
                return AddNumber(Part::Hour12, false);
            case 'M':
                return AddNumber(Part::Minute, padded);
            case 'S':
                return AddNumber(Part::Second, padded);
            case 'p':
            case 'P':
                return AddNumber(Part::HalfDay, false);
            case 'n':
            case 't':
                return AddText(" ");
            case '%':
                return AddText("%");
            default:
                return;  // weekdays, time zones and the like are left out
        }
    }

    /// What a directive is short for; empty when it stands for itself.
    [[nodiscard]] std::string_view Abbreviated(char letter) const {
        switch (letter) {
            case 'D':
                return "%m/%d/%y";
            case 'F':
                return "%Y-%m-%d";
            case 'R':
                return "%H:%M";
            case 'T':
                return "%H:%M:%S";
            case 'r':
                return timeOfHalfDay_;
            default:
                return {};
        }
    }

    void AddNumber(Part part, bool padded) { pieces_.push_back({part, padded, {}}); }

    void AddText(std::string_view text) {
        if (pieces_.empty() || pieces_.back().part != Part::Text) {
            pieces_.push_back({Part::Text, false, {}});
        }
        pieces_.back().text += text;
    }

    /// Cuts what a directive that was left out leaves dangling at the ends.
    void TrimPieces() {
        const auto trim = [this](Pieces::iterator piece) {
            if (piece->part == Part::Text) {
                piece->text = TrimEnds(piece->text, " ,");
                if (piece->text.empty()) {
                    pieces_.erase(piece);
                }
            }
        };
        if (!pieces_.empty()) {
            trim(pieces_.begin());
        }
        if (!pieces_.empty()) {
            trim(pieces_.end() - 1);
        }
    }

    std::string_view timeOfHalfDay_;
    Pieces pieces_;
};

/// Goes through a text that is to be read as a date.
class DateWriter::Scanner {
  public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    struct Number {
        int value = 0;
        int digits = 0;
    };

    [[nodiscard]] bool StartsWithDigit() const { return !rest_.empty() && IsDigit(rest_.front()); }

    /// A number of at most four digits.
    bool TakeNumber(Number& number) {
        number = {};
        while (StartsWithDigit() && number.digits <= 4) {
            number.value = number.value * 10 + (rest_.front() - '0');
            ++number.digits;
            rest_.remove_prefix(1);
        }
        return number.digits >= 1 && number.digits <= 4;
    }

    /// One of the separators, with blanks around it, and the number behind it; takes nothing when there is no
    /// separator with a number behind it.
    bool TakeNextNumber(const std::vector<std::string>& separators, Number& number) {
        const std::string_view before = rest_;
        TakeBlanks();
        const auto separator = std::find_if(separators.begin(), separators.end(),
                                            [this](const auto& text) { return rest_.starts_with(text); });
        if (separator != separators.end()) {
            rest_.remove_prefix(separator->size());
            TakeBlanks();
            if (rest_.size() < before.size() && StartsWithDigit()) {
                return TakeNumber(number);
            }
        }
        rest_ = before;
        return false;
    }

    bool TakeText(std::string_view text) {
        if (text.empty() || !EqualNoCase(rest_.substr(0, text.size()), text)) {
            return false;
        }
        rest_.remove_prefix(text.size());
        return true;
    }

    /// Blanks, and a comma among them; false when there is none.
    bool TakeGap() {
        const std::size_t before = rest_.size();
        TakeBlanks();
        TakeText(",");
        TakeBlanks();
        return rest_.size() < before;
    }

    void TakeBlanks() {
        if (!rest_.empty() && !IsDigit(rest_.front())) {  // mostly there is one
            rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
        }
    }

    [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  private:
    std::string_view rest_;
};

DateWriter::DateWriter(const DateFormats& formats) : am_(formats.am), pm_(formats.pm) {
    Follow(formats);
    if (!ReadsWhatItWrites()) {
        Follow({kPlainDate, kPlainTime, {}, am_, pm_});
    }
}

void DateWriter::Follow(const DateFormats& formats) {
    date_ = FormatReader::Read(formats.date, formats.timeOfHalfDay);
    time_ = FormatReader::Read(formats.time, formats.timeOfHalfDay);
    if (!HasExactly(date_, {Part::Year, Part::Month, Part::Day})) {
        date_ = FormatReader::Read(kPlainDate, {});
    }
    const bool halves = !am_.empty() && !pm_.empty() && am_ != pm_;
    if (!HasExactly(time_, {Part::Hour24, Part::Minute, Part::Second}) &&
        !(halves && HasExactly(time_, {Part::Hour12, Part::Minute, Part::Second, Part::HalfDay}))) {
        time_ = FormatReader::Read(kPlainTime, {});
    }
    std::size_t place = 0;
    for (const Piece& piece : date_) {
        if (piece.part != Part::Text) {
            order_.at(place++) = piece.part;
        }
    }
    dateSeparators_ = Separators(date_, {"/", "-", ".", ","});
    timeSeparators_ = Separators(time_, {":", "."});
}

/// Whether dates of few and of many digits, in both halves of the day, come back.
bool DateWriter::ReadsWhatItWrites() const {
    constexpr std::array<SystemTime, 3> kTelling = {
        {{2009, 8, 4, 15, 2, 8, 0}, {1601, 11, 12, 0, 11, 12, 0}, {9999, 12, 31, 12, 59, 59, 0}}};
    return std::all_of(kTelling.begin(), kTelling.end(), [this](const SystemTime& civil) {
        const double date = DateFromCivil(civil);
        return Read(Write(date, DateForm::General)) == date;
    });
}

/// The texts between the pieces' numbers and the usual ones, the longest first.
std::vector<std::string> DateWriter::Separators(const Pieces& pieces, std::vector<std::string> separators) {
    for (const Piece& piece : pieces) {
        if (piece.part == Part::Text) {
            separators.emplace_back(TrimEnds(piece.text, kBlanks));
        }
    }
    std::stable_sort(separators.begin(), separators.end(),
                     [](const auto& left, const auto& right) { return left.size() > right.size(); });
    return separators;
}

/// Whether the pieces have each of these parts once, and no other but texts.
bool DateWriter::HasExactly(const Pieces& pieces, std::vector<Part> parts) {
    for (const Piece& piece : pieces) {
        if (piece.part != Part::Text && std::erase(parts, piece.part) == 0) {
            return false;
        }
    }
    return parts.empty();
}

std::string DateWriter::Write(double date, DateForm form) const {
    const SystemTime civil = CivilFromDate(date);
    const bool midnight = civil.hour == 0 && civil.minute == 0 && civil.second == 0;
    std::string text;
    text.reserve(32);
    if (form != DateForm::LongTime) {
        WritePieces(text, date_, civil);
    }
    if (form == DateForm::General && !midnight) {
        text += ' ';
    }
    if (form == DateForm::LongTime || (form == DateForm::General && !midnight)) {
        WritePieces(text, time_, civil);
    }
    return text;
}

void DateWriter::WritePieces(std::string& text, const Pieces& pieces, const SystemTime& civil) const {
    for (const Piece& piece : pieces) {
        const int digits = piece.padded ? 2 : 1;
        switch (piece.part) {
            case Part::Text:
                text += piece.text;
                break;
            case Part::Year:
                AppendNumber(text, civil.year, 4);
                break;
            case Part::Month:
                AppendNumber(text, civil.month, digits);
                break;
            case Part::Day:
                AppendNumber(text, civil.day, digits);
                break;
            case Part::Hour24:
                AppendNumber(text, civil.hour, digits);
                break;
            case Part::Hour12:
                AppendNumber(text, (civil.hour + 11) % 12 + 1, digits);
                break;
            case Part::Minute:
                AppendNumber(text, civil.minute, digits);
                break;
            case Part::Second:
                AppendNumber(text, civil.second, digits);
                break;
            case Part::HalfDay:
                text += civil.hour < 12 ? am_ : pm_;
                break;
        }
    }
}

std::optional<double> DateWriter::Read(std::string_view text) const {
    text = TrimEnds(text, kBlanks);
    SystemTime civil = CivilFromDays(0);
    Scanner scanner(text);
    if (ReadDate(scanner, civil) && (scanner.AtEnd() || (scanner.TakeGap() && ReadTime(scanner, civil)))) {
        return DateFromCivil(civil);
    }
    civil = CivilFromDays(0);
    Scanner timeAlone(text);
    if (ReadTime(timeAlone, civil)) {
        return DateFromCivil(civil);
    }
    return std::nullopt;
}

bool DateWriter::ReadDate(Scanner& scanner, SystemTime& civil) const {
    std::array<Scanner::Number, 3> numbers;
    if (!scanner.TakeNumber(numbers[0]) || !scanner.TakeNextNumber(dateSeparators_, numbers[1]) ||
        !scanner.TakeNextNumber(dateSeparators_, numbers[2])) {
        return false;
    }
    if (date_.back().part == Part::Text) {
        scanner.TakeText(date_.back().text);
    }
    // A year in full tells its own place; month and day keep their order, the month first behind a year.
    std::array<Part, 3> order = order_;
    if (numbers[0].digits > 2 && order[0] != Part::Year) {
        order = {Part::Year, Part::Month, Part::Day};
    } else if (numbers[2].digits > 2) {
        std::stable_partition(order.begin(), order.end(), [](Part part) { return part != Part::Year; });
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Scanner::Number& number = numbers.at(i);
        if (order.at(i) == Part::Year) {
            const int century = number.value < kFirstYearOfTwoDigits % 100 ? 2000 : 1900;
            civil.year = number.digits > 2 ? number.value : century + number.value;
        } else if (number.digits > 2) {
            return false;
        } else {
            (order.at(i) == Part::Month ? civil.month : civil.day) = number.value;
        }
    }
    return IsCivil(civil);
}

/// Reads a time that ends the text.
bool DateWriter::ReadTime(Scanner& scanner, SystemTime& civil) const {
    std::optional<bool> afternoon;
    if (!scanner.StartsWithDigit()) {
        afternoon = ReadHalfDay(scanner);
    }
    Scanner::Number hour;
    Scanner::Number minute;
    Scanner::Number second;
    if (!scanner.TakeNumber(hour)) {
        return false;
    }
    const bool hourAlone = !scanner.TakeNextNumber(timeSeparators_, minute);
    if (!hourAlone) {
        scanner.TakeNextNumber(timeSeparators_, second);
    }
    if (time_.back().part == Part::Text) {
        scanner.TakeText(time_.back().text);
    }
    scanner.TakeBlanks();
    if (!afternoon) {
        afternoon = ReadHalfDay(scanner);
    }
    if (!scanner.AtEnd() || (hourAlone && !afternoon) || (afternoon && hour.value > 12) || hour.digits > 2 ||
        minute.digits > 2 || second.digits > 2) {
        return false;
    }
    civil.hour = afternoon ? hour.value % 12 + (*afternoon ? 12 : 0) : hour.value;
    civil.minute = minute.value;
    civil.second = second.value;
    return IsCivil(civil);
}

/// Whether the text says "afternoon" next, or "before noon"; none when it says neither.
std::optional<bool> DateWriter::ReadHalfDay(Scanner& scanner) const {
    std::optional<bool> afternoon;
    const bool pmFirst = pm_.size() >= am_.size();  // one may begin as the other does
    if (scanner.TakeText(pmFirst ? pm_ : am_)) {
        afternoon = pmFirst;
    } else if (scanner.TakeText(pmFirst ? am_ : pm_)) {
        afternoon = !pmFirst;
    } else if (scanner.TakeText("AM")) {
        afternoon = false;
    } else if (scanner.TakeText("PM")) {
        afternoon = true;
    }
    scanner.TakeBlanks();
    return afternoon;
}

}  // namespace ostrevin
