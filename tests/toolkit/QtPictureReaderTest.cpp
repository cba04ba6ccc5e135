// Pictures as the program's own worker decodes them, and what becomes of workers that fail.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QProcess>

#include "tests/support/ScratchFolder.h"
#include "toolkit/qt/QtPictureReader.h"
#include "toolkit/qt/QtPictureWorker.h"
#include "tools/sample-volume/Pictures.h"

namespace ostrevin::qt {
namespace {

using Bytes = std::vector<std::byte>;
using Points = std::vector<std::uint32_t>;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

/// A picture with a colour in each corner: red, green, blue, white.
samples::Picture Quarters(std::size_t width, std::size_t height) {
    samples::Picture picture{width, height, {}};
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const bool right = x >= width / 2;
            const bool low = y >= height / 2;
            const auto level = [](bool full) { return static_cast<std::uint8_t>(full ? 255 : 0); };
            picture.pixels.push_back({level(right == low), level(right), level(low)});
        }
    }
    return picture;
}

std::uint32_t At(const Picture& picture, int x, int y) {
    return picture.pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                             static_cast<std::size_t>(x));
}

/// The corner colours, from the middles of the quarters, without the small errors of a lossy format.
Points CornersOf(const Picture& picture) {
    Points corners;
    for (const int y : {picture.height / 4, picture.height * 3 / 4}) {
        for (const int x : {picture.width / 4, picture.width * 3 / 4}) {
            std::uint32_t point = At(picture, x, y);
            for (unsigned shift = 0; shift < 24; shift += 8) {
                const std::uint32_t level = (point >> shift) & 0xFFU;
                if (level < 40 || level > 215) {
                    point = (point & ~(0xFFU << shift)) | ((level < 40 ? 0U : 0xFFU) << shift);
                }
            }
            corners.push_back(point);
        }
    }
    return corners;
}

/// A JPEG file with an orientation tag, in the byte order of Intel's machines or in the other one.
Bytes WithOrientation(Bytes jpeg, std::uint8_t orientation, bool intel) {
    const auto order = static_cast<std::uint8_t>(intel ? 'I' : 'M');
    std::vector<std::uint8_t> tag = {0xFF, 0xE1, 0, 34, 'E', 'x', 'i', 'f', 0, 0, order, order};
    const auto add = [&](unsigned value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            tag.push_back(static_cast<std::uint8_t>(value >> 8 * (intel ? i : size - 1 - i)));
        }
    };
    add(42, 2);
    add(8, 4);       // where the directory begins
    add(1, 2);       // its entries
    add(0x0112, 2);  // the orientation
    add(3, 2);       // of 16 bits
    add(1, 4);       // one of them
    add(orientation, 2);
    add(0, 2);
    add(0, 4);  // no other directory
    std::transform(tag.begin(), tag.end(), std::inserter(jpeg, jpeg.begin() + 2),
                   [](std::uint8_t value) { return std::byte{value}; });
    return jpeg;
}

Bytes BytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

void Put(Bytes& bytes, std::size_t offset, std::initializer_list<std::uint8_t> values) {
    for (const std::uint8_t value : values) {
        bytes.at(offset++) = std::byte{value};
    }
}

/// A PNG file whose header promises another size, with a checksum that agrees.
Bytes PngOfSize(std::uint32_t width, std::uint32_t height) {
    Bytes png = EncodePng(Quarters(2, 2));
    const auto putNumber = [&](std::size_t offset, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            png.at(offset + i) = static_cast<std::byte>(value >> (24 - 8 * i));
        }
    };
    putNumber(16, width);
    putNumber(20, height);
    std::uint32_t crc = 0xFFFFFFFF;
    for (std::size_t i = 12; i < 29; ++i) {
        crc ^= std::to_integer<std::uint32_t>(png.at(i));
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) * 0xEDB88320U);
        }
    }
    putNumber(29, ~crc);
    return png;
}

/// Two bytes that follow a marker of a JPEG file and its length and precision: the height, then the width.
std::size_t PlaceOfJpegHeight(const Bytes& jpeg) {
    for (std::size_t i = 0; i + 1 < jpeg.size(); ++i) {
        if (jpeg[i] == std::byte{0xFF} && jpeg[i + 1] == std::byte{0xC0}) {
            return i + 5;
        }
    }
    return 0;
}

/// Reads with the real worker.
std::optional<Picture> Read(const Bytes& file, int width = 1000, int height = 1000) {
    return QtPictureReader(OSTREVIN_PROGRAM).Read(file, width, height);
}

TEST(QtPictureReader, ReadsTheFormatsOfTheTime) {
    const samples::Picture quarters = Quarters(64, 32);
    for (const Bytes& file :
         {EncodePng(quarters), EncodeBmp(quarters), EncodeGif(quarters), EncodeJpeg(quarters)}) {
        const std::optional<Picture> picture = Read(file);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->width, 64);
        EXPECT_EQ(picture->height, 32);
        EXPECT_EQ(picture->pixels.size(), 64U * 32U);
        EXPECT_EQ(CornersOf(*picture), (Points{kRed, kGreen, kBlue, kWhite}));
    }
}

TEST(QtPictureReader, ReadsWhateverFormatItSaysItReads) {
    QImage image(64, 32, QImage::Format_RGB32);
    image.fill(Qt::white);
    std::size_t formats = 0;
    for (const char* format :
         {"BMP", "CUR", "ICO", "JPEG", "PBM", "PGM", "PNG", "PPM", "TIFF", "WEBP", "XBM", "XPM"}) {
        QByteArray file;
        QBuffer buffer(&file);
        if (!QtPictureReader::Reads(format) || !image.save(&buffer, format)) {
            continue;
        }
        ++formats;
        const std::optional<Picture> picture =
            Read(BytesOf({file.data(), static_cast<std::size_t>(file.size())}), 32, 32);
        ASSERT_TRUE(picture) << format;
        EXPECT_EQ(picture->width, 32) << format;
        EXPECT_EQ(picture->height, 16) << format;
        EXPECT_EQ(At(*picture, 16, 8), kWhite) << format;
    }
    EXPECT_GE(formats, 8U);
}

TEST(QtPictureReader, ColoursAreNotMultipliedByAlpha) {
    QImage image(1, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, 0x80402010);
    QByteArray file;
    QBuffer buffer(&file);
    ASSERT_TRUE(image.save(&buffer, "PNG"));
    const std::optional<Picture> picture =
        Read(BytesOf({file.data(), static_cast<std::size_t>(file.size())}));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->pixels, Points{0x80402010});
}

TEST(QtPictureReader, ScalesIntoTheBoxAndKeepsTheRatio) {
    struct Case {
        int width, height, boxWidth, boxHeight, expectedWidth, expectedHeight;
    };
    for (const Case& one :
         {Case{64, 32, 16, 16, 16, 8}, Case{64, 32, 10, 100, 10, 5}, Case{64, 32, 200, 8, 16, 8},
          Case{32, 64, 16, 16, 8, 16}, Case{64, 32, 1, 1, 1, 1}, Case{400, 1, 10, 10, 10, 1}}) {
        const samples::Picture quarters =
            Quarters(static_cast<std::size_t>(one.width), static_cast<std::size_t>(one.height));
        for (const Bytes& file : {EncodePng(quarters), EncodeJpeg(quarters), EncodeGif(quarters)}) {
            const std::optional<Picture> picture = Read(file, one.boxWidth, one.boxHeight);
            ASSERT_TRUE(picture);
            EXPECT_EQ(picture->width, one.expectedWidth);
            EXPECT_EQ(picture->height, one.expectedHeight);
        }
    }
    EXPECT_EQ(CornersOf(*Read(EncodeJpeg(Quarters(640, 320)), 40, 40)),
              (Points{kRed, kGreen, kBlue, kWhite}));
}

TEST(QtPictureReader, DoesNotEnlarge) {
    const std::optional<Picture> picture = Read(EncodePng(Quarters(4, 2)), 400, 400);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 4);
    EXPECT_EQ(picture->height, 2);
}

TEST(QtPictureReader, TurnsAPictureUprightByItsTag) {
    const Bytes jpeg = EncodeJpeg(Quarters(64, 32));
    const std::vector<Points> upright = {{kRed, kGreen, kBlue, kWhite}, {kGreen, kRed, kWhite, kBlue},
                                         {kWhite, kBlue, kGreen, kRed}, {kBlue, kWhite, kRed, kGreen},
                                         {kRed, kBlue, kGreen, kWhite}, {kBlue, kRed, kWhite, kGreen},
                                         {kWhite, kGreen, kBlue, kRed}, {kGreen, kWhite, kRed, kBlue}};
    for (std::uint8_t orientation = 1; orientation <= 8; ++orientation) {
        for (const bool intel : {true, false}) {
            const Bytes file = WithOrientation(jpeg, orientation, intel);
            const bool turned = orientation >= 5;
            const std::optional<Picture> whole = Read(file);
            ASSERT_TRUE(whole);
            EXPECT_EQ(whole->width, turned ? 32 : 64) << int{orientation};
            EXPECT_EQ(whole->height, turned ? 64 : 32) << int{orientation};
            EXPECT_EQ(CornersOf(*whole), upright[orientation - 1U]) << int{orientation};
            const std::optional<Picture> fitted = Read(file, 16, 48);
            ASSERT_TRUE(fitted);
            EXPECT_EQ(fitted->width, 16) << int{orientation};
            EXPECT_EQ(fitted->height, turned ? 32 : 8) << int{orientation};
            EXPECT_EQ(CornersOf(*fitted), upright[orientation - 1U]) << int{orientation};
        }
    }
}

TEST(QtPictureReader, OfSeveralPicturesReadsTheFirst) {
    Bytes file = EncodeGif(Quarters(4, 4));
    samples::Picture black{4, 4, {}};
    black.pixels.resize(16);
    const Bytes second = EncodeGif(black);
    const std::ptrdiff_t headers = 13 + 768;
    file.pop_back();
    file.insert(file.end(), second.begin() + headers, second.end());
    const std::optional<Picture> picture = Read(file);
    ASSERT_TRUE(picture);
    EXPECT_EQ(CornersOf(*picture), (Points{kRed, kGreen, kBlue, kWhite}));
}

TEST(QtPictureReader, KnowsFormatsByTheirExtensions) {
    for (const char* extension :
         {"BMP", "DIB", "GIF", "ICO", "JFIF", "JPE", "JPEG", "JPG", "PNG", "png", "Jpg"}) {
        EXPECT_TRUE(QtPictureReader::Reads(extension)) << extension;
    }
    for (const char* extension :
         {"", "EXE", "TXT", "SVG", "SVGZ", "PDF", "MNG", "TGA", "HTM", "LNK", "JPGX"}) {
        EXPECT_FALSE(QtPictureReader::Reads(extension)) << extension;
    }
    EXPECT_EQ(QtPictureReader::Reads("TIF"), QImageReader::supportedImageFormats().contains("tif"));
    EXPECT_FALSE(IsPictureFormat("svg"));
    EXPECT_FALSE(IsPictureFormat("pdf"));
}

TEST(QtPictureReader, WhatIsNoPictureIsNotRead) {
    for (const char* file :
         {"", "x", "MZ", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>", "%PDF-1.4\n",
          "\xFF\xD8\xFF", "GIF89a", "GIF87a", "BM", "\x89PNG\r\n\x1A\n", "II*", "MM", "RIFF....WEBP", "P6",
          "P5 9 9 9", "#define x_width 9", "/* XPM */"}) {
        EXPECT_FALSE(Read(BytesOf(file))) << file;
    }
}

TEST(QtPictureReader, GarbageBehindTheFirstBytesOfAFormatHarmsNothing) {
    std::uint32_t state = 1;
    for (const std::string_view magic :
         {std::string_view("\xFF\xD8\xFF\xE0"), std::string_view("GIF89a"), std::string_view("BM"),
          std::string_view("\x89PNG\r\n\x1A\n"), std::string_view("II*\0", 4),
          std::string_view("\0\0\1\0", 4), std::string_view("RIFF\0\1\0\0WEBPVP8 ", 16),
          std::string_view("P6\n9 9\n255\n"), std::string_view("/* XPM */\n")}) {
        Bytes file = BytesOf(magic);
        for (int i = 0; i < 4096; ++i) {
            state = state * 1664525U + 1013904223U;
            file.push_back(static_cast<std::byte>(state >> 24U));
        }
        const std::optional<Picture> picture = Read(file, 50, 50);
        EXPECT_TRUE(!picture || (picture->width <= 50 && picture->height <= 50));
    }
}

TEST(QtPictureReader, ATruncatedPictureHarmsNothing) {
    const samples::Picture quarters = Quarters(64, 32);
    for (const Bytes& whole :
         {EncodePng(quarters), EncodeBmp(quarters), EncodeGif(quarters), EncodeJpeg(quarters)}) {
        ASSERT_TRUE(Read(whole));
        for (std::size_t part = 0; part < 12; ++part) {
            const auto size = static_cast<std::ptrdiff_t>(whole.size() * part / 12);
            const std::optional<Picture> picture = Read(Bytes(whole.begin(), whole.begin() + size));
            EXPECT_TRUE(!picture || picture->width == 64);
            EXPECT_TRUE(picture == std::nullopt || part > 0);
        }
    }
}

TEST(QtPictureReader, AHeaderThatPromisesAHugePictureIsNotBelieved) {
    EXPECT_TRUE(Read(PngOfSize(2, 2))) << "the checksum is right";
    EXPECT_FALSE(Read(PngOfSize(60000, 60000)));
    EXPECT_FALSE(Read(PngOfSize(0x7FFFFFFF, 0x7FFFFFFF)));
    EXPECT_FALSE(Read(PngOfSize(0, 0)));
    const samples::Picture quarters = Quarters(16, 16);
    Bytes bmp = EncodeBmp(quarters);
    Put(bmp, 18, {0x60, 0xEA, 0, 0, 0x60, 0xEA, 0, 0});
    EXPECT_FALSE(Read(bmp));
    Bytes gif = EncodeGif(quarters);
    Put(gif, 6, {0xFF, 0xFF, 0xFF, 0xFF});
    Put(gif, 13 + 768 + 5, {0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_FALSE(Read(gif));
    Bytes jpeg = EncodeJpeg(quarters);
    Put(jpeg, PlaceOfJpegHeight(jpeg), {0xFF, 0xDC, 0xFF, 0xDC});
    EXPECT_FALSE(Read(jpeg));
}

/// A worker made of a line of shell.
class OddWorker : public ::testing::Test {
  protected:
    std::optional<Picture> ReadWith(const std::string& line, int width = 4, int height = 4,
                                    std::chrono::milliseconds patience = std::chrono::seconds(60)) {
        folder.Write("worker", "#!/bin/sh\n" + line + "\n");
        std::filesystem::permissions(folder.Path("worker"), std::filesystem::perms::owner_all);
        return QtPictureReader(folder.Path("worker"), patience).Read(file, width, height);
    }

    ScratchFolder folder;
    Bytes file = BytesOf("bytes");
};

constexpr char kOnePoint[] = R"(printf '\001\000\000\000\001\000\000\000\063\042\021\377')";

TEST_F(OddWorker, WhatItWritesIsThePicture) {
    const std::optional<Picture> picture = ReadWith(kOnePoint);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 1);
    EXPECT_EQ(picture->height, 1);
    EXPECT_EQ(picture->pixels, Points{0xFF112233});
}

TEST_F(OddWorker, IsGivenTheFileAndTheSize) {
    ReadWith("printf '%s ' \"$@\" > \"$0.told\"; cat >> \"$0.told\"", 30, 20);
    EXPECT_EQ(folder.Read("worker.told"), "--decode-picture 30 20 bytes");
}

TEST_F(OddWorker, MayLeaveALargeFileUnread) {
    file.resize(std::size_t{8} << 20U);
    EXPECT_TRUE(ReadWith(kOnePoint));
}

TEST_F(OddWorker, ThatCrashesGivesNone) {
    EXPECT_FALSE(ReadWith(std::string(kOnePoint) + "; kill -SEGV $$"));
    EXPECT_FALSE(ReadWith(std::string(kOnePoint) + "; exit 1"));
}

TEST_F(OddWorker, ThatHangsIsKilled) {
    const std::string hang = "echo $$ > \"$0.number\"; exec sleep 1000";
    std::string number;
    // The patience is doubled until the worker has got as far as its sleep.
    for (int patience = 100; number.empty(); patience *= 2) {
        EXPECT_FALSE(ReadWith(hang, 4, 4, std::chrono::milliseconds(patience)));
        number = folder.Has("worker.number") ? folder.Read("worker.number") : "";
    }
    EXPECT_FALSE(std::filesystem::exists("/proc/" + number.substr(0, number.find('\n'))));
}

TEST_F(OddWorker, ThatNeverStopsWritingIsKilled) {
    EXPECT_FALSE(ReadWith("exec cat /dev/zero"));
}

TEST_F(OddWorker, ThatWritesNoPictureGivesNone) {
    for (const char* line : {
             "true", "printf 'no picture at all'",
             R"(printf '\001\000\000\000\001\000\000')",                          // half a header
             R"(printf '\001\000\000\000\001\000\000\000\063\042\021')",          // half a point
             R"(printf '\001\000\000\000\001\000\000\000\063\042\021\377\000')",  // more than a point
             R"(printf '\001\000\000\000\000\000\000\000')",                      // no height
             R"(printf '\377\377\377\377\377\377\377\377\063\042\021\377')",      // -1 x -1
             R"(printf '\002\000\000\000\001\000\000\000\063\042\021\377\063\042\021\377')",  // too wide
             R"(printf '\001\000\000\000\002\000\000\000\063\042\021\377\063\042\021\377')",  // too high
         }) {
        EXPECT_FALSE(ReadWith(line, 1, 1)) << line;
    }
}

TEST_F(OddWorker, ThatIsNotThereGivesNone) {
    EXPECT_FALSE(QtPictureReader(folder.Path("none")).Read(file, 4, 4));
    EXPECT_FALSE(QtPictureReader("").Read(file, 4, 4));
}

TEST(QtPictureWorker, WantsASize) {
    for (const QStringList& arguments :
         {QStringList{"--decode-picture"}, QStringList{"--decode-picture", "10"},
          QStringList{"--decode-picture", "10", "x"}, QStringList{"--decode-picture", "0", "10"},
          QStringList{"--decode-picture", "-1", "10"}, QStringList{"--decode-picture", "10", "10", "10"}}) {
        EXPECT_EQ(QProcess::execute(OSTREVIN_PROGRAM, arguments), 2) << arguments.join(' ').toStdString();
    }
}

TEST(QtPictureWorker, GivesUpWhatDecodingDoesNotNeed) {
    QProcess worker;
    worker.start(OSTREVIN_PROGRAM, {kDecodePicture, "10", "10"});
    ASSERT_TRUE(worker.waitForStarted());
    // It reads to the end of its input after that.
    const QString file = QStringLiteral("/proc/%1/limits").arg(worker.processId());
    QByteArray limits;
    while (!limits.contains("Max cpu time              8 ") && worker.state() == QProcess::Running) {
        QFile stream(file);
        limits = stream.open(QIODevice::ReadOnly) ? stream.readAll() : QByteArray();
    }
    worker.closeWriteChannel();
    EXPECT_TRUE(worker.waitForFinished());
    EXPECT_TRUE(limits.contains("Max file size             0 ")) << limits.toStdString();
    EXPECT_TRUE(limits.contains("Max core file size        0 ")) << limits.toStdString();
    EXPECT_TRUE(limits.contains("Max open files            64 ")) << limits.toStdString();
    EXPECT_TRUE(limits.contains("Max address space         1073741824 ")) << limits.toStdString();
}

}  // namespace
}  // namespace ostrevin::qt
