#include <gtest/gtest.h>
#include <map>

#include "platform/volume/lnk/FileShellLink.h"
#include "tests/lnk/LinkFixtures.h"

namespace ostrevin::lnk {
namespace {

/// Files in memory, and shortcut objects over them.
class FileShellLinkTest : public testing::Test {
  protected:
    FileShellLink Open() {
        return {[this](const std::string& path) -> std::optional<std::vector<std::byte>> {
                    const auto file = files_.find(path);
                    return file != files_.end() ? std::optional(file->second) : std::nullopt;
                },
                [this](const std::string& path, std::span<const std::byte> bytes) {
                    files_[path].assign(bytes.begin(), bytes.end());
                    return !readOnly_;
                },
                TestHost()};
    }

    std::map<std::string, std::vector<std::byte>> files_;
    bool readOnly_ = false;
};

TextBuffer Path(FileShellLink& link, std::uint32_t flags, std::uint32_t capacity = 260) {
    TextBuffer buffer{capacity, "before"};
    EXPECT_TRUE(link.GetPath(buffer, flags));
    return buffer;
}

samples::Link FullLink() {
    samples::Link link = LocalLink("C:\\share\\a.txt");
    link.info->localBasePath = "C:\\share";
    link.info->suffix = "a.txt";
    link.info->network.emplace();
    link.info->network->share = "\\\\pc\\share";
    link.description = "about";
    link.workingFolder = "C:\\share";
    link.arguments = "/a";
    link.iconFile = "i.ico";
    link.iconIndex = -3;
    link.showCommand = 7;
    link.hotKey = 0x0541;
    return link;
}

void ExpectFullLink(FileShellLink& link) {
    EXPECT_EQ(Path(link, ShellLink::kPathUnc).text, "\\\\pc\\share\\a.txt");
    EXPECT_EQ(Path(link, 0).text, "C:\\share\\a.txt");
    TextBuffer text{260, {}};
    EXPECT_TRUE(link.GetDescription(text));
    EXPECT_EQ(text.text, "about");
    EXPECT_TRUE(link.GetWorkingDirectory(text));
    EXPECT_EQ(text.text, "C:\\share");
    EXPECT_TRUE(link.GetArguments(text));
    EXPECT_EQ(text.text, "/a");
    std::int32_t number = 0;
    EXPECT_TRUE(link.GetIconLocation(text, number));
    EXPECT_EQ(text.text, "i.ico");
    EXPECT_EQ(number, -3);
    EXPECT_TRUE(link.GetShowCmd(number));
    EXPECT_EQ(number, 7);
    std::uint16_t hotkey = 0;
    EXPECT_TRUE(link.GetHotkey(hotkey));
    EXPECT_EQ(hotkey, 0x0541);
}

TEST_F(FileShellLinkTest, ANewOneHasTheDefaults) {
    FileShellLink link = Open();
    EXPECT_EQ(Path(link, ShellLink::kPathUnc).text, "");
    TextBuffer text{260, "before"};
    std::int32_t number = 5;
    std::uint16_t hotkey = 5;
    EXPECT_TRUE(link.GetIconLocation(text, number));
    EXPECT_EQ(text.text, "");
    EXPECT_EQ(number, 0);
    EXPECT_TRUE(link.GetShowCmd(number));
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(link.GetHotkey(hotkey));
    EXPECT_EQ(hotkey, 0);
}

TEST_F(FileShellLinkTest, AnswersWhatTheFileHolds) {
    files_["a.lnk"] = samples::WriteLink(FullLink());
    FileShellLink link = Open();
    ASSERT_TRUE(link.Load("a.lnk"));
    ExpectFullLink(link);
}

TEST_F(FileShellLinkTest, LoadReplacesEverything) {
    files_["a.lnk"] = samples::WriteLink(FullLink());
    files_["b.lnk"] = samples::WriteLink(LocalLink("C:\\b.txt"));
    FileShellLink link = Open();
    ASSERT_TRUE(link.Load("a.lnk"));
    ASSERT_TRUE(link.Load("b.lnk"));
    EXPECT_EQ(Path(link, ShellLink::kPathUnc).text, "C:\\b.txt");
    TextBuffer text{260, "before"};
    EXPECT_TRUE(link.GetArguments(text));
    EXPECT_EQ(text.text, "");
}

TEST_F(FileShellLinkTest, AFailingLoadChangesNothing) {
    files_["a.lnk"] = samples::WriteLink(FullLink());
    files_["notes.txt"] = std::vector<std::byte>(500, std::byte{'x'});
    files_["empty"] = {};
    FileShellLink link = Open();
    ASSERT_TRUE(link.Load("a.lnk"));
    EXPECT_FALSE(link.Load("notes.txt"));
    EXPECT_FALSE(link.Load("empty"));
    EXPECT_FALSE(link.Load("gone.lnk"));
    ExpectFullLink(link);
}

TEST_F(FileShellLinkTest, ALongPathIsCutTo259Characters) {
    const std::string path = "C:\\" + std::string(297, 'p');
    files_["a.lnk"] = samples::WriteLink(LocalLink(path));
    FileShellLink link = Open();
    ASSERT_TRUE(link.Load("a.lnk"));
    EXPECT_EQ(Path(link, 0).text, path.substr(0, 259));
    EXPECT_EQ(Path(link, 0, 301).text, path);
    EXPECT_EQ(Path(link, 0, 300).text, path.substr(0, 299));
}

TEST_F(FileShellLinkTest, TheBufferCountsUtf16AndNeverHoldsHalfACharacter) {
    FileShellLink link = Open();
    ASSERT_TRUE(link.SetPath("\u0416\U0001F600x"));
    EXPECT_EQ(Path(link, 0, 5).text, "\u0416\U0001F600x");
    EXPECT_EQ(Path(link, 0, 4).text, "\u0416\U0001F600");
    EXPECT_EQ(Path(link, 0, 3).text, "\u0416") << "one unit is left, the character needs two";
    EXPECT_EQ(Path(link, 0, 1).text, "");
    EXPECT_EQ(Path(link, 0, 0).text, "before") << "not even the NUL has room";
}

TEST_F(FileShellLinkTest, SavesWhatWasSet) {
    FileShellLink link = Open();
    EXPECT_TRUE(link.SetPath("C:\\share\\a.txt"));
    EXPECT_TRUE(link.SetDescription("about"));
    EXPECT_TRUE(link.SetWorkingDirectory("C:\\share"));
    EXPECT_TRUE(link.SetArguments("/a"));
    EXPECT_TRUE(link.SetIconLocation("i.ico", -3));
    EXPECT_TRUE(link.SetShowCmd(7));
    EXPECT_TRUE(link.SetHotkey(0x0541));
    ASSERT_TRUE(link.Save("new.lnk"));

    FileShellLink again = Open();
    ASSERT_TRUE(again.Load("new.lnk"));
    EXPECT_EQ(Path(again, ShellLink::kPathUnc).text, "C:\\share\\a.txt");
    EXPECT_TRUE(again.SetPath("unused"));
    ASSERT_TRUE(again.Load("new.lnk"));
    EXPECT_EQ(Path(again, 0).text, "C:\\share\\a.txt");
}

TEST_F(FileShellLinkTest, ALoadedOneSavesBothFormsOfItsPath) {
    files_["a.lnk"] = samples::WriteLink(FullLink());
    FileShellLink link = Open();
    ASSERT_TRUE(link.Load("a.lnk"));
    ASSERT_TRUE(link.Save("b.lnk"));
    FileShellLink again = Open();
    ASSERT_TRUE(again.Load("b.lnk"));
    ExpectFullLink(again);
    EXPECT_TRUE(again.SetPath("C:\\other.txt"));
    EXPECT_EQ(Path(again, ShellLink::kPathUnc).text, "C:\\other.txt")
        << "the network form was the old path's";
}

TEST_F(FileShellLinkTest, SaveFailsWhereTheFileCannotBeWritten) {
    readOnly_ = true;
    FileShellLink link = Open();
    EXPECT_FALSE(link.Save("new.lnk"));
    readOnly_ = false;
    EXPECT_TRUE(link.SetArguments(std::string(70000, 'a')));
    EXPECT_FALSE(link.Save("long.lnk"));
    EXPECT_EQ(files_.count("long.lnk"), 0U);
}

}  // namespace
}  // namespace ostrevin::lnk
