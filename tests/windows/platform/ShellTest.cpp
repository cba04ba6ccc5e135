// The shell: its namespace as far as a thumbnail needs it, special folders, programs.

#include <windows.h>
#include <gtest/gtest.h>
#include <string>

#include "platform/ShellFolder.h"
#include "platform/windows/BitmapPoints.h"
#include "platform/windows/WindowsPlatform.h"
#include "tests/support/ScratchFolder.h"
#include "widgets/ThumbnailExtractor.h"

namespace ostrevin {
namespace {

class WindowsShellTest : public testing::Test {
  protected:
    WindowsPlatform platform;
    ScratchFolder folder;
};

TEST_F(WindowsShellTest, LeadsFromTheDesktopToAFile) {
    folder.Write("caf\u00E9.txt", "x");
    const std::unique_ptr<ShellFolder> desktop = platform.SHGetDesktopFolder();
    const std::unique_ptr<ShellMalloc> allocator = platform.SHGetMalloc();
    ASSERT_NE(desktop, nullptr);
    ASSERT_NE(allocator, nullptr);
    const std::string path = folder.Path();
    ItemList folderList = 0;
    ASSERT_TRUE(desktop->ParseDisplayName(path.substr(0, path.size() - 1), folderList));
    EXPECT_NE(folderList, 0U);
    std::unique_ptr<ShellFolder> bound;
    ASSERT_TRUE(desktop->BindToObject(folderList, bound));
    ItemList fileList = 0;
    ASSERT_TRUE(bound->ParseDisplayName("caf\u00E9.txt", fileList));
    EXPECT_NE(fileList, 0U);
    ItemList none = 7;
    EXPECT_FALSE(bound->ParseDisplayName("none.txt", none));
    EXPECT_EQ(none, 7U) << "a call that fails stores nothing";
    std::unique_ptr<ImageExtractor> extractor;
    EXPECT_FALSE(bound->GetUIObjectOf(fileList, extractor)) << "there is no thumbnail handler for a text";
    EXPECT_FALSE(bound->GetUIObjectOf(0, extractor));
    EXPECT_FALSE(desktop->ParseDisplayName(folder.Path("none"), none));
    allocator->Free(fileList);
    allocator->Free(folderList);
    allocator->Free(0);
}

TEST_F(WindowsShellTest, MakesNoThumbnailOfWhatHasNone) {
    folder.Write("a.txt", "x");
    ThumbnailExtractor extractor(platform);
    for (const std::string& path : {folder.Path("a.txt"), folder.Path("none.txt"), std::string("a.txt"),
                                    std::string(), std::string("C:\\")}) {
        EXPECT_FALSE(extractor.Generate(path, 96, 96)) << path;
        EXPECT_EQ(extractor.Picture(), nullptr);
    }
}

/// A bitmap of 2 x 2 points; upright, or with the bottom row first.
HBITMAP MakeBitmap(bool upright, const std::array<std::uint32_t, 4>& points) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 2;
    info.bmiHeader.biHeight = upright ? -2 : 2;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap != nullptr) {
        std::copy(points.begin(), points.end(), static_cast<std::uint32_t*>(bits));
    }
    return bitmap;
}

TEST(WindowsBitmap, BecomesPointsWithTheTopRowFirst) {
    const HBITMAP bottomUp = MakeBitmap(false, {0x00000003, 0x00000004, 0x00112233, 0x80FFFFFF});
    const HBITMAP upright = MakeBitmap(true, {0x00112233, 0x80FFFFFF, 0x00000003, 0x00000004});
    const std::vector<std::uint32_t> points = {0xFF112233, 0xFFFFFFFF, 0xFF000003, 0xFF000004};
    for (const HBITMAP bitmap : {bottomUp, upright}) {
        ASSERT_NE(bitmap, nullptr);
        const BitmapHandle read = windows::PointsOf(bitmap);
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(read->width, 2);
        EXPECT_EQ(read->height, 2);
        EXPECT_EQ(read->points, points);
        EXPECT_NE(DeleteObject(bitmap), FALSE) << "it stays the caller's";
    }
}

TEST(WindowsBitmap, IsReadOfEveryDepth) {
    const std::array<BYTE, 8> rows = {0x40, 0, 0x80, 0, 0, 0, 0, 0};  // white right at the top, then left
    const HBITMAP monochrome = CreateBitmap(2, 2, 1, 1, rows.data());
    const BitmapHandle read = windows::PointsOf(monochrome);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->points, (std::vector<std::uint32_t>{0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF, 0xFF000000}));
    DeleteObject(monochrome);
    EXPECT_EQ(windows::PointsOf(nullptr), nullptr);
}

TEST_F(WindowsShellTest, KnowsTheSpecialFolders) {
    EXPECT_NE(platform.SpecialFolderPath(8).find("Recent"), std::string::npos);
    EXPECT_NE(platform.SpecialFolderPath(23).find("Programs"), std::string::npos);
    EXPECT_NE(platform.SpecialFolderPath(34).find("History"), std::string::npos);
    EXPECT_EQ(platform.SpecialFolderPath(999), "");
    EXPECT_EQ(platform.SpecialFolderPath(17), "") << "the drives are no folder of a disk";
}

TEST_F(WindowsShellTest, StartsAProgramByItsWholeCommandLine) {
    const std::string mark = folder.Path("started");
    ASSERT_TRUE(platform.StartProgram("cmd.exe /c mkdir \"" + mark + "\""));
    for (int i = 0; i < 600 && !folder.Has("started"); ++i) {
        Sleep(50);
    }
    EXPECT_TRUE(folder.Has("started"));
    EXPECT_FALSE(platform.StartProgram("C:\\ostrevin-none\\x.exe"));
    EXPECT_FALSE(platform.StartProgram(""));
}

TEST_F(WindowsShellTest, OpensNothingThatIsNotThere) {
    const std::string folderPath = folder.Path();
    EXPECT_EQ(platform.ShellExecuteA("open", folder.Path("none.txt"), folderPath, 1), 2) << "file not found";
    EXPECT_LE(platform.ShellExecuteA("open", folder.Path("\u0416.txt"), folderPath, 1), 32);
}

}  // namespace
}  // namespace ostrevin
