#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/MemoryPlatform.h"
#include "widgets/ThumbnailExtractor.h"

namespace ostrevin {
namespace {

using Strings = std::vector<std::string>;

/// A host with a picture of one point, C:\a\b.jpg.
class ThumbnailExtractorTest : public ::testing::Test {
  protected:
    ThumbnailExtractorTest() { AddPicture("C:\\a\\b.jpg", 0xFF112233); }

    MemoryFile& AddPicture(const std::string& path, std::uint32_t point) {
        MemoryFile& file = platform.AddFile(path);
        file.hasThumbnail = true;
        file.thumbnail = Bitmap{1, 1, {point}};
        return file;
    }
    bool Generate(const std::string& path = "C:\\a\\b.jpg") { return extractor.Generate(path, 120, 90); }
    /// Makes a picture, and forgets the calls that led to it.
    void HavePicture() {
        ASSERT_TRUE(Generate());
        platform.shellCalls.clear();
    }
    Strings AllocatedLists() const {
        Strings paths;
        for (const auto& [list, path] : platform.itemLists) {
            paths.push_back(path);
        }
        return paths;
    }

    MemoryPlatform platform;
    ThumbnailExtractor extractor{platform};
};

TEST_F(ThumbnailExtractorTest, AsksTheShellStepByStep) {
    EXPECT_EQ(extractor.Picture(), nullptr);
    EXPECT_TRUE(Generate());
    EXPECT_EQ(platform.shellCalls,
              (Strings{"desktop", "parse C:\\a", "bind C:\\a", "parse b.jpg", "object C:\\a\\b.jpg",
                       "location 120 x 90, 32 bits, flags 808, buffer 260", "extract C:\\a\\b.jpg", "malloc",
                       "free C:\\a", "free C:\\a\\b.jpg"}));
    EXPECT_TRUE(AllocatedLists().empty());
    ASSERT_NE(extractor.Picture(), nullptr);
    EXPECT_EQ(extractor.Picture()->width, 1);
    EXPECT_EQ(extractor.Picture()->height, 1);
    EXPECT_EQ(extractor.Picture()->pixels, (std::vector<std::uint32_t>{0xFF112233}));
}

TEST_F(ThumbnailExtractorTest, PassesOnASizeThatIsNone) {
    extractor.Generate("C:\\a\\b.jpg", -1, 0);
    EXPECT_EQ(platform.shellCalls[5], "location -1 x 0, 32 bits, flags 808, buffer 260");
}

TEST_F(ThumbnailExtractorTest, FetchesTheAllocatorOnceOnFirstNeed) {
    Generate();
    Generate();
    EXPECT_EQ(std::count(platform.shellCalls.begin(), platform.shellCalls.end(), "malloc"), 1);
}

TEST_F(ThumbnailExtractorTest, LooksForAFileInADrivesRootInTheRootWithItsBackslash) {
    AddPicture("D:\\x.png", 0);
    EXPECT_TRUE(Generate("D:\\x.png"));
    EXPECT_EQ(platform.shellCalls[1], "parse D:\\");
    EXPECT_EQ(platform.shellCalls[3], "parse x.png");
}

TEST_F(ThumbnailExtractorTest, LooksInTheFolderBeforeTheLastBackslash) {
    AddPicture("\\\\server\\share\\x.png", 0);
    EXPECT_TRUE(Generate("\\\\server\\share\\x.png"));
    EXPECT_EQ(platform.shellCalls[1], "parse \\\\server\\share");
}

TEST_F(ThumbnailExtractorTest, APathWithoutABackslashFails) {
    AddPicture("b.jpg", 0);
    EXPECT_FALSE(Generate("b.jpg"));
    EXPECT_FALSE(Generate(""));
    EXPECT_EQ(platform.shellCalls, (Strings{"desktop", "parse ", "desktop", "parse "}));
}

TEST_F(ThumbnailExtractorTest, AFolderFails) {
    EXPECT_FALSE(Generate("C:\\a\\"));
    EXPECT_EQ(platform.shellCalls[3], "parse ");
    EXPECT_EQ(platform.shellCalls[4], "object ");
}

TEST_F(ThumbnailExtractorTest, WithoutADesktopNothingIsAsked) {
    platform.Fail("SHGetDesktopFolder");
    EXPECT_FALSE(Generate());
    EXPECT_EQ(platform.shellCalls, Strings{"desktop"});
}

TEST_F(ThumbnailExtractorTest, AFolderThatIsNotFoundEndsIt) {
    HavePicture();
    EXPECT_FALSE(Generate("C:\\no\\b.jpg"));
    EXPECT_EQ(platform.shellCalls, (Strings{"desktop", "parse C:\\no"}));
    EXPECT_NE(extractor.Picture(), nullptr);
}

TEST_F(ThumbnailExtractorTest, AFolderThatCannotBeOpenedEndsItAndLeavesTheListAllocated) {
    HavePicture();
    platform.Fail("BindToObject");
    EXPECT_FALSE(Generate());
    EXPECT_EQ(platform.shellCalls, (Strings{"desktop", "parse C:\\a", "bind C:\\a"}));
    EXPECT_EQ(AllocatedLists(), Strings{"C:\\a"});
    EXPECT_NE(extractor.Picture(), nullptr);
}

TEST_F(ThumbnailExtractorTest, AFileThatIsNotFoundShowsInTheNextCall) {
    HavePicture();
    EXPECT_FALSE(Generate("C:\\a\\gone.jpg"));
    EXPECT_EQ(platform.shellCalls, (Strings{"desktop", "parse C:\\a", "bind C:\\a", "parse gone.jpg",
                                            "object ", "free C:\\a", "free "}));
    EXPECT_TRUE(AllocatedLists().empty());
    EXPECT_NE(extractor.Picture(), nullptr);
}

TEST_F(ThumbnailExtractorTest, AFileWithoutAHandlerFailsAndBothListsAreFreed) {
    HavePicture();
    platform.AddFile("C:\\a\\notes.xyz");
    EXPECT_FALSE(Generate("C:\\a\\notes.xyz"));
    EXPECT_EQ(platform.shellCalls,
              (Strings{"desktop", "parse C:\\a", "bind C:\\a", "parse notes.xyz", "object C:\\a\\notes.xyz",
                       "free C:\\a", "free C:\\a\\notes.xyz"}));
    EXPECT_TRUE(AllocatedLists().empty());
    EXPECT_NE(extractor.Picture(), nullptr);
}

TEST_F(ThumbnailExtractorTest, ALocationThatIsRefusedDoesNotEndIt) {
    platform.Fail("GetLocation");
    EXPECT_TRUE(Generate());
    EXPECT_NE(extractor.Picture(), nullptr);
}

TEST_F(ThumbnailExtractorTest, AnExtractionThatFailsKeepsThePictureAndLeavesBothListsAllocated) {
    HavePicture();
    const PicturePtr before = extractor.Picture();
    platform.Fail("Extract");
    EXPECT_FALSE(Generate());
    EXPECT_EQ(platform.shellCalls.back(), "extract C:\\a\\b.jpg");
    EXPECT_EQ(AllocatedLists(), (Strings{"C:\\a", "C:\\a\\b.jpg"}));
    EXPECT_EQ(extractor.Picture(), before);
}

TEST_F(ThumbnailExtractorTest, AZeroHandleEmptiesThePicture) {
    HavePicture();
    platform.Find("C:\\a\\b.jpg")->thumbnail.reset();
    EXPECT_FALSE(Generate());
    EXPECT_EQ(extractor.Picture(), nullptr);
    EXPECT_TRUE(AllocatedLists().empty());
}

TEST_F(ThumbnailExtractorTest, ASecondPictureReplacesTheFirstAndReleasesIt) {
    AddPicture("C:\\a\\c.jpg", 0x80000000);
    HavePicture();
    const std::weak_ptr<const Picture> first = extractor.Picture();
    EXPECT_TRUE(Generate("C:\\a\\c.jpg"));
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(extractor.Picture()->pixels.at(0), 0x80000000);
}

TEST_F(ThumbnailExtractorTest, AShellWithoutAnAllocatorStillGivesPictures) {
    platform.Fail("SHGetMalloc");
    EXPECT_TRUE(Generate());
    EXPECT_EQ(AllocatedLists().size(), 2U);
}

}  // namespace
}  // namespace ostrevin
