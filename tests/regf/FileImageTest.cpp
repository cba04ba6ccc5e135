#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "platform/volume/regf/FileImage.h"
#include "tests/regf/HiveBytes.h"
#include "tests/support/BytesFile.h"

namespace ostrevin::regf {
namespace {

constexpr std::size_t kPiece = FileImage::kPiece;

/// A file that tells how much was read of it, and of which a part may have become unreadable.
class WatchedFile : public BytesFile {
  public:
    using BytesFile::BytesFile;
    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        const std::uint64_t left = offset < readableUpTo ? readableUpTo - offset : 0;
        const std::size_t got =
            BytesFile::Read(offset, buffer.first(std::min<std::uint64_t>(buffer.size(), left)));
        readBytes += got;
        return got;
    }
    std::uint64_t readableUpTo = UINT64_MAX;
    std::size_t readBytes = 0;
};

std::vector<std::byte> Copy(Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

std::vector<std::byte> Part(const std::vector<std::byte>& bytes, std::size_t at, std::size_t size) {
    return Copy(Bytes(bytes).subspan(at, size));
}

TEST(FileImage, HoldsWhatTheFileHolds) {
    const auto bytes = Pattern(3 * kPiece + 100);
    WatchedFile file(bytes);
    const FileImage image(file);
    EXPECT_EQ(image.Size(), bytes.size());
    EXPECT_EQ(Copy(image.At(kPiece - 3, 6)), Part(bytes, kPiece - 3, 6)) << "over the edge of a piece";
    EXPECT_EQ(Copy(image.At(0, bytes.size())), bytes);
    EXPECT_EQ(Copy(image.At(bytes.size() - 5, 100)), Part(bytes, bytes.size() - 5, 5));
    EXPECT_TRUE(image.At(bytes.size(), 1).empty());
    EXPECT_TRUE(image.At(SIZE_MAX, 1).empty());
    EXPECT_EQ(image.At(1, SIZE_MAX).size(), bytes.size() - 1);
}

TEST(FileImage, ReadsAPieceOnceAndOnlyWhenItIsAskedFor) {
    WatchedFile file(Pattern(100 * kPiece));
    const FileImage image(file);
    EXPECT_EQ(file.readBytes, 0U);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(image.At(50 * kPiece + 1, 1).size(), 1U);
        EXPECT_EQ(image.At(51 * kPiece - 1, 1).size(), 1U);
    }
    EXPECT_EQ(file.readBytes, kPiece);
    EXPECT_EQ(image.Held(), kPiece);
}

TEST(FileImage, CopiesWithoutKeeping) {
    const auto bytes = Pattern(10 * kPiece);
    WatchedFile file(bytes);
    FileImage image(file);
    image.Write(2 * kPiece + 7, Bytes(bytes).first(3));
    const std::size_t held = image.Held();
    std::vector<std::byte> copy(3 * kPiece);
    EXPECT_EQ(image.Copy(kPiece + 1, copy), copy.size());
    auto expected = Part(bytes, kPiece + 1, 3 * kPiece);
    std::copy_n(bytes.begin(), 3, expected.begin() + kPiece + 6);
    EXPECT_EQ(copy, expected) << "what was written shows, the rest is the file's";
    EXPECT_EQ(image.Held(), held);
    EXPECT_EQ(image.Copy(10 * kPiece - 2, copy), 2U);
    EXPECT_EQ(image.Copy(10 * kPiece, copy), 0U);
}

TEST(FileImage, ChangesInMemoryAlone) {
    const auto bytes = Pattern(kPiece + 50);
    WatchedFile file(bytes);
    FileImage image(file, 1000);
    EXPECT_FALSE(image.GrowTo(bytes.size() + 1001));
    ASSERT_TRUE(image.GrowTo(bytes.size() + 1000));
    EXPECT_EQ(Copy(image.At(bytes.size(), 2000)), std::vector<std::byte>(1000)) << "new bytes are zeros";
    image.Write(bytes.size() - 10, Bytes(bytes).first(20));
    EXPECT_EQ(Copy(image.At(bytes.size() - 10, 20)), Part(bytes, 0, 20));
    image.Forget();
    EXPECT_EQ(image.Size(), bytes.size());
    EXPECT_EQ(Copy(image.At(0, bytes.size())), bytes);
}

// A mapping would end the program here.
TEST(FileImage, OfAFileThatShrinksHoldsZeros) {
    const auto bytes = Pattern(4 * kPiece);
    WatchedFile file(bytes);
    FileImage image(file);
    int told = 0;
    image.OnUnreadable([&] { ++told; });
    EXPECT_EQ(Copy(image.At(kPiece, 10)), Part(bytes, kPiece, 10));
    EXPECT_EQ(told, 0);
    file.readableUpTo = 2 * kPiece + 10;
    EXPECT_EQ(Copy(image.At(kPiece, 10)), Part(bytes, kPiece, 10)) << "what was read once stays";
    EXPECT_EQ(Copy(image.At(2 * kPiece, 10)), Part(bytes, 2 * kPiece, 10));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(Copy(image.At(2 * kPiece + 10, kPiece)), std::vector<std::byte>(kPiece));
    std::vector<std::byte> copy(5, std::byte{1});
    EXPECT_EQ(image.Copy(4 * kPiece - 5, copy), 5U);
    EXPECT_EQ(copy, std::vector<std::byte>(5));
    EXPECT_EQ(image.Size(), bytes.size());
}

TEST(FileImage, OfNothingIsEmpty) {
    BytesFile file({});
    const FileImage image(file);
    EXPECT_TRUE(image.At(0, 10).empty());
}

}  // namespace
}  // namespace ostrevin::regf
