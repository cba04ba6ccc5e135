// Previews of a volume's documents, from the file to the picture.
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "platform/volume/VolumePlatform.h"
#include "startup/QtPictureDecoder.h"
#include "tests/support/ScratchFolder.h"
#include "tools/sample-volume/SampleVolume.h"
#include "widgets/ThumbnailExtractor.h"

namespace ostrevin {
namespace {

constexpr std::int16_t kSide = 100;
constexpr char kPictures[] = "C:\\Documents and Settings\\anna\\My Documents\\My Pictures\\";

class PreviewTest : public ::testing::Test {
  protected:
    PreviewTest() { samples::WriteVolume(samples::MakeSampleVolume({}), folder.Path()); }

    ScratchFolder folder;
};

TEST_F(PreviewTest, PicturesOfEachFormatHaveOne) {
    const auto platform = VolumePlatform::Open(folder.Path(), {}, MakeQtPictureDecoder(OSTREVIN_PROGRAM));
    ThumbnailExtractor extractor(*platform);
    for (const char* name : {"Summer party\\terrace.jpg", "new logo.png", "old logo.gif", "floor plan.bmp"}) {
        ASSERT_TRUE(extractor.Generate(kPictures + std::string(name), kSide, kSide)) << name;
        EXPECT_EQ(std::max(extractor.Picture()->width, extractor.Picture()->height), kSide) << name;
    }
}

TEST_F(PreviewTest, OtherDocumentsAndMissingPicturesHaveNone) {
    const auto platform = VolumePlatform::Open(folder.Path(), {}, MakeQtPictureDecoder(OSTREVIN_PROGRAM));
    ThumbnailExtractor extractor(*platform);
    for (const char* name : {"Summer party\\everyone.jpg", "Summer party", "..\\phone list.txt", ""}) {
        ASSERT_FALSE(extractor.Generate(kPictures + std::string(name), kSide, kSide)) << name;
    }
    EXPECT_EQ(extractor.Picture(), nullptr);
}

TEST_F(PreviewTest, AnUprightPhotographIsStoredOnItsSideAndShownUpright) {
    const auto platform = VolumePlatform::Open(folder.Path(), {}, MakeQtPictureDecoder(OSTREVIN_PROGRAM));
    ThumbnailExtractor extractor(*platform);
    ASSERT_TRUE(extractor.Generate(kPictures + std::string("Summer party\\lawn.jpg"), kSide, kSide));
    EXPECT_EQ(extractor.Picture()->width, 75);
    EXPECT_EQ(extractor.Picture()->height, kSide);
    const auto redOf = [&](std::size_t row) {
        return (extractor.Picture()->pixels.at(row * 75) >> 16U) & 0xFFU;
    };
    EXPECT_LT(redOf(2), redOf(58)) << "the sky grows bright down to the horizon";
    EXPECT_LT(redOf(98), redOf(58)) << "and the sea dark below it";
}

TEST_F(PreviewTest, WithoutADecoderNothingHasOne) {
    const auto platform = VolumePlatform::Open(folder.Path(), {});
    ThumbnailExtractor extractor(*platform);
    EXPECT_FALSE(extractor.Generate(std::string(kPictures) + "new logo.png", kSide, kSide));
}

}  // namespace
}  // namespace ostrevin
