#include <gtest/gtest.h>

#include "platform/volume/lnk/ShellLinkFile.h"
#include "tests/lnk/LinkFixtures.h"

namespace ostrevin::lnk {
namespace {

ShellLinkFile Read(const samples::Link& link) {
    return ReadShellLink(samples::WriteLink(link), TestHost().decodeAnsi).value_or(ShellLinkFile());
}

samples::Link LinkWithStrings() {
    samples::Link link;
    link.description = "D\u00E9j\u00E0 vu";
    link.relativePath = "..\\a.txt";
    link.workingFolder = "C:\\Work";
    link.arguments = "/x \"y z\"";
    link.iconFile = "C:\\i.ico";
    return link;
}

void ExpectStrings(const StringData& strings) {
    EXPECT_EQ(strings.name, "D\u00E9j\u00E0 vu");
    EXPECT_EQ(strings.relativePath, "..\\a.txt");
    EXPECT_EQ(strings.workingDir, "C:\\Work");
    EXPECT_EQ(strings.arguments, "/x \"y z\"");
    EXPECT_EQ(strings.iconLocation, "C:\\i.ico");
}

TEST(ShellLinkFile, ReadsTheHeader) {
    samples::Link link;
    link.iconIndex = -6105;
    link.showCommand = 7;
    link.hotKey = 0x0641;
    const ShellLinkFile file = Read(link);
    EXPECT_EQ(file.header.flags, kIsUnicode);
    EXPECT_EQ(file.header.iconIndex, -6105);
    EXPECT_EQ(file.header.showCommand, 7);
    EXPECT_EQ(file.header.hotKey, 0x0641);
    EXPECT_FALSE(file.idList);
    EXPECT_FALSE(file.linkInfo);
}

TEST(ShellLinkFile, KeepsAShowCommandThatIsNone) {
    samples::Link link;
    link.showCommand = 0xFFFFFFFF;
    EXPECT_EQ(Read(link).header.showCommand, -1);
}

TEST(ShellLinkFile, ReadsUnicodeStrings) {
    samples::Link link = LinkWithStrings();
    ExpectStrings(Read(link).strings);
    link.description = "\u0416\U0001F600";
    EXPECT_EQ(Read(link).strings.name, "\u0416\U0001F600");
}

TEST(ShellLinkFile, ReadsSingleByteStringsInTheCodePage) {
    samples::Link link = LinkWithStrings();
    link.unicode = false;
    ExpectStrings(Read(link).strings);
}

TEST(ShellLinkFile, EachStringStandsWhereItsFlagSays) {
    samples::Link link = LinkWithStrings();
    link.description.reset();
    link.workingFolder.reset();
    const ShellLinkFile file = Read(link);
    EXPECT_EQ(file.strings.name, "");
    EXPECT_EQ(file.strings.relativePath, "..\\a.txt");
    EXPECT_EQ(file.strings.workingDir, "");
    EXPECT_EQ(file.strings.arguments, "/x \"y z\"");
}

TEST(ShellLinkFile, AStringEndsAtItsFirstNul) {
    samples::Link link;
    link.arguments = std::string("ab\0cd", 5);
    link.iconFile = "after";
    EXPECT_EQ(Read(link).strings.arguments, "ab");
    EXPECT_EQ(Read(link).strings.iconLocation, "after");
}

TEST(ShellLinkFile, ReadsTheItemsWithTheirLongNames) {
    samples::Link link;
    samples::FileItem last;
    last.shortName = "LONGNA~1.TXT";
    link.items = samples::ItemsForPath("C:\\Docs\\Long name \u0416.txt", last);
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.idList);
    const auto& items = file.idList->items;
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].kind, ItemKind::MyComputer);
    EXPECT_EQ(items[0].offset, 0U);
    EXPECT_EQ(items[1].kind, ItemKind::Drive);
    EXPECT_EQ(items[1].text, "C:\\");
    EXPECT_EQ(items[1].offset, 20U);
    EXPECT_EQ(items[2].kind, ItemKind::FileEntry);
    EXPECT_EQ(items[2].text, "Docs");
    EXPECT_EQ(items[3].text, "Long name \u0416.txt");
    EXPECT_EQ(file.idList->size, items[3].offset + link.items[3].size() + 2);
}

TEST(ShellLinkFile, ReadsItemsOfWindows2000WithoutALongName) {
    samples::Link link;
    link.items = {
        samples::ComputerItem(), samples::DriveItem("D:\\"),
        RawItem({0x32, 0, 9, 0, 0, 0, 1, 2, 3, 4, 0x20, 0}, std::string_view("Caf\xE9.txt\0CAF~1.TXT", 18))};
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.idList);
    ASSERT_EQ(file.idList->items.size(), 3U);
    EXPECT_EQ(file.idList->items[2].text, "Caf\u00E9.txt");
}

TEST(ShellLinkFile, ReadsItemsWhoseShortNameIsUnicode) {
    samples::Link link;
    link.items = {RawItem({0x36, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x20, 0, 0x16, 0x04, 'x', 0, 0})};
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.idList);
    EXPECT_EQ(file.idList->items.at(0).kind, ItemKind::FileEntry);
    EXPECT_EQ(file.idList->items.at(0).text, "\u0416x");
}

TEST(ShellLinkFile, ReadsLocalLinkInformation) {
    samples::Link link;
    link.info.emplace();
    link.info->volume.emplace();
    link.info->localBasePath = "C:\\Caf\xE9";
    link.info->suffix = "a\\b.txt";
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.linkInfo);
    EXPECT_EQ(file.linkInfo->localBasePath, "C:\\Caf\u00E9");
    EXPECT_EQ(file.linkInfo->commonPathSuffix, "a\\b.txt");
    EXPECT_EQ(file.linkInfo->netName, "");
    EXPECT_EQ(file.linkInfo->deviceName, "");
}

TEST(ShellLinkFile, PrefersTheUnicodeFormsOfLinkInformation) {
    samples::Link link;
    link.info.emplace();
    link.info->volume.emplace();
    link.info->localBasePath = "C:\\?";
    link.info->suffix = "?.txt";
    link.info->unicodeLocalBasePath = "C:\\\u0416";
    link.info->unicodeSuffix = "\u0418.txt";
    link.info->network.emplace();
    link.info->network->share = "\\\\?\\?";
    link.info->network->device = "Z:";
    link.info->network->unicodeShare = "\\\\\u0421\\\u0414";
    link.info->network->unicodeDevice = "Y:";
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.linkInfo);
    EXPECT_EQ(file.linkInfo->localBasePath, "C:\\\u0416");
    EXPECT_EQ(file.linkInfo->commonPathSuffix, "\u0418.txt");
    EXPECT_EQ(file.linkInfo->netName, "\\\\\u0421\\\u0414");
    EXPECT_EQ(file.linkInfo->deviceName, "Y:");
}

TEST(ShellLinkFile, TakesTheSingleByteFormWhereTheUnicodeOneIsEmpty) {
    samples::Link link = LocalLink("C:\\a.txt");
    link.info->unicodeLocalBasePath = "";
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.linkInfo);
    EXPECT_EQ(file.linkInfo->localBasePath, "C:\\a.txt");
}

TEST(ShellLinkFile, ReadsNetworkLinkInformation) {
    samples::Link link;
    link.info.emplace();
    link.info->network.emplace();
    link.info->network->share = "\\\\server\\share";
    link.info->network->device = "Z:";
    link.info->suffix = "dir\\f.txt";
    const ShellLinkFile file = Read(link);
    ASSERT_TRUE(file.linkInfo);
    EXPECT_EQ(file.linkInfo->localBasePath, "");
    EXPECT_EQ(file.linkInfo->netName, "\\\\server\\share");
    EXPECT_EQ(file.linkInfo->deviceName, "Z:");
    EXPECT_EQ(file.linkInfo->commonPathSuffix, "dir\\f.txt");
}

TEST(ShellLinkFile, ReadsTheExtraDataInAnyCompany) {
    samples::Link link;
    link.environmentPath = "%windir%\\n.exe";
    link.iconEnvironmentPath = "%windir%\\i.ico";
    link.tracker = samples::LinkTracker{"machine"};
    link.specialFolder = samples::LinkSpecialFolder{5, 154};
    const ShellLinkFile file = Read(link);
    EXPECT_EQ(file.extra.environmentTarget, "%windir%\\n.exe");
    EXPECT_EQ(file.extra.environmentIcon, "%windir%\\i.ico");
    ASSERT_TRUE(file.extra.specialFolder);
    EXPECT_EQ(file.extra.specialFolder->csidl, 5U);
    EXPECT_EQ(file.extra.specialFolder->offset, 154U);
}

}  // namespace
}  // namespace ostrevin::lnk
