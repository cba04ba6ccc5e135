#include "tools/sample-volume/Documents.h"

#include <algorithm>
#include <array>
#include <string>

#include "tools/sample-volume/Pictures.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/SampleText.h"

namespace ostrevin::samples {
namespace {

constexpr std::size_t kParagraphs = 5;

std::size_t NumberOf(std::string_view path) {
    std::size_t number = 0;
    for (const char c : path) {
        number = number * 31 + static_cast<unsigned char>(c);
    }
    return number;
}

std::string_view FileName(std::string_view path) {
    return path.substr(path.rfind('\\') + 1);
}

std::string Extension(std::string_view path) {
    std::string extension(path.substr(path.rfind('.') + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return extension;
}

std::string_view Title(std::string_view path) {
    const std::string_view name = FileName(path);
    return name.substr(0, name.rfind('.'));
}

std::vector<std::byte> Bytes(std::string_view text) {
    ByteBuffer out;
    out.Text(text);
    return out.Take();
}

// Code page 1252 where that holds it all, else UTF-16 with its mark, as the text editor saves it.
std::vector<std::byte> PlainText(const std::string& text) {
    const std::u16string wide = ToUtf16(text);
    if (std::all_of(wide.begin(), wide.end(), [](char16_t unit) { return unit < 0x100; })) {
        return Bytes(ToWindows1252(text));
    }
    ByteBuffer out;
    out.U16(0xFEFF);
    out.Utf16(wide);
    return out.Take();
}

std::string RichText(const std::string& text) {
    std::string out = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}\\f0\\fs22 ";
    for (const char16_t unit : ToUtf16(text)) {
        if (unit == u'\n') {
            out += "\\par\n";
        } else if (unit >= 0x80) {
            out += "\\u" + std::to_string(static_cast<std::int16_t>(unit)) + "?";
        } else if (unit != u'\r') {
            out += static_cast<char>(unit);
        }
    }
    return out + "}\n";
}

std::string WebPage(std::string_view title, const std::string& text) {
    return "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"><title>" +
           std::string(title) + "</title></head>\r\n<body><pre>\r\n" + text + "</pre></body></html>\r\n";
}

std::string Table(std::size_t number) {
    constexpr std::array<std::string_view, 6> kMonths = {"May",    "June",      "July",
                                                         "August", "September", "October"};
    std::string out = "Month;Amount;Remark\r\n";
    for (const std::string_view month : kMonths) {
        number = number * 48271 % 2147483647;
        out += std::string(month) + ";" + std::to_string(number % 90000 / 100) + "," +
               std::to_string(10 + number % 90) + ";" + (number % 3 == 0 ? "to be checked" : "") + "\r\n";
    }
    return out;
}

constexpr std::array kViews = {Scene::Sunset, Scene::Mountains};
constexpr std::array kDrawings = {Scene::Chart, Scene::Quilt};

Picture PictureOf(std::size_t number, std::span<const Scene> scenes) {
    // Upright, square and lying ones.
    constexpr std::array<std::array<std::size_t, 2>, 4> kSizes = {
        {{320, 240}, {240, 320}, {200, 200}, {400, 150}}};
    const auto [width, height] = kSizes[number / kSizes.size() % kSizes.size()];
    return Paint(scenes[number % scenes.size()], width, height);
}

}  // namespace

std::vector<std::byte> DocumentBytes(std::string_view path, std::span<const std::string_view> sentences) {
    const std::size_t number = NumberOf(path);
    std::string text = std::string(Title(path)) + "\r\n\r\n";
    for (std::size_t i = 0; i < kParagraphs; ++i) {
        text += std::string(sentences[(number + i * 5) % sentences.size()]) + "\r\n";
    }
    const std::string extension = Extension(path);
    if (extension == "png") {
        return EncodePng(PictureOf(number, kDrawings));
    }
    if (extension == "bmp") {
        return EncodeBmp(PictureOf(number, kDrawings));
    }
    if (extension == "gif") {
        return EncodeGif(PictureOf(number, kDrawings));
    }
    if (extension == "jpg") {
        return EncodePhotograph(PictureOf(number, kViews));
    }
    if (extension == "rtf" || extension == "doc") {
        return Bytes(RichText(text));
    }
    if (extension == "htm" || extension == "html") {
        return Bytes(WebPage(Title(path), text));
    }
    if (extension == "csv") {
        return Bytes(Table(number));
    }
    return PlainText(text);
}

std::vector<std::byte> ProgramBytes(std::string_view path) {
    return Bytes("MZ\x1A This stands for " + ToWindows1252(FileName(path)) + " and cannot run.\r\n");
}

}  // namespace ostrevin::samples
