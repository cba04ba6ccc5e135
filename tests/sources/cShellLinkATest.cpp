#include <gtest/gtest.h>
#include <string>

#include "sources/cShellLinkA.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

MemoryShortcut Whole(const std::string& target) {
    return {target,
            "",
            "C:\\Work",
            "/a \"b\"",
            "What it is",
            "C:\\icons.dll",
            -7,
            /*showCommand=*/3,
            0x0641};
}

ShortcutFields Fields() {
    return {"C:\\b.txt", "/a", "C:\\Work", "What it is", "C:\\icons.dll", 5, 7, 0x0641};
}

class ShortcutTest : public testing::Test {
  protected:
    MemoryPlatform platform;
    cShellLinkA link{platform};
};

TEST_F(ShortcutTest, ReadsAllMembers) {
    platform.AddShortcut("C:\\a.lnk", Whole("C:\\b.txt"));
    EXPECT_TRUE(link.GetLinkInfo("C:\\a.lnk"));
    EXPECT_EQ(link.ExeName(), "C:\\b.txt");
    EXPECT_EQ(link.WorkingDir(), "C:\\Work");
    EXPECT_EQ(link.ExeArgs(), "/a \"b\"");
    EXPECT_EQ(link.Description(), "What it is");
    EXPECT_EQ(link.IconFile(), "C:\\icons.dll");
    EXPECT_EQ(link.IconIndex(), -7);
    EXPECT_EQ(link.ShowCommand(), 3);
    EXPECT_EQ(link.Hotkey(), 0x0641);
}

TEST_F(ShortcutTest, PrefersTheNetworkForm) {
    MemoryShortcut shortcut = Whole("Z:\\b.txt");
    shortcut.networkTarget = "\\\\server\\share\\b.txt";
    platform.AddShortcut("C:\\a.lnk", shortcut);
    EXPECT_TRUE(link.GetLinkInfo("C:\\a.lnk"));
    EXPECT_EQ(link.ExeName(), "\\\\server\\share\\b.txt");
}

TEST_F(ShortcutTest, TextsHaveRoomFor259Characters) {
    MemoryShortcut shortcut = Whole(std::string(300, 't'));
    shortcut.workingDirectory = std::string(259, 'w');
    shortcut.description = std::string(260, 'd');
    platform.AddShortcut("C:\\a.lnk", shortcut);
    EXPECT_TRUE(link.GetLinkInfo("C:\\a.lnk"));
    EXPECT_EQ(link.ExeName(), std::string(259, 't'));
    EXPECT_EQ(link.WorkingDir(), std::string(259, 'w'));
    EXPECT_EQ(link.Description(), std::string(259, 'd'));
}

TEST_F(ShortcutTest, TextsEndAtTheirFirstNul) {
    MemoryShortcut shortcut = Whole("C:\\b.txt");
    shortcut.arguments = std::string("one\0two", 7);
    platform.AddShortcut("C:\\a.lnk", shortcut);
    EXPECT_TRUE(link.GetLinkInfo("C:\\a.lnk"));
    EXPECT_EQ(link.ExeArgs(), "one");
}

TEST_F(ShortcutTest, NoPathNamesNoShortcut) {
    EXPECT_FALSE(link.GetLinkInfo(""));
    EXPECT_EQ(link.ExeName(), "");
}

TEST_F(ShortcutTest, WhatCannotBeLoadedLeavesAllMembers) {
    platform.AddShortcut("C:\\a.lnk", Whole("C:\\b.txt"));
    platform.AddFile("C:\\notes.txt");
    ASSERT_TRUE(link.GetLinkInfo("C:\\a.lnk"));
    EXPECT_FALSE(link.GetLinkInfo("C:\\notes.txt"));
    EXPECT_FALSE(link.GetLinkInfo("C:\\gone.lnk"));
    EXPECT_EQ(link.ExeName(), "C:\\b.txt");
    EXPECT_EQ(link.ShowCommand(), 3);
}

TEST_F(ShortcutTest, AFailureKeepsTheMembersBehindIt) {
    platform.AddShortcut("C:\\a.lnk", Whole("C:\\b.txt"));
    MemoryShortcut other = Whole("C:\\other.txt");
    other.workingDirectory = "C:\\Other";
    other.arguments = "other";
    other.description = "other";
    other.hotkey = 1;
    other.iconIndex = 1;
    other.showCommand = 1;
    platform.AddShortcut("C:\\other.lnk", other);
    ASSERT_TRUE(link.GetLinkInfo("C:\\a.lnk"));
    platform.Fail("GetDescription");
    EXPECT_FALSE(link.GetLinkInfo("C:\\other.lnk"));
    EXPECT_EQ(link.ExeName(), "C:\\other.txt");
    EXPECT_EQ(link.WorkingDir(), "C:\\Other");
    EXPECT_EQ(link.ExeArgs(), "other");
    EXPECT_EQ(link.Description(), "What it is");
    EXPECT_EQ(link.Hotkey(), 0x0641);
    EXPECT_EQ(link.IconIndex(), -7);
    EXPECT_EQ(link.ShowCommand(), 3);
}

TEST_F(ShortcutTest, EveryReadMayFail) {
    for (const std::string call : {"Load", "GetPath", "GetWorkingDirectory", "GetArguments", "GetDescription",
                                   "GetHotkey", "GetIconLocation", "GetShowCmd"}) {
        MemoryPlatform host;
        host.AddShortcut("C:\\a.lnk", Whole("C:\\b.txt"));
        host.Fail(call);
        EXPECT_FALSE(cShellLinkA(host).GetLinkInfo("C:\\a.lnk")) << call;
    }
}

TEST_F(ShortcutTest, WritesAShortcutThatReadsBackEqual) {
    platform.AddFolder("C:\\Desktop");
    EXPECT_TRUE(link.CreateLink("C:\\Desktop\\new.lnk", Fields()));
    EXPECT_EQ(link.ExeName(), "C:\\b.txt") << "the members are those of the last shortcut written, too";
    cShellLinkA reader(platform);
    ASSERT_TRUE(reader.GetLinkInfo("C:\\Desktop\\new.lnk"));
    EXPECT_EQ(reader.ExeName(), "C:\\b.txt");
    EXPECT_EQ(reader.ExeArgs(), "/a");
    EXPECT_EQ(reader.WorkingDir(), "C:\\Work");
    EXPECT_EQ(reader.Description(), "What it is");
    EXPECT_EQ(reader.IconFile(), "C:\\icons.dll");
    EXPECT_EQ(reader.IconIndex(), 5);
    EXPECT_EQ(reader.ShowCommand(), 7);
    EXPECT_EQ(reader.Hotkey(), 0x0641);
}

TEST_F(ShortcutTest, EveryPartOfWritingMayFail) {
    for (const std::string call : {"SetPath", "SetIconLocation", "SetShowCmd", "SetHotkey",
                                   "SetWorkingDirectory", "SetArguments", "SetDescription", "Save"}) {
        MemoryPlatform host;
        host.AddFolder("C:\\Desktop");
        host.Fail(call);
        cShellLinkA failing(host);
        EXPECT_FALSE(failing.CreateLink("C:\\Desktop\\new.lnk", Fields())) << call;
        EXPECT_EQ(failing.ExeName(), "");
        EXPECT_EQ(host.Find("C:\\Desktop\\new.lnk"), nullptr);
    }
    EXPECT_FALSE(link.CreateLink("C:\\none\\new.lnk", Fields()));
}

TEST_F(ShortcutTest, TellsSystemFolders) {
    platform.specialFolders[8] = "C:\\Recent";
    EXPECT_EQ(link.GetSystemFolderPath(8), "C:\\Recent");
    EXPECT_EQ(link.GetSystemFolderPath(9), "");
}

}  // namespace
}  // namespace ostrevin
