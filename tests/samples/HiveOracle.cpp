#include "tests/samples/HiveOracle.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <set>
#include <strings.h>

#include "tests/samples/Oracle.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/SampleText.h"

namespace ostrevin::samples {
namespace {

constexpr std::uint32_t kString = 1;
constexpr std::uint32_t kExpandString = 2;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kDword = 4;
constexpr std::uint32_t kLink = 6;

using Lines = std::vector<std::string>;

/// UTF-8 of UTF-16, up to the first NUL or the end.
std::string Utf8OfTerminated(std::span<const std::byte> utf16) {
    std::string text;
    const auto put = [&](unsigned lead, unsigned code, unsigned sequenceLength) {
        text += static_cast<char>(lead | code >> (6 * (sequenceLength - 1)));
        for (unsigned left = sequenceLength - 1; left > 0; --left) {
            text += static_cast<char>(0x80U | (code >> (6 * (left - 1)) & 0x3FU));
        }
    };
    for (; utf16.size() >= 2; utf16 = utf16.subspan(2)) {
        const unsigned code = std::to_integer<unsigned>(utf16[0]) | std::to_integer<unsigned>(utf16[1]) << 8U;
        if (code == 0) {
            break;
        }
        if (code < 0x80) {
            put(0, code, 1);
        } else if (code < 0x800) {
            put(0xC0, code, 2);
        } else {
            put(0xE0, code, 3);
        }
    }
    return text;
}

/// A number in so many hexadecimal digits.
std::string Digits(std::uint32_t number, int count, bool upperCase) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), upperCase ? "%0*X" : "%0*x", count, number);
    return text.data();
}

/// The sub-keys by upper-cased name.
std::vector<const HiveKey*> Sorted(const HiveKey& key) {
    std::vector<const HiveKey*> keys;
    for (const HiveKey& subKey : key.subKeys) {
        keys.push_back(&subKey);
    }
    std::stable_sort(keys.begin(), keys.end(), [](const HiveKey* a, const HiveKey* b) {
        return ToUpper(ToUtf16(a->name)) < ToUpper(ToUtf16(b->name));
    });
    return keys;
}

/// Calls visit(key, path) for the key and everything below it; paths end with the separator.
template <typename Visit>
void ForEachKey(const HiveKey& key, const std::string& path, const std::string& separator,
                const Visit& visit) {
    visit(key, path);
    for (const HiveKey* subKey : Sorted(key)) {
        std::string subPath = path;
        subPath += subKey->name;
        subPath += separator;
        ForEachKey(*subKey, subPath, separator, visit);
    }
}

std::string Hex(std::span<const std::byte> data) {
    std::string text;
    for (const std::byte byte : data) {
        if (!text.empty()) {
            text += ',';
        }
        text += Digits(std::to_integer<std::uint32_t>(byte), 2, false);
    }
    return text;
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\\' || c == '"') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

std::string HivexLine(const HiveValue& value) {
    std::string name = "\"";
    name += value.name.empty() ? "@" : Escaped(value.name);
    name += "\"=";
    switch (value.type) {
        case kString:
            return name + "\"" + Escaped(Utf8OfTerminated(value.data)) + "\"";
        case kExpandString:
        case kLink:
            return name + "str(" + std::to_string(value.type) + "):\"" +
                   Escaped(Utf8OfTerminated(value.data)) + "\"";
        case kDword:
            return name + "dword:" + Digits(U32At(value.data, 0), 8, false);
        default:
            return name + "hex(" + std::to_string(value.type) + "):" + Hex(value.data);
    }
}

bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Text as reglookup writes it: percent, comma and what cannot be printed as %XX.
std::string Percent(std::span<const std::byte> bytes, char alsoQuoted) {
    std::string text;
    for (const std::byte byte : bytes) {
        const auto c = std::to_integer<char>(byte);
        const bool plain = c >= ' ' && c <= '~' && c != '%' && c != ',' && c != '"' && c != alsoQuoted;
        if (plain) {
            text += c;
        } else {
            text += '%';
            text += Digits(std::to_integer<std::uint32_t>(byte), 2, true);
        }
    }
    return text;
}

std::string Percent(const std::string& text, char alsoQuoted) {
    return Percent(std::as_bytes(std::span(text)), alsoQuoted);
}

/// The line of a value of a type that is compared, else empty.
std::string ReglookupLine(const HiveValue& value, const std::string& path) {
    const std::string name = path + Percent(value.name, '/');
    if (value.data.empty() || !IsAscii(value.name)) {
        return "";
    }
    if (value.type == kDword) {
        return name + ",DWORD,0x" + Digits(U32At(value.data, 0), 8, true) + ",";
    }
    if (value.type == kBinary) {
        return name + ",BINARY," + Percent(value.data, ',') + ",";
    }
    if (value.type == kString || value.type == kExpandString) {
        const std::string text = Utf8OfTerminated(value.data);
        return IsAscii(text) && !text.empty()
                   ? name + (value.type == kString ? ",SZ," : ",EXPAND_SZ,") + Percent(text, ',') + ","
                   : "";
    }
    return "";
}

}  // namespace

void ExpectHivexAgrees(const HiveKey& root, std::span<const std::byte> hive) {
    const TestFile file(hive);
    std::string script;
    Lines expected;
    ForEachKey(root, "\\", "\\", [&](const HiveKey& key, const std::string& path) {
        script += "cd " + (path.size() > 1 ? path.substr(0, path.size() - 1) : path) + "\nls\nlsval\n";
        // The program sorts names itself; their order in the file shows in the other readers.
        Lines names;
        for (const HiveKey& subKey : key.subKeys) {
            names.push_back(subKey.name);
        }
        std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
            return ::strcasecmp(a.c_str(), b.c_str()) < 0;
        });
        expected.insert(expected.end(), names.begin(), names.end());
        for (const HiveValue& value : key.values) {
            expected.push_back(HivexLine(value));
        }
    });
    ExpectSameLines(LinesOf({"hivexsh", file.Path()}, script), expected);
}

void ExpectReglookupAgrees(const HiveKey& root, const HiveOptions& options, std::span<const std::byte> hive) {
    const TestFile file(hive);
    const Lines lines = LinesOf({"reglookup", "-H", file.Path()});
    const std::set<std::string> said(lines.begin(), lines.end());
    ForEachKey(root, "/", "/", [&](const HiveKey& key, const std::string& path) {
        if (!IsAscii(path)) {
            return;
        }
        const std::string keyPath = path.size() > 1 ? path.substr(0, path.size() - 1) : path;
        const std::uint64_t time = key.lastWritten != 0 ? key.lastWritten : options.lastWritten;
        const std::string keyLine = Percent(keyPath, ',') + ",KEY,," + TimeText(time, "%Y-%m-%d %H:%M:%S");
        EXPECT_TRUE(said.contains(keyLine)) << keyLine;
        for (const HiveValue& value : key.values) {
            const std::string line = ReglookupLine(value, Percent(path, ','));
            EXPECT_TRUE(line.empty() || said.contains(line)) << line.substr(0, 500);
        }
    });
    const auto keys = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.find(",KEY,,") != std::string::npos;
    });
    std::ptrdiff_t written = 0;
    ForEachKey(root, "/", "/", [&](const HiveKey&, const std::string&) { ++written; });
    EXPECT_EQ(keys, written);
}

void ExpectRegfexportAgrees(const HiveKey& root, std::span<const std::byte> hive) {
    const TestFile file(hive);
    Lines said;
    for (const std::string& line : LinesOf({"regfexport", file.Path()})) {
        if (line.starts_with("Key path: ") || line.starts_with("Value: ") || line.starts_with("Data: ")) {
            said.push_back(line);
        }
    }
    Lines expected;
    ForEachKey(root, root.name + "\\", "\\", [&](const HiveKey& key, const std::string& path) {
        expected.push_back("Key path: " + path.substr(0, path.size() - 1));
        for (std::size_t i = 0; i < key.values.size(); ++i) {
            const HiveValue& value = key.values[i];
            expected.push_back("Value: " + std::to_string(i) + " " +
                               (value.name.empty() ? "(default)" : value.name));
            if (value.type == kDword) {
                expected.push_back("Data: " + std::to_string(U32At(value.data, 0)));
            } else if ((value.type == kString || value.type == kExpandString) && !value.data.empty()) {
                expected.push_back("Data: " + Utf8OfTerminated(value.data));
            }
        }
    });
    ExpectSameLines(said, expected);
}

}  // namespace ostrevin::samples
