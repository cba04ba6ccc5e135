// Files that the program writes, as far as every host has them alike.
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/volume/VolumePlatform.h"
#include "tests/volume/TestVolume.h"
#include "tests/volume/WritingFiles.h"

namespace ostrevin {
namespace {

class CommonOutputFilesTest : public testing::Test {
  protected:
    TestVolume volume_;
};

TEST_F(CommonOutputFilesTest, ARelativeOutputPathStartsInTheCurrentFolder) {
    const TemporaryFolder own;
    const auto platform = volume_.Make();
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(own.Path());
    WriteOutput(*platform, "a.htm", "text");
    std::filesystem::current_path(volume_.folder.Path());
    const std::string refused = FailureOf([&] { platform->CreateOutputFile("b.htm"); });
    std::filesystem::current_path(before);
    EXPECT_EQ(BytesOfFile(own / "a.htm"), "text");
    EXPECT_EQ(refused, "Path/File access error: b.htm");
    EXPECT_FALSE(std::filesystem::exists(volume_.folder / "b.htm"));
}

TEST_F(CommonOutputFilesTest, OutputFoldersAreMadeWhereTheyAreMissing) {
    const TemporaryFolder own;
    own.Write("file", "text");
    const auto platform = volume_.Make();
    platform->CreateOutputFolder(own / "new/");
    platform->CreateOutputFolder(own / "new");
    WriteOutput(*platform, own / "new/a.htm", "text");
    EXPECT_EQ(BytesOfFile(own / "new/a.htm"), "text");
    for (const std::string& path : {own / "file", own / "none/new", std::string()}) {
        EXPECT_EQ(FailureOf([&] { platform->CreateOutputFolder(path); }), "Path/File access error: " + path);
    }
}

}  // namespace
}  // namespace ostrevin
