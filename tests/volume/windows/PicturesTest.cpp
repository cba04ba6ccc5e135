// Pictures as the program's own worker decodes them, and what becomes of workers that fail.
#include <windows.h>
#include <algorithm>
#include <gtest/gtest.h>
#include <span>
#include <string_view>

#include "platform/volume/JpegOrientation.h"
#include "platform/volume/VolumePlatform.h"
#include "platform/volume/windows/WorkerDecoder.h"
#include "tests/volume/TemporaryFolder.h"
#include "tools/sample-volume/Pictures.h"

namespace ostrevin {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
using Corners = std::vector<std::uint32_t>;

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

/// The corner colours, from the middles of the quarters, without the small errors of a lossy format.
Corners CornersOf(const Bitmap& picture) {
    Corners corners;
    for (const int y : {picture.height / 4, picture.height * 3 / 4}) {
        for (const int x : {picture.width / 4, picture.width * 3 / 4}) {
            const std::uint32_t point =
                picture.points.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                                  static_cast<std::size_t>(x));
            std::uint32_t corner = point & 0xFF000000;
            for (unsigned shift = 0; shift < 24; shift += 8) {
                corner |= ((point >> shift) & 0xFFU) > 127 ? 0xFFU << shift : 0U;
            }
            corners.push_back(corner);
        }
    }
    return corners;
}

Bytes WithOrientation(Bytes jpeg, int orientation) {
    Bytes tag;
    for (const int value :
         {0xFF, 0xE1, 0, 34, 'E' + 0,     'x' + 0, 'i' + 0, 'f' + 0, 0,    0, 'I' + 0, 'I' + 0,
          42,   0,    8, 0,  0,           0,       1,       0,       0x12, 1, 3,       0,
          1,    0,    0, 0,  orientation, 0,       0,       0,       0,    0, 0,       0}) {
        tag.push_back(static_cast<std::byte>(value));
    }
    jpeg.insert(jpeg.begin() + 2, tag.begin(), tag.end());
    return jpeg;
}

Bytes BytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

BitmapHandle Decode(const Bytes& file, const ImageSize& size) {
    return MakeWorkerDecoder(OSTREVIN_PROGRAM).decode(file, size);
}

TEST(Pictures, OfEachFormatAreDecoded) {
    const samples::Picture picture = Quarters(64, 32);
    for (const Bytes& file :
         {samples::EncodeBmp(picture), samples::EncodeGif(picture), samples::EncodeJpeg(picture)}) {
        const BitmapHandle decoded = Decode(file, {32, 32});
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->width, 32);
        EXPECT_EQ(decoded->height, 16);
        EXPECT_EQ(CornersOf(*decoded), (Corners{kRed, kGreen, kBlue, kWhite}));
        const BitmapHandle whole = Decode(file, {640, 320});
        ASSERT_TRUE(whole);
        EXPECT_EQ(whole->width, 64) << "no picture grows";
    }
}

TEST(Pictures, StandUpright) {
    const Bytes jpeg = samples::EncodeJpeg(Quarters(64, 32));
    const Corners shown[] = {{kRed, kGreen, kBlue, kWhite}, {kGreen, kRed, kWhite, kBlue},
                             {kWhite, kBlue, kGreen, kRed}, {kBlue, kWhite, kRed, kGreen},
                             {kRed, kBlue, kGreen, kWhite}, {kBlue, kRed, kWhite, kGreen},
                             {kWhite, kGreen, kBlue, kRed}, {kGreen, kWhite, kRed, kBlue}};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        ASSERT_EQ(JpegOrientation(WithOrientation(jpeg, orientation)), orientation);
        const BitmapHandle decoded = Decode(WithOrientation(jpeg, orientation), {32, 32});
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->width, orientation > 4 ? 16 : 32);
        EXPECT_EQ(decoded->height, orientation > 4 ? 32 : 16);
        EXPECT_EQ(CornersOf(*decoded), shown[orientation - 1]) << orientation;
    }
}

TEST(Pictures, AreKnownByTheirNamesAndTheirBytes) {
    const PictureDecoder decoder = MakeWorkerDecoder(OSTREVIN_PROGRAM);
    for (const char* extension : {"JPG", "JPEG", "JPE", "JFIF", "GIF", "BMP", "DIB"}) {
        EXPECT_TRUE(decoder.reads(extension)) << extension;
    }
    for (const char* extension : {"PNG", "WMF", "EMF", "ICO", "TXT", ""}) {
        EXPECT_FALSE(decoder.reads(extension)) << extension;
    }
    Bytes cut = samples::EncodeJpeg(Quarters(64, 32));
    cut.resize(20);
    for (const Bytes& file : {Bytes(), BytesOf("BM"), BytesOf("GIF89a"), BytesOf("\xD7\xCD\xC6\x9A and more"),
                              cut, samples::EncodePng(Quarters(8, 8)), Bytes(1000, std::byte{0xFF})}) {
        EXPECT_FALSE(Decode(file, {32, 32})) << file.size();
    }
    EXPECT_FALSE(Decode(samples::EncodeBmp(Quarters(8, 8)), {0, 32}));
    EXPECT_FALSE(Decode(samples::EncodeBmp(Quarters(8, 8)), {32, -1}));
}

TEST(Pictures, MayPromiseMoreThanThereIs) {
    Bytes bmp = samples::EncodeBmp(Quarters(8, 8));
    for (std::size_t i = 18; i < 26; ++i) {
        bmp.at(i) = static_cast<std::byte>(i % 4 == 1 ? 0x7F : 0xFF);  // width and height
    }
    EXPECT_FALSE(Decode(bmp, {32, 32}));
}

TEST(Pictures, ComeFromAProgramThatDoesTheWork) {
    const Bytes bmp = samples::EncodeBmp(Quarters(8, 8));
    EXPECT_FALSE(MakeWorkerDecoder("C:\\none.exe").decode(bmp, {32, 32}));
    EXPECT_FALSE(MakeWorkerDecoder("").decode(bmp, {32, 32}));
    EXPECT_FALSE(MakeWorkerDecoder("C:\\windows\\system32\\hostname.exe").decode(bmp, {32, 32}))
        << "it says else";
}

TEST(Pictures, AreGivenUpWhenTheirWorkerFails) {
    const Bytes large(10'000'000);  // more than a pipe holds, for the one who does not read
    for (const int kind : {1, 2, 3, 4}) {
        EXPECT_FALSE(
            MakeWorkerDecoder(OSTREVIN_BAD_WORKER, std::chrono::milliseconds(500)).decode(large, {kind, 1}))
            << kind;
    }
}

}  // namespace
}  // namespace ostrevin
