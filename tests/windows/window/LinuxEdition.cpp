#include "tests/windows/window/LinuxEdition.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace ostrevin {
namespace {

/// Goes through one line.
class LineReader {
  public:
    explicit LineReader(std::string_view line) : rest_(line) {}

    Entry Read() {
        Entry entry;
        for (Take('{'); !rest_.starts_with('}'); Skip(',')) {
            const std::string name = ReadText();
            Take(':');
            entry[name] = rest_.starts_with('"') ? ReadText() : ReadNumber();
        }
        return entry;
    }

  private:
    void Take(char expected) {
        if (!Skip(expected)) {
            throw std::runtime_error("no JSON line: " + std::string(rest_));
        }
    }
    bool Skip(char character) {
        const bool there = rest_.starts_with(character);
        rest_.remove_prefix(there ? 1 : 0);
        return there;
    }
    std::string ReadNumber() {
        const std::string number(rest_.substr(0, rest_.find_first_not_of("-0123456789")));
        rest_.remove_prefix(number.size());
        return number;
    }
    std::string ReadText() {
        std::string text;
        for (Take('"'); !rest_.starts_with('"');) {
            text += Skip('\\') ? ReadEscaped() : TakeAny();
        }
        Take('"');
        return text;
    }
    char ReadEscaped() {
        if (!Skip('u')) {
            return TakeAny();
        }
        // Only control characters are written so.
        constexpr std::size_t kDigits = 4;
        unsigned code = 0;
        std::from_chars(rest_.data(), rest_.data() + kDigits, code, 16);
        rest_.remove_prefix(kDigits);
        return static_cast<char>(code);
    }
    char TakeAny() {
        const char character = rest_.at(0);
        rest_.remove_prefix(1);
        return character;
    }

    std::string_view rest_;
};

constexpr char kNoMoment[] = "1601-01-01T00:00:00";

bool IsProgram(const Entry& entry) {
    std::string path = entry.at("value");
    std::transform(path.begin(), path.end(), path.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return entry.at("type").find("RUNPATH") != std::string::npos && path.find("EXE") != std::string::npos;
}

bool IsPage(const Entry& entry) {
    const std::string& url = entry.at("url");
    return url.starts_with("about") || url.starts_with("http") || url.starts_with("file");
}

bool IsListed(const Entry& /*entry*/) {
    return true;
}

Texts ProgramRow(const Entry& entry) {
    const std::string& lastRun = entry.at("lastRun");
    return {entry.at("value"), entry.at("runCount"), lastRun <= kNoMoment ? "" : GeneralDate(lastRun), ""};
}

Texts RecentRow(const Entry& entry) {
    return {entry.at("path"), ""};
}

Texts OpenSaveRow(const Entry& entry) {
    return {entry.at("document"), ""};
}

Texts HistoryRow(const Entry& entry) {
    return {entry.at("url"), GeneralDate(entry.at("dateAccessed"))};
}

Texts TypedRow(const Entry& entry) {
    return {entry.at("url")};
}

struct Kind {
    const char* source;
    bool (*isListed)(const Entry&);
    Texts (*row)(const Entry&);
};

constexpr std::array<Kind, 5> kKinds = {{{"UserAssist", IsProgram, ProgramRow},
                                         {"RecentDocument", IsListed, RecentRow},
                                         {"OpenSave", IsListed, OpenSaveRow},
                                         {"IEHistory", IsPage, HistoryRow},
                                         {"TypedURL", IsListed, TypedRow}}};

}  // namespace

std::vector<Entry> ReadJsonLines(std::string_view text) {
    std::vector<Entry> entries;
    for (std::size_t end = 0; (end = text.find('\n')) != std::string_view::npos;
         text.remove_prefix(end + 1)) {
        entries.push_back(LineReader(text.substr(0, end)).Read());
    }
    return entries;
}

std::string GeneralDate(const std::string& moment) {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (std::sscanf(moment.c_str(), "%d-%d-%dT%d:%d:%d", &year, &month, &day, &hour, &minute, &second) != 6) {
        throw std::runtime_error("no moment: " + moment);
    }
    std::array<char, 80> text{};
    int length = std::snprintf(text.data(), text.size(), "%d/%d/%d", month, day, year);
    if (hour != 0 || minute != 0 || second != 0) {
        const auto written = static_cast<std::size_t>(length);
        length += std::snprintf(text.data() + written, text.size() - written, " %d:%02d:%02d %s",
                                (hour + 11) % 12 + 1, minute, second, hour < 12 ? "AM" : "PM");
    }
    return {text.data(), static_cast<std::size_t>(length)};
}

std::vector<Texts> RowsOf(const std::vector<Entry>& entries, const std::string& sid, int tab) {
    const Kind& kind = kKinds.at(static_cast<std::size_t>(tab));
    std::vector<Texts> rows;
    for (const Entry& entry : entries) {
        if (entry.at("sid") == sid && entry.at("source") == kind.source && kind.isListed(entry)) {
            rows.push_back(kind.row(entry));
        }
    }
    return rows;
}

}  // namespace ostrevin
