#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/volume/VolumeFiles.h"
#include "platform/volume/VolumeShell.h"
#include "tests/volume/TemporaryFolder.h"

namespace ostrevin {
namespace {

/// A volume with a picture in it, and a decoder that reads "PIC" files.
class VolumeShellTest : public ::testing::Test {
  protected:
    VolumeShellTest() { folder.Write("Docs/My Pictures/sun.pic", "bytes"); }

    PictureDecoder Decoder() {
        return {[](const std::string& extension) { return extension == "PIC"; },
                [this](std::span<const std::byte> bytes, const ImageSize& size) {
                    std::transform(bytes.begin(), bytes.end(), std::back_inserter(decoded),
                                   [](std::byte byte) { return std::to_integer<char>(byte); });
                    decodedSize = size;
                    return decodes ? std::make_unique<Bitmap>(Bitmap{1, 1, {0xFFFFFFFF}}) : nullptr;
                }};
    }
    ItemList Parse(ShellFolder& in, const std::string& name) {
        ItemList list = 0;
        return in.ParseDisplayName(name, list) ? list : 0;
    }
    std::unique_ptr<ShellFolder> FolderAt(const std::string& path) {
        std::unique_ptr<ShellFolder> bound;
        return desktop->BindToObject(Parse(*desktop, path), bound) ? std::move(bound) : nullptr;
    }
    /// The extractor of a file; null when the file is not found or has no handler.
    std::unique_ptr<ImageExtractor> ExtractorOf(const std::string& folderPath, const std::string& name) {
        const std::unique_ptr<ShellFolder> in = FolderAt(folderPath);
        std::unique_ptr<ImageExtractor> extractor;
        return in && in->GetUIObjectOf(Parse(*in, name), extractor) ? std::move(extractor) : nullptr;
    }
    static bool Announce(ImageExtractor& extractor, const ImageSize& size) {
        TextBuffer location{260, {}};
        std::uint32_t priority = 0;
        std::uint32_t flags = 0;
        return extractor.GetLocation(location, priority, size, 32, flags);
    }

    TemporaryFolder folder;
    VolumeFiles files{folder.Utf8Path()};
    std::string decoded;
    ImageSize decodedSize;
    bool decodes = true;
    VolumeShell shell{files, Decoder()};
    std::unique_ptr<ShellFolder> desktop = shell.DesktopFolder();
};

TEST_F(VolumeShellTest, ThePictureOfAFileIsDecodedFromItsBytes) {
    const std::unique_ptr<ImageExtractor> extractor = ExtractorOf("C:\\Docs\\My Pictures", "sun.pic");
    ASSERT_NE(extractor, nullptr);
    EXPECT_EQ(decoded, "") << "nothing is read before the extraction";
    EXPECT_TRUE(Announce(*extractor, {120, 90}));
    BitmapHandle bitmap;
    ASSERT_TRUE(extractor->Extract(bitmap));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->points, (std::vector<std::uint32_t>{0xFFFFFFFF}));
    EXPECT_EQ(decoded, "bytes");
    EXPECT_EQ(decodedSize.cx, 120);
    EXPECT_EQ(decodedSize.cy, 90);
}

TEST_F(VolumeShellTest, NamesAreFoundWithoutRegardToCase) {
    EXPECT_NE(ExtractorOf("c:\\DOCS\\my pictures", "SUN.PIC"), nullptr);
}

TEST_F(VolumeShellTest, ARootIsAFolderWithAndWithoutItsBackslash) {
    folder.Write("top.pic", "bytes");
    EXPECT_NE(ExtractorOf("C:\\", "top.pic"), nullptr);
    EXPECT_NE(ExtractorOf("C:", "top.pic"), nullptr);
}

TEST_F(VolumeShellTest, WhatIsNotThereIsNotParsed) {
    ItemList list = 7;
    for (const char* path : {"", "C:\\none", "D:\\Docs", "D:\\", "\\\\server\\share", "Docs",
                             "C:\\Docs\\My Pictures\\sun.pic\\x"}) {
        EXPECT_FALSE(desktop->ParseDisplayName(path, list)) << path;
    }
    const std::unique_ptr<ShellFolder> docs = FolderAt("C:\\Docs");
    ASSERT_NE(docs, nullptr);
    EXPECT_FALSE(docs->ParseDisplayName("", list));
    EXPECT_FALSE(docs->ParseDisplayName("sun.pic", list));
    EXPECT_EQ(list, 7U) << "a call that fails stores nothing";
}

TEST_F(VolumeShellTest, NothingOutsideOfTheVolumeIsReached) {
    const TemporaryFolder outside;
    outside.Write("secret.pic", "secret");
    const std::unique_ptr<ShellFolder> docs = FolderAt("C:\\Docs");
    ASSERT_NE(docs, nullptr);
    const std::string up = "..\\..\\" + outside.Path().filename().string() + "\\secret.pic";
    EXPECT_EQ(Parse(*docs, up), 0U);
    EXPECT_EQ(Parse(*docs, outside / "secret.pic"), 0U);
}

TEST_F(VolumeShellTest, OnlyFoldersAreOpened) {
    EXPECT_EQ(FolderAt("C:\\Docs\\My Pictures\\sun.pic"), nullptr);
    std::unique_ptr<ShellFolder> bound;
    EXPECT_FALSE(desktop->BindToObject(0, bound));
    EXPECT_FALSE(desktop->BindToObject(12345, bound));
}

TEST_F(VolumeShellTest, OnlyFilesOfReadExtensionsHaveAHandler) {
    folder.Write("Docs/notes.txt", "bytes");
    folder.Write("Docs/pic", "bytes");
    folder.Write("Docs/last.txt.Pic", "bytes");
    folder.MakeFolder("Docs/folder.pic");
    for (const char* name : {"notes.txt", "pic", "folder.pic", "gone.pic"}) {
        EXPECT_EQ(ExtractorOf("C:\\Docs", name), nullptr) << name;
    }
    EXPECT_NE(ExtractorOf("C:\\Docs", "last.txt.Pic"), nullptr);
    EXPECT_NE(ExtractorOf("C:\\Docs", "last.txt.pic. "), nullptr) << "as Windows opens it";
}

TEST_F(VolumeShellTest, AListServesUntilItIsFreed) {
    const ItemList list = Parse(*desktop, "C:\\Docs");
    EXPECT_NE(list, Parse(*desktop, "C:\\Docs")) << "each parsing allocates";
    shell.Malloc()->Free(0);
    std::unique_ptr<ShellFolder> bound;
    EXPECT_TRUE(desktop->BindToObject(list, bound));
    shell.Malloc()->Free(list);
    EXPECT_FALSE(desktop->BindToObject(list, bound));
    shell.Malloc()->Free(list);
}

TEST_F(VolumeShellTest, NothingIsExtractedWithoutASize) {
    const std::unique_ptr<ImageExtractor> extractor = ExtractorOf("C:\\Docs\\My Pictures", "sun.pic");
    ASSERT_NE(extractor, nullptr);
    BitmapHandle bitmap;
    EXPECT_FALSE(extractor->Extract(bitmap));
    for (const ImageSize size : {ImageSize{0, 10}, ImageSize{10, 0}, ImageSize{-1, 10}, ImageSize{10, -1}}) {
        EXPECT_TRUE(Announce(*extractor, size));
        EXPECT_FALSE(extractor->Extract(bitmap));
    }
    EXPECT_EQ(decoded, "");
}

TEST_F(VolumeShellTest, ALocationThatDoesNotFitIsRefused) {
    const std::unique_ptr<ImageExtractor> extractor = ExtractorOf("C:\\Docs\\My Pictures", "sun.pic");
    ASSERT_NE(extractor, nullptr);
    TextBuffer location{10, "before"};
    std::uint32_t priority = 0;
    std::uint32_t flags = 0;
    EXPECT_FALSE(extractor->GetLocation(location, priority, {1, 1}, 32, flags));
    EXPECT_EQ(location.text, "before");
}

TEST_F(VolumeShellTest, WhatCannotBeDecodedIsNotExtracted) {
    decodes = false;
    const std::unique_ptr<ImageExtractor> extractor = ExtractorOf("C:\\Docs\\My Pictures", "sun.pic");
    ASSERT_NE(extractor, nullptr);
    EXPECT_TRUE(Announce(*extractor, {120, 90}));
    BitmapHandle bitmap = std::make_unique<Bitmap>();
    EXPECT_FALSE(extractor->Extract(bitmap));
    EXPECT_NE(bitmap, nullptr) << "a call that fails stores nothing";
}

TEST_F(VolumeShellTest, AFileThatIsGoneOrTooLargeIsNotExtracted) {
    std::vector<std::unique_ptr<ImageExtractor>> extractors;
    for (const std::string name : {"gone.pic", "large.pic"}) {
        folder.Write("Docs/" + name, "bytes");
        extractors.push_back(ExtractorOf("C:\\Docs", name));
    }
    std::filesystem::remove(folder / "Docs/gone.pic");
    std::filesystem::resize_file(folder / "Docs/large.pic", (std::uintmax_t{64} << 20U) + 1);
    for (const std::unique_ptr<ImageExtractor>& extractor : extractors) {
        ASSERT_NE(extractor, nullptr);
        EXPECT_TRUE(Announce(*extractor, {120, 90}));
        BitmapHandle bitmap;
        EXPECT_FALSE(extractor->Extract(bitmap));
    }
    EXPECT_EQ(decoded, "");
}

TEST_F(VolumeShellTest, WithoutADecoderNoFileHasAHandler) {
    VolumeShell plain(files, {});
    desktop = plain.DesktopFolder();
    EXPECT_NE(FolderAt("C:\\Docs\\My Pictures"), nullptr);
    EXPECT_EQ(ExtractorOf("C:\\Docs\\My Pictures", "sun.pic"), nullptr);
}

}  // namespace
}  // namespace ostrevin
