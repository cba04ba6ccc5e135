#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

#include "platform/volume/JpegOrientation.h"
#include "tools/sample-volume/Pictures.h"

namespace ostrevin {
namespace {

using Bytes = std::vector<std::byte>;

Bytes BytesOf(std::initializer_list<int> values) {
    Bytes bytes;
    for (const int value : values) {
        bytes.push_back(static_cast<std::byte>(value));
    }
    return bytes;
}

/// A file that begins with another segment and then has the tag, in one byte order.
Bytes Tagged(int orientation, bool intel) {
    return intel ? BytesOf({0xFF,        0xD8, 0xFF, 0xE0, 0,    4, 1,   2,   0xFF, 0xE1, 0, 34,
                            'E',         'x',  'i',  'f',  0,    0, 'I', 'I', 42,   0,    8, 0,
                            0,           0,    1,    0,    0x12, 1, 3,   0,   1,    0,    0, 0,
                            orientation, 0,    0,    0,    0,    0, 0,   0,   0xFF, 0xDA})
                 : BytesOf({0xFF, 0xD8,        0xFF, 0xE0, 0, 4,    1,   2,   0xFF, 0xE1, 0, 34,
                            'E',  'x',         'i',  'f',  0, 0,    'M', 'M', 0,    42,   0, 0,
                            0,    8,           0,    1,    1, 0x12, 0,   3,   0,    0,    0, 1,
                            0,    orientation, 0,    0,    0, 0,    0,   0,   0xFF, 0xDA});
}

TEST(JpegOrientation, IsReadInBothByteOrders) {
    for (const bool intel : {false, true}) {
        for (int orientation = 1; orientation <= 8; ++orientation) {
            EXPECT_EQ(JpegOrientation(Tagged(orientation, intel)), orientation) << intel;
        }
        EXPECT_EQ(JpegOrientation(Tagged(0, intel)), 1);
        EXPECT_EQ(JpegOrientation(Tagged(9, intel)), 1);
    }
}

TEST(JpegOrientation, IsThatOfPhotographs) {
    EXPECT_EQ(JpegOrientation(samples::EncodePhotograph(samples::Paint(samples::Scene::Sunset, 16, 8))), 1);
    EXPECT_NE(JpegOrientation(samples::EncodePhotograph(samples::Paint(samples::Scene::Sunset, 8, 16))), 1);
    EXPECT_EQ(JpegOrientation(samples::EncodeJpeg(samples::Paint(samples::Scene::Sunset, 8, 16))), 1);
    EXPECT_EQ(JpegOrientation(samples::EncodeBmp(samples::Paint(samples::Scene::Sunset, 8, 16))), 1);
    EXPECT_EQ(JpegOrientation({}), 1);
}

TEST(JpegOrientation, IsNotReadBeyondTheEnd) {
    for (const bool intel : {false, true}) {
        const Bytes whole = Tagged(6, intel);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            const int orientation = JpegOrientation(cut);
            EXPECT_TRUE(orientation == 1 || orientation == 6) << size;
        }
    }
}

TEST(JpegOrientation, AnyByteMayBeAnyOther) {
    for (const bool intel : {false, true}) {
        Bytes bytes = Tagged(6, intel);
        for (std::byte& byte : bytes) {
            const std::byte before = byte;
            for (int value = 0; value < 256; ++value) {
                byte = static_cast<std::byte>(value);
                const int orientation = JpegOrientation(bytes);
                EXPECT_TRUE(orientation >= 1 && orientation <= 8);
            }
            byte = before;
        }
    }
}

}  // namespace
}  // namespace ostrevin
