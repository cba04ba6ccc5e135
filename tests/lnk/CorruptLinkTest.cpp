// Shell links whose bytes lie.

#include <gtest/gtest.h>

#include "tests/lnk/LinkFixtures.h"

namespace ostrevin::lnk {
namespace {

constexpr std::size_t kAfterHeader = 76;

std::vector<std::byte> Patched(std::vector<std::byte> bytes, std::size_t at, std::uint32_t value,
                               std::size_t width = 4) {
    for (std::size_t i = 0; i < width; ++i) {
        bytes.at(at + i) = static_cast<std::byte>((value >> (8 * i)) & 0xFFU);
    }
    return bytes;
}

bool Loads(Bytes bytes) {
    return ReadShellLink(bytes, TestHost().decodeAnsi).has_value();
}

/// Link information alone, at kAfterHeader.
std::vector<std::byte> InfoBytes() {
    samples::Link link = LocalLink("C:\\a.txt");
    link.items.clear();
    link.description = "about";
    link.environmentPath = "fallback";
    return samples::WriteLink(link);
}

/// A link to \\server\share\f.txt with network information alone.
std::vector<std::byte> NetworkBytes() {
    samples::Link link;
    link.info.emplace();
    link.info->network.emplace();
    link.info->network->share = "\\\\server\\share";
    link.info->suffix = "f.txt";
    link.environmentPath = "fallback";
    return samples::WriteLink(link);
}

/// An identifier list alone, its size at kAfterHeader: My Computer (20 bytes), C:\ (25 bytes), FILE~1.TXT.
std::vector<std::byte> ListBytes() {
    samples::Link link;
    samples::FileItem last;
    last.shortName = "FILE~1.TXT";
    link.items = samples::ItemsForPath("C:\\File name.txt", last);
    link.description = "about";
    return samples::WriteLink(link);
}
constexpr std::size_t kFirstItem = kAfterHeader + 2;
constexpr std::size_t kFileItem = kFirstItem + 20 + 25;
constexpr std::size_t kExtension = 26;  // of the file item: 14 bytes, FILE~1.TXT, NUL, NUL

TEST(CorruptLink, OnlyAShellLinkIsOne) {
    const std::vector<std::byte> good = InfoBytes();
    EXPECT_TRUE(Loads(good));
    EXPECT_FALSE(Loads({}));
    EXPECT_FALSE(Loads(Patched(good, 0, 0x4D))) << "header size";
    EXPECT_FALSE(Loads(Patched(good, 0, 0xFFFFFFFF))) << "header size";
    for (std::size_t at = 4; at < 20; ++at) {
        EXPECT_FALSE(Loads(Patched(good, at, 0x77, 1))) << "class identifier, byte " << at;
    }
    EXPECT_FALSE(Loads(Bytes(good).first(kAfterHeader - 1)));
}

TEST(CorruptLink, AFileThatEndsBeforeItsStringsDoesNotLoad) {
    samples::Link link = LocalLink("C:\\a.txt");
    link.description = "about";
    link.iconFile = "last";
    const std::vector<std::byte> good = samples::WriteLink(link);
    const std::size_t endOfStrings = good.size() - 4;  // the terminal block
    for (std::size_t size = 0; size < endOfStrings; ++size) {
        EXPECT_FALSE(Loads(Bytes(good).first(size))) << size;
    }
    for (std::size_t size = endOfStrings; size <= good.size(); ++size) {
        EXPECT_EQ(ReadShortcut(Bytes(good).first(size)).iconFile, "last") << size;
    }
}

TEST(CorruptLink, StringsOfImpossibleLengthDoNotLoad) {
    samples::Link link;
    link.description = "about";
    for (const bool unicode : {true, false}) {
        link.unicode = unicode;
        EXPECT_FALSE(Loads(Patched(samples::WriteLink(link), kAfterHeader, 0xFFFF, 2)));
    }
}

TEST(CorruptLink, FlagsWithoutTheirStructuresDoNotLoad) {
    const std::vector<std::byte> bare = samples::WriteLink({});
    EXPECT_TRUE(Loads(bare));
    EXPECT_FALSE(Loads(Patched(Patched(bare, kAfterHeader, 9), 20, kHasLinkTargetIdList)));
    EXPECT_FALSE(Loads(Patched(Patched(bare, kAfterHeader, 5), 20, kHasLinkInfo)));
    EXPECT_FALSE(Loads(Patched(bare, 20, 0xFFFFFFFF)));
}

TEST(CorruptLink, ABrokenIdentifierListIsAbsent) {
    const std::vector<std::byte> good = ListBytes();
    EXPECT_EQ(ReadShortcut(good).target, "C:\\File name.txt");
    for (const std::uint32_t size : {1U, 2U, 0xFFFFU}) {
        const Shortcut shortcut = ReadShortcut(Patched(good, kFirstItem, size, 2));
        EXPECT_EQ(shortcut.target, "") << size;
        EXPECT_EQ(shortcut.description, "about") << "what follows is read";
    }
    EXPECT_EQ(ReadShortcut(Patched(good, kFirstItem, 0, 2)).target, "") << "the list ends at once";
    EXPECT_FALSE(Loads(Patched(good, kAfterHeader, 0xFFFF, 2))) << "a list beyond the end of the file";
}

TEST(CorruptLink, ABrokenExtensionBlockLeavesTheShortName) {
    const std::vector<std::byte> good = ListBytes();
    const std::size_t extension = kFileItem + kExtension;
    const auto itemSize = IntegerAt<std::uint16_t>(good, kFileItem);
    const std::string expected = "C:\\FILE~1.TXT";
    EXPECT_EQ(ReadShortcut(Patched(good, extension, 0xFFFF, 2)).target, expected) << "size";
    EXPECT_EQ(ReadShortcut(Patched(good, extension, 0, 2)).target, expected) << "size";
    EXPECT_EQ(ReadShortcut(Patched(good, extension + 4, 0xBEEF0005)).target, expected) << "signature";
    EXPECT_EQ(ReadShortcut(Patched(good, extension + 16, 19, 2)).target, expected) << "offset of the name";
    EXPECT_EQ(ReadShortcut(Patched(good, extension + 16, 0xFFFF, 2)).target, expected)
        << "offset of the name";
    for (const std::uint32_t offset : {0U, 4U, 0xFFFFU, itemSize - 1U}) {
        EXPECT_EQ(ReadShortcut(Patched(good, kFileItem + itemSize - 2, offset, 2)).target, expected)
            << offset;
    }
}

TEST(CorruptLink, AnItemCutBeforeItsNameHasNoPath) {
    samples::Link link;
    for (const std::vector<std::byte>& item :
         {RawItem({0x32, 0, 0, 0}), RawItem({0x32, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), RawItem({0x36, 0}),
          RawItem({}), RawItem({0x2F}), RawItem({0x1F}), RawItem({0x43, 0}),
          RawItem({0x35, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 'a'})}) {
        link.items = {samples::ComputerItem(), samples::DriveItem("C:\\"), item};
        EXPECT_EQ(TargetOf(link), "");
    }
}

TEST(CorruptLink, LinkInformationWithABrokenHeaderIsAbsent) {
    const std::vector<std::byte> good = InfoBytes();
    EXPECT_EQ(ReadShortcut(good).target, "C:\\a.txt");
    for (const std::uint32_t headerSize : {0U, 0x1BU, 0xFFFFU, 0xFFFFFFFFU}) {
        const Shortcut shortcut = ReadShortcut(Patched(good, kAfterHeader + 4, headerSize));
        EXPECT_EQ(shortcut.target, "fallback") << headerSize;
        EXPECT_EQ(shortcut.description, "about");
    }
    EXPECT_FALSE(Loads(Patched(good, kAfterHeader, 0xFFFFFFFF))) << "larger than the file";
    EXPECT_FALSE(Loads(Patched(good, kAfterHeader, 0x7FFFFFFF))) << "larger than the file";
}

TEST(CorruptLink, LinkInformationThatIsOnlyItsSizeIsAbsent) {
    for (const std::uint32_t size : {0U, 3U, 4U}) {
        std::vector<std::byte> bytes = samples::WriteLink({});
        bytes = Patched(bytes, kAfterHeader, size);
        const std::vector<std::byte> description = RawItem({1, 0, 'x'});
        bytes.insert(bytes.end(), description.begin(), description.end());
        bytes = Patched(bytes, 20, kHasLinkInfo | kHasName | kIsUnicode);
        const auto link = ReadShellLink(bytes, TestHost().decodeAnsi);
        ASSERT_TRUE(link) << size;
        EXPECT_FALSE(link->linkInfo) << size;
        EXPECT_EQ(link->strings.name, "x") << size;
    }
}

TEST(CorruptLink, PathsOutsideOfTheLinkInformationAreAbsent) {
    const std::vector<std::byte> good = InfoBytes();
    const auto size = IntegerAt<std::uint32_t>(good, kAfterHeader);
    constexpr std::size_t kBasePathField = kAfterHeader + 16;
    for (const std::uint32_t offset : {0U, size, size + 1, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ReadShortcut(Patched(good, kBasePathField, offset)).target, "fallback") << offset;
    }
    constexpr std::size_t kSuffixField = kAfterHeader + 24;
    EXPECT_EQ(ReadShortcut(Patched(good, kSuffixField, 0xFFFFFFFF)).target, "C:\\a.txt");
    // The last text of the structure is the empty suffix: without its NUL the base path still has its own.
    std::vector<std::byte> open = Patched(good, kAfterHeader + size - 1, 'x', 1);
    EXPECT_EQ(ReadShortcut(open).target, "C:\\a.txt");
    open = Patched(open, kAfterHeader + size - 2, 'x', 1);
    EXPECT_EQ(ReadShortcut(open).target, "fallback") << "no NUL ends the base path";
}

TEST(CorruptLink, UnicodePathsOutsideOfTheLinkInformationGiveWayToSingleBytes) {
    samples::Link link = LocalLink("C:\\a.txt");
    link.items.clear();
    link.info->unicodeLocalBasePath = "C:\\\u0416.txt";
    const std::vector<std::byte> good = samples::WriteLink(link);
    EXPECT_EQ(ReadShortcut(good).target, "C:\\\u0416.txt");
    constexpr std::size_t kUnicodeField = kAfterHeader + 28;
    for (const std::uint32_t offset : {0U, 0xFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ReadShortcut(Patched(good, kUnicodeField, offset)).target, "C:\\a.txt") << offset;
    }
}

TEST(CorruptLink, ABrokenNetworkLinkIsAbsent) {
    const std::vector<std::byte> good = NetworkBytes();
    EXPECT_EQ(ReadShortcut(good).target, "\\\\server\\share\\f.txt");
    constexpr std::size_t kLinkField = kAfterHeader + 20;
    for (const std::uint32_t offset : {0U, 1U, 0xFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ReadShortcut(Patched(good, kLinkField, offset)).target, "fallback") << offset;
    }
    const std::size_t link = kAfterHeader + IntegerAt<std::uint32_t>(good, kLinkField);
    for (const std::uint32_t size : {0U, 0x13U, 0xFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ReadShortcut(Patched(good, link, size)).target, "fallback") << size;
    }
    for (const std::uint32_t offset : {0U, 0xFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ReadShortcut(Patched(good, link + 8, offset)).target, "fallback") << offset;
    }
    EXPECT_EQ(ReadShortcut(Patched(good, link + 4, 3)).target, "\\\\server\\share\\f.txt")
        << "a device is announced, but its offset is 0";
}

TEST(CorruptLink, ABrokenExtraBlockEndsTheExtraData) {
    samples::Link link;
    link.environmentPath = "%windir%\\a";
    link.iconEnvironmentPath = "%windir%\\b";
    const std::vector<std::byte> good = samples::WriteLink(link);
    EXPECT_EQ(ReadShortcut(good).iconFile, "C:\\WINDOWS\\b");
    for (const std::uint32_t size : {0U, 3U, 4U, 7U, 0xFFFFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ReadShortcut(Patched(good, kAfterHeader, size)).target, "") << size;
        const Shortcut shortcut = ReadShortcut(Patched(good, kAfterHeader + 788, size));
        EXPECT_EQ(shortcut.target, "C:\\WINDOWS\\a") << size;
        EXPECT_EQ(shortcut.iconFile, "") << size;
    }
}

TEST(CorruptLink, ShortExtraBlocksGiveWhatTheyHold) {
    const auto block = [](std::uint32_t signature, std::uint32_t size) {
        std::vector<std::byte> bytes(size, std::byte{'e'});
        return Patched(Patched(bytes, 0, size), 4, signature);
    };
    samples::Link link;
    link.extraBlocks = block(0xA0000001, 11);
    EXPECT_EQ(TargetOf(link), "eee");
    link.extraBlocks = block(0xA0000001, 8);
    EXPECT_EQ(TargetOf(link), "");
    link.extraBlocks = block(0xA0000005, 15);
    const auto file = ReadShellLink(samples::WriteLink(link), TestHost().decodeAnsi);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->extra.specialFolder);
}

TEST(CorruptLink, AnEnvironmentTextWithoutNulEndsWithItsField) {
    samples::Link link;
    link.environmentPath = std::string(259, 'a');
    std::vector<std::byte> bytes = samples::WriteLink(link);
    bytes = Patched(bytes, kAfterHeader + 268 + 518, 'b', 1);
    EXPECT_EQ(ReadShortcut(bytes).target, std::string(259, 'a') + "b");
    bytes = Patched(bytes, kAfterHeader + 8 + 259, 'c', 1);  // the single-byte form
    bytes = Patched(bytes, kAfterHeader + 268, 0, 2);        // no Unicode form
    EXPECT_EQ(ReadShortcut(bytes).target, std::string(259, 'a') + "c");
}

/// A link with every structure, for changes at every place.
std::vector<std::byte> EverythingBytes() {
    samples::Link link = LocalLink("C:\\Docs\\a.txt");
    link.info->unicodeLocalBasePath = "C:\\Docs\\\u0416.txt";
    link.info->network.emplace();
    link.info->network->share = "\\\\server\\share";
    link.info->network->device = "Z:";
    link.info->network->unicodeShare = "\\\\server\\\u0416";
    link.info->network->unicodeDevice = "Z:";
    link.description = "about";
    link.arguments = "/a";
    link.specialFolder = samples::LinkSpecialFolder{5, 45};
    link.environmentPath = "%windir%\\a";
    return samples::WriteLink(link);
}

TEST(CorruptLink, AnyByteMayLie) {
    const std::vector<std::byte> good = EverythingBytes();
    for (std::size_t at = 20; at < good.size(); ++at) {
        for (const std::uint32_t value : {0x00U, 0x01U, 0x7FU, 0x80U, 0xFFU}) {
            const Shortcut shortcut = ReadShortcut(Patched(good, at, value, 1));
            EXPECT_LE(shortcut.target.size() + shortcut.networkTarget.size(), 4 * good.size()) << at;
        }
    }
}

}  // namespace
}  // namespace ostrevin::lnk
