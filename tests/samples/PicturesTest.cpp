#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "tests/samples/Oracle.h"
#include "tools/sample-volume/Pictures.h"

namespace ostrevin::samples {
namespace {

/// The picture's pixels as ImageMagick decodes and turns them.
std::vector<int> Decoded(const std::vector<std::byte>& file) {
    const TestFile input(file);
    std::vector<int> levels;
    const std::vector<std::string> lines =
        LinesOf({"convert", input.Path(), "-auto-orient", "-compress", "none", "-depth", "8", "ppm:-"});
    std::string text;
    for (const std::string& line : lines) {
        text += line + " ";
    }
    std::istringstream in(text.substr(text.find("255") + 3));
    for (int level = 0; in >> level;) {
        levels.push_back(level);
    }
    return levels;
}

int LargestDifference(const Picture& picture, const std::vector<int>& decoded) {
    EXPECT_EQ(decoded.size(), picture.pixels.size() * 3);
    int largest = 0;
    for (std::size_t i = 0; i < std::min(decoded.size() / 3, picture.pixels.size()); ++i) {
        const Color& color = picture.pixels[i];
        largest =
            std::max({largest, std::abs(color.red - decoded[i * 3]),
                      std::abs(color.green - decoded[i * 3 + 1]), std::abs(color.blue - decoded[i * 3 + 2])});
    }
    return largest;
}

TEST(PicturesTest, AnIndependentDecoderSeesThem) {
    OSTREVIN_NEED("convert", "imagemagick");
    // Sides that are no multiples of four or eight.
    for (const Scene scene : {Scene::Sunset, Scene::Quilt}) {
        const Picture picture = Paint(scene, 53, 37);
        EXPECT_EQ(LargestDifference(picture, Decoded(EncodePng(picture))), 0);
        EXPECT_EQ(LargestDifference(picture, Decoded(EncodeBmp(picture))), 0);
        EXPECT_LE(LargestDifference(picture, Decoded(EncodeGif(picture))), 26);  // half a step of the palette
        EXPECT_LE(LargestDifference(picture, Decoded(EncodeJpeg(picture))), 40);
    }
}

TEST(PicturesTest, AnIndependentDecoderTurnsAPhotographUpright) {
    OSTREVIN_NEED("convert", "imagemagick");
    const Picture upright = Paint(Scene::Mountains, 37, 53);
    EXPECT_LE(LargestDifference(upright, Decoded(EncodePhotograph(upright))), 40);
    EXPECT_NE(EncodePhotograph(upright), EncodeJpeg(upright)) << "it is stored on its side";
    const Picture lying = Paint(Scene::Mountains, 53, 37);
    EXPECT_EQ(EncodePhotograph(lying), EncodeJpeg(lying));
}

}  // namespace
}  // namespace ostrevin::samples
