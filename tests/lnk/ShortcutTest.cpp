#include <gtest/gtest.h>
#include <utility>

#include "platform/volume/lnk/Shortcut.h"
#include "tests/lnk/LinkFixtures.h"

namespace ostrevin::lnk {
namespace {

const std::vector<std::byte> kNetworkRoot = RawItem({0x1F, 0x58, 0x60, 0x2C, 0x8D, 0x20, 0xEA, 0x3A, 0x69,
                                                     0x10, 0xA2, 0xD7, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D});
const std::vector<std::byte> kMyDocumentsRoot =
    RawItem({0x1F, 0x48, 0xBA, 0x8F, 0x0D, 0x45, 0x25, 0xAD, 0xD0, 0x11, 0x98, 0xA8, 0x08, 0x00, 0x36, 0x1B,
             0x11, 0x03});

std::vector<std::byte> FileItem(const std::string& name) {
    samples::FileItem file;
    file.name = name;
    return samples::FileEntryItem(file);
}

samples::LinkInfo NetworkInfo() {
    samples::LinkInfo info;
    info.network.emplace();
    info.network->share = "\\\\server\\share";
    info.suffix = "dir\\f.txt";
    return info;
}

TEST(Shortcut, TheTargetIsBasePathAndSuffix) {
    samples::Link link = LocalLink("C:\\Docs\\a.txt");
    EXPECT_EQ(TargetOf(link), "C:\\Docs\\a.txt");
    link.info->localBasePath = "C:\\Docs";
    link.info->suffix = "b.txt";
    EXPECT_EQ(TargetOf(link), "C:\\Docs\\b.txt");
    link.info->localBasePath = "C:\\Docs\\";
    EXPECT_EQ(TargetOf(link), "C:\\Docs\\b.txt");
}

TEST(Shortcut, LinkInformationGoesBeforeTheIdentifierList) {
    samples::Link link = LocalLink("C:\\Docs\\a.txt");
    link.info->localBasePath = "D:\\moved.txt";
    EXPECT_EQ(TargetOf(link), "D:\\moved.txt");
    link.extraFlags = kForceNoLinkInfo;
    EXPECT_EQ(TargetOf(link), "C:\\Docs\\a.txt");
}

TEST(Shortcut, TheIdentifierListAloneTellsThePath) {
    samples::Link link;
    link.items = samples::ItemsForPath("C:\\Documents and Settings\\\u0418\u0432\u0430\u043D\\a.txt", {});
    EXPECT_EQ(TargetOf(link), "C:\\Documents and Settings\\\u0418\u0432\u0430\u043D\\a.txt");
    link.items.resize(2);
    EXPECT_EQ(TargetOf(link), "C:\\");
    link.items.resize(1);
    EXPECT_EQ(TargetOf(link), "") << "My Computer has no path";
}

TEST(Shortcut, AnIdentifierListLeadsThroughTheNetwork) {
    samples::Link link;
    link.items = {kNetworkRoot,
                  RawItem({0x47, 0, 2}, "Entire Network"),
                  RawItem({0x46, 0, 2}, "Provider"),
                  RawItem({0x42, 1, 0}, "\\\\server"),
                  RawItem({0xC3, 1, 0}, "\\\\server\\share"),
                  FileItem("a.txt")};
    EXPECT_EQ(TargetOf(link), "\\\\server\\share\\a.txt");
    link.items.resize(3);
    EXPECT_EQ(TargetOf(link), "") << "a provider has no path";
}

TEST(Shortcut, FilesOfTheDesktopAndOfMyDocumentsStandInTheirFolders) {
    samples::Link link;
    link.items = {FileItem("a.txt")};
    EXPECT_EQ(TargetOf(link), "C:\\Home\\16\\a.txt");
    link.items = {kMyDocumentsRoot, FileItem("sub"), FileItem("a.txt")};
    EXPECT_EQ(TargetOf(link), "C:\\Home\\5\\sub\\a.txt");
}

TEST(Shortcut, WhatIsNoFileHasNoPath) {
    samples::Link link;
    link.items = {RawItem({0x1F, 0x68, 0x80, 0x53, 0x1C, 0x87, 0xA0, 0x42, 0x69, 0x10, 0xA2, 0xEA, 0x08, 0x00,
                           0x2B, 0x30, 0x30, 0x9D}),
                  RawItem({0x61, 0x80, 0, 0, 0, 0, 'h', 0, 't', 0, 0})};
    EXPECT_EQ(TargetOf(link), "") << "a web page";
    link.items = {samples::ComputerItem(), RawItem({0x2E, 0x80}), FileItem("a.txt")};
    EXPECT_EQ(TargetOf(link), "") << "a file in a folder that is not known";
    link.items = {samples::ComputerItem(), samples::DriveItem("C:\\"), FileItem("a.zip"), RawItem({0x52, 0})};
    EXPECT_EQ(TargetOf(link), "") << "a file in an archive";
}

TEST(Shortcut, ASpecialFolderReplacesTheItemsThatLeadToIt) {
    samples::Link link;
    link.items = samples::ItemsForPath("C:\\Old\\My Music\\Sample\\a.mp3", {});
    std::uint32_t offset = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        offset += static_cast<std::uint32_t>(link.items[i].size() + 2);
    }
    link.specialFolder = samples::LinkSpecialFolder{53, offset};
    EXPECT_EQ(TargetOf(link), "C:\\Home\\53\\Sample\\a.mp3");

    link.specialFolder->offset = offset + 1;
    EXPECT_EQ(TargetOf(link), "C:\\Old\\My Music\\Sample\\a.mp3") << "no item begins there";

    link.items.resize(4);
    link.specialFolder->offset = offset;
    EXPECT_EQ(TargetOf(link), "C:\\Home\\53") << "the folder itself";
}

TEST(Shortcut, WithoutSpecialFoldersTheListStandsForItself) {
    samples::Link link;
    link.items = samples::ItemsForPath("C:\\Old\\a.txt", {});
    link.specialFolder = samples::LinkSpecialFolder{
        5, static_cast<std::uint32_t>(link.items[0].size() + link.items[1].size() + 4)};
    ShellHost host = TestHost();
    host.specialFolderPath = {};
    const auto file = ReadShellLink(samples::WriteLink(link), host.decodeAnsi);
    ASSERT_TRUE(file);
    EXPECT_EQ(ResolveShortcut(*file, host).target, "C:\\Old\\a.txt");
}

TEST(Shortcut, ANetworkTargetHasBothForms) {
    samples::Link link = LocalLink("C:\\share");
    link.info->network = NetworkInfo().network;
    link.info->suffix = "dir\\f.txt";
    const Shortcut shortcut = ReadShortcut(samples::WriteLink(link));
    EXPECT_EQ(shortcut.target, "C:\\share\\dir\\f.txt");
    EXPECT_EQ(shortcut.networkTarget, "\\\\server\\share\\dir\\f.txt");
}

TEST(Shortcut, AMappedDriveIsALocalForm) {
    samples::Link link;
    link.info = NetworkInfo();
    link.info->network->device = "Z:";
    EXPECT_EQ(TargetOf(link), "Z:\\dir\\f.txt");
    link.info->suffix = "";
    EXPECT_EQ(TargetOf(link), "Z:\\");
}

TEST(Shortcut, ATargetThatIsOnlyOnTheNetworkHasNoOtherForm) {
    samples::Link link;
    link.info = NetworkInfo();
    const Shortcut shortcut = ReadShortcut(samples::WriteLink(link));
    EXPECT_EQ(shortcut.target, "\\\\server\\share\\dir\\f.txt");
    EXPECT_EQ(shortcut.networkTarget, "\\\\server\\share\\dir\\f.txt");
}

TEST(Shortcut, TheEnvironmentBlockTellsThePathWhenNothingElseDoes) {
    samples::Link link;
    link.environmentPath = "%windir%\\notepad.exe";
    EXPECT_EQ(TargetOf(link), "C:\\WINDOWS\\notepad.exe");
    link.items = samples::ItemsForPath("C:\\n.exe", {});
    EXPECT_EQ(TargetOf(link), "C:\\n.exe");
}

TEST(Shortcut, VariablesStayWhereNobodyExpandsThem) {
    samples::Link link;
    link.environmentPath = "%windir%\\notepad.exe";
    ShellHost host = TestHost();
    host.expandVariables = {};
    const auto file = ReadShellLink(samples::WriteLink(link), host.decodeAnsi);
    ASSERT_TRUE(file);
    EXPECT_EQ(ResolveShortcut(*file, host).target, "%windir%\\notepad.exe");
}

TEST(Shortcut, TheStringsStandAsTheyWereStored) {
    samples::Link link;
    link.description = "@%windir%\\x.dll,-1";
    link.workingFolder = "%windir%";
    link.arguments = "%windir%";
    link.iconFile = "%windir%\\x.ico";
    link.iconEnvironmentPath = "%windir%\\y.ico";
    link.iconIndex = 3;
    link.showCommand = 3;
    link.hotKey = 0x0630;
    Shortcut shortcut = ReadShortcut(samples::WriteLink(link));
    EXPECT_EQ(shortcut.description, "@%windir%\\x.dll,-1");
    EXPECT_EQ(shortcut.workingDirectory, "%windir%");
    EXPECT_EQ(shortcut.arguments, "%windir%");
    EXPECT_EQ(shortcut.iconFile, "%windir%\\x.ico");
    EXPECT_EQ(shortcut.iconIndex, 3);
    EXPECT_EQ(shortcut.showCommand, 3);
    EXPECT_EQ(shortcut.hotkey, 0x0630);

    link.iconFile.reset();
    shortcut = ReadShortcut(samples::WriteLink(link));
    EXPECT_EQ(shortcut.iconFile, "C:\\WINDOWS\\y.ico");
}

}  // namespace
}  // namespace ostrevin::lnk
