// The shortcut object of the shell against our own reader and writer of its files.

#include <gtest/gtest.h>
#include <span>
#include <string>

#include "platform/Text.h"
#include "platform/volume/lnk/ShellLinkWriter.h"
#include "platform/volume/lnk/Shortcut.h"
#include "platform/windows/WindowsPlatform.h"
#include "sources/cShellLinkA.h"
#include "tests/support/ScratchFolder.h"
#include "tools/writers/LinkWriter.h"

namespace ostrevin {
namespace {

// The only one that Wine takes out of a file.
constexpr std::int32_t kNormalWindow = 1;

class WindowsShortcut : public testing::Test {
  protected:
    lnk::Shortcut ReadBack(const std::string& name) {
        lnk::ShellHost host;
        host.decodeAnsi = [this](std::string_view bytes) { return platform.DecodeAnsi(bytes); };
        host.specialFolderPath = [this](int csidl) { return platform.SpecialFolderPath(csidl); };
        const std::string bytes = folder.Read(name);
        const auto file = lnk::ReadShellLink(std::as_bytes(std::span(bytes)), host.decodeAnsi);
        EXPECT_TRUE(file);
        return file ? lnk::ResolveShortcut(*file, host) : lnk::Shortcut();
    }
    void Write(const std::string& name, std::span<const std::byte> bytes) const {
        folder.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }

    WindowsPlatform platform;
    ScratchFolder folder;
    cShellLinkA link{platform};
};

TEST_F(WindowsShortcut, OurReaderReadsWhatTheShellWrote) {
    const ShortcutFields fields{"C:\\windows\\notepad.exe",
                                "/a \"b\"",
                                "C:\\windows",
                                "A caf\u00E9",
                                "C:\\windows\\explorer.exe",
                                5,
                                7,
                                0x0641};
    ASSERT_TRUE(link.CreateLink(folder.Path("a.lnk"), fields));
    const lnk::Shortcut read = ReadBack("a.lnk");
    EXPECT_TRUE(EqualNoCase(read.target, fields.target)) << read.target;
    EXPECT_EQ(read.arguments, fields.arguments);
    EXPECT_EQ(read.workingDirectory, fields.workingDir);
    EXPECT_EQ(read.description, fields.description);
    EXPECT_EQ(read.iconFile, fields.iconFile);
    EXPECT_EQ(read.iconIndex, fields.iconIndex);
    EXPECT_EQ(read.showCommand, fields.showCommand);
    EXPECT_EQ(read.hotkey, fields.hotkey);
}

TEST_F(WindowsShortcut, TheShellReadsWhatItWrote) {
    ShortcutFields fields;
    fields.target = "C:\\windows\\notepad.exe";
    fields.arguments = "/a";
    fields.workingDir = "C:\\windows";
    fields.description = "What";
    fields.iconFile = "C:\\i.dll";
    fields.iconIndex = -7;
    fields.showCommand = kNormalWindow;
    fields.hotkey = 0x0641;
    ASSERT_TRUE(link.CreateLink(folder.Path("a.lnk"), fields));
    cShellLinkA reader{platform};
    ASSERT_TRUE(reader.GetLinkInfo(folder.Path("a.lnk")));
    EXPECT_TRUE(EqualNoCase(reader.ExeName(), fields.target)) << reader.ExeName();
    EXPECT_EQ(reader.ExeArgs(), fields.arguments);
    EXPECT_EQ(reader.WorkingDir(), fields.workingDir);
    EXPECT_EQ(reader.Description(), fields.description);
    EXPECT_EQ(reader.IconFile(), fields.iconFile);
    EXPECT_EQ(reader.IconIndex(), fields.iconIndex);
    EXPECT_EQ(reader.ShowCommand(), fields.showCommand);
    EXPECT_EQ(reader.Hotkey(), fields.hotkey);
}

TEST_F(WindowsShortcut, GivesTheShowCommandThatWasSet) {
    const std::unique_ptr<ShellLink> object = platform.CreateShellLink();
    std::int32_t showCommand = 0;
    ASSERT_TRUE(object->SetShowCmd(3));
    ASSERT_TRUE(object->GetShowCmd(showCommand));
    EXPECT_EQ(showCommand, 3);
}

TEST_F(WindowsShortcut, TakesNoMoreOfATextThanTheBufferHolds) {
    const std::unique_ptr<ShellLink> object = platform.CreateShellLink();
    ASSERT_TRUE(object->SetArguments(std::string(300, 'a')));
    TextBuffer arguments{260, {}};
    ASSERT_TRUE(object->GetArguments(arguments));
    EXPECT_EQ(arguments.text, std::string(259, 'a'));
}

TEST_F(WindowsShortcut, TheShellReadsWhatOurWriterWrote) {
    lnk::Shortcut written;
    written.target = "C:\\windows\\notepad.exe";
    written.arguments = "/open \"a b\"";
    written.workingDirectory = "C:\\windows";
    written.description = "An application";
    written.iconFile = "C:\\windows\\app.ico";
    written.iconIndex = -12;
    written.showCommand = kNormalWindow;
    written.hotkey = 0x0641;
    Write("a.lnk", lnk::WriteShellLink(written).value());
    ASSERT_TRUE(link.GetLinkInfo(folder.Path("a.lnk")));
    EXPECT_TRUE(EqualNoCase(link.ExeName(), written.target)) << link.ExeName();
    EXPECT_EQ(link.ExeArgs(), written.arguments);
    EXPECT_EQ(link.WorkingDir(), written.workingDirectory);
    EXPECT_EQ(link.Description(), written.description);
    EXPECT_EQ(link.IconFile(), written.iconFile);
    EXPECT_EQ(link.IconIndex(), written.iconIndex);
    EXPECT_EQ(link.ShowCommand(), written.showCommand);
    EXPECT_EQ(link.Hotkey(), written.hotkey);
}

TEST_F(WindowsShortcut, TheShellReadsAFileOfTheIndependentWriter) {
    samples::Link written;
    written.items = samples::ItemsForPath("C:\\windows\\notepad.exe", {});
    written.info.emplace();
    written.info->volume.emplace();
    written.info->localBasePath = "C:\\windows\\notepad.exe";
    written.arguments = "/x";
    Write("a.lnk", samples::WriteLink(written));
    ASSERT_TRUE(link.GetLinkInfo(folder.Path("a.lnk")));
    EXPECT_TRUE(EqualNoCase(link.ExeName(), "C:\\windows\\notepad.exe")) << link.ExeName();
    EXPECT_EQ(link.ExeArgs(), "/x");
}

TEST_F(WindowsShortcut, WhatIsNoShortcutLeavesTheMembersAsTheyWere) {
    ASSERT_TRUE(
        link.CreateLink(folder.Path("a.lnk"), {"C:\\windows\\notepad.exe", "/a", "", "", "", 0, 1, 0}));
    ASSERT_TRUE(link.GetLinkInfo(folder.Path("a.lnk")));
    folder.Write("notes.txt", "notes");
    EXPECT_FALSE(link.GetLinkInfo(folder.Path("notes.txt")));
    EXPECT_FALSE(link.GetLinkInfo(folder.Path("none.lnk")));
    EXPECT_FALSE(link.GetLinkInfo(""));
    EXPECT_TRUE(EqualNoCase(link.ExeName(), "C:\\windows\\notepad.exe"));
    EXPECT_EQ(link.ExeArgs(), "/a");
}

TEST_F(WindowsShortcut, IsNotSavedWhereNothingCanBeWritten) {
    EXPECT_FALSE(
        link.CreateLink(folder.Path("none\\a.lnk"), {"C:\\windows\\notepad.exe", "", "", "", "", 0, 1, 0}));
}

TEST_F(WindowsShortcut, LiesAtAPathOutsideTheCodePage) {
    const std::string path = folder.Path("\u0416.lnk");
    ASSERT_TRUE(link.CreateLink(path, {"C:\\windows\\notepad.exe", "/a", "", "", "", 0, 1, 0}));
    EXPECT_TRUE(link.GetLinkInfo(path));
}

}  // namespace
}  // namespace ostrevin
