#include "platform/volume/documents/PlainText.h"

#include <algorithm>
#include <array>
#include <string>

namespace ostrevin::documents {
namespace {

using namespace std::string_view_literals;

// In small letters, as the text is compared.
constexpr std::array kScriptStarts = {"#!"sv,        "%!"sv,        "@echo"sv,
                                      "@rem"sv,      "@set"sv,      "@ echo"sv,
                                      "@ rem"sv,     "regedit4"sv,  "windows registry editor"sv,
                                      "[autorun]"sv, "[version]"sv, "[shell]"sv,
                                      "!<arch>"sv};
constexpr std::array kStarters = {"[desktop entry]"sv, "[internetshortcut]"sv};
constexpr std::array kTags = {"<!doctype"sv, "<?xml"sv,  "<html"sv,   "<head"sv,   "<title"sv, "<body"sv,
                              "<script"sv,   "<style"sv, "<iframe"sv, "<table"sv,  "<h1"sv,    "<a href="sv,
                              "<svg"sv,      "<!--"sv,   "<?php"sv,   "<object"sv, "<embed"sv};
constexpr std::array kOtherStarts = {
    "%pdf-"sv,          "{\\rtf"sv,      "from:"sv,         "received:"sv,     "return-path:"sv,
    "mime-version:"sv,  "message-id:"sv, "delivered-to:"sv, "content-type:"sv, "begin:v"sv,
    "relay-version:"sv, "xref:"sv,       "n#! rnews"sv,     "d8:announce"sv,   "bzh"sv};

/// The text in small letters, with no mark of its encoding; what is not ASCII is a byte that is none.
std::string Comparable(std::string_view beginning) {
    std::string text;
    const auto add = [&](unsigned unit) {
        const bool capital = unit >= 'A' && unit <= 'Z';
        text += unit < 0x80 ? static_cast<char>(capital ? unit + ('a' - 'A') : unit) : '\x80';
    };
    const bool little = beginning.starts_with("\xFF\xFE"sv);
    if (!little && !beginning.starts_with("\xFE\xFF"sv)) {
        if (beginning.starts_with("\xEF\xBB\xBF"sv)) {
            beginning.remove_prefix(3);
        }
        for (const char byte : beginning) {
            add(static_cast<unsigned char>(byte));
        }
        return text;
    }
    for (std::size_t at = 2; at + 1 < beginning.size(); at += 2) {
        const unsigned first = static_cast<unsigned char>(beginning[at]);
        const unsigned second = static_cast<unsigned char>(beginning[at + 1]);
        add(little ? first | (second << 8U) : (first << 8U) | second);
    }
    return text;
}

bool IsOfText(char character) {
    constexpr std::string_view kControls = "\t\n\v\f\r\x1A"sv;  // the last ends files of older systems
    return static_cast<unsigned char>(character) >= 0x20
               ? character != '\x7F'
               : kControls.find(character) != std::string_view::npos;
}

bool StartsAsTag(std::string_view text) {
    return text.size() >= 2 && text[0] == '<' &&
           ((text[1] >= 'a' && text[1] <= 'z') || "!?%/"sv.find(text[1]) != std::string_view::npos);
}

}  // namespace

TextKind TextKindOf(std::string_view beginning) {
    const std::string comparable = Comparable(beginning);
    if (!std::all_of(comparable.begin(), comparable.end(), IsOfText)) {
        return TextKind::Binary;
    }
    const std::string_view text = comparable;
    const std::string_view words = text.substr(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const auto starts = [&](std::string_view start) { return words.starts_with(start); };
    const auto holds = [&](std::string_view part) { return text.find(part) != std::string_view::npos; };
    if (std::any_of(kScriptStarts.begin(), kScriptStarts.end(), starts) ||
        std::any_of(kStarters.begin(), kStarters.end(), holds)) {
        return TextKind::Executes;
    }
    if (StartsAsTag(words) || std::any_of(kTags.begin(), kTags.end(), holds)) {
        return TextKind::Markup;
    }
    return std::any_of(kOtherStarts.begin(), kOtherStarts.end(), starts) ? TextKind::Structured
                                                                         : TextKind::Plain;
}

}  // namespace ostrevin::documents
