#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

#include "platform/volume/lnk/ShellLinkWriter.h"
#include "tests/lnk/LinkFixtures.h"

namespace ostrevin::lnk {
namespace {

Shortcut FullShortcut() {
    Shortcut shortcut;
    shortcut.target = "C:\\Program Files\\App\\app.exe";
    shortcut.arguments = "/open \"a b\"";
    shortcut.workingDirectory = "C:\\Program Files\\App";
    shortcut.description = "An application \u0416\U0001F600";
    shortcut.iconFile = "C:\\Program Files\\App\\app.ico";
    shortcut.iconIndex = -12;
    shortcut.showCommand = 3;
    shortcut.hotkey = 0x0641;
    return shortcut;
}

std::vector<std::byte> Write(const Shortcut& shortcut) {
    return WriteShellLink(shortcut).value_or(std::vector<std::byte>());
}

Shortcut ToFile(const std::string& target) {
    Shortcut shortcut;
    shortcut.target = target;
    return shortcut;
}

TEST(ShellLinkWriter, EveryValueReadsBack) {
    const Shortcut written = FullShortcut();
    const Shortcut read = ReadShortcut(Write(written));
    EXPECT_EQ(read.target, written.target);
    EXPECT_EQ(read.networkTarget, "");
    EXPECT_EQ(read.arguments, written.arguments);
    EXPECT_EQ(read.workingDirectory, written.workingDirectory);
    EXPECT_EQ(read.description, written.description);
    EXPECT_EQ(read.iconFile, written.iconFile);
    EXPECT_EQ(read.iconIndex, written.iconIndex);
    EXPECT_EQ(read.showCommand, written.showCommand);
    EXPECT_EQ(read.hotkey, written.hotkey);
}

TEST(ShellLinkWriter, AnEmptyShortcutReadsBackEmpty) {
    ASSERT_FALSE(Write({}).empty());
    const Shortcut read = ReadShortcut(Write({}));
    EXPECT_EQ(read.target, "");
    EXPECT_EQ(read.iconFile, "");
    EXPECT_EQ(read.showCommand, 1);
}

TEST(ShellLinkWriter, PathsOfEveryFormReadBack) {
    for (const std::string target :
         {"C:\\", "c:\\a", "C:\\a\\", "C:\\a\\\\b", "C:\\\u0418\u0432\u0430\u043D\\\u00E9\U0001F600.txt",
          "\\\\server", "\\\\server\\share", "\\\\server\\share\\", "\\\\server\\share\\a\\b.txt",
          "\\\\server\\share\\\\b", "\\\\server\\\\a", "\\\\\u0421\\\u0414\\\u0416.txt",
          "\\\\server\\share\\\u0416.txt", "relative.txt", "http://example.org/",
          "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}", "C:", "\\\\"}) {
        EXPECT_EQ(ReadShortcut(Write(ToFile(target))).target, target);
    }
}

TEST(ShellLinkWriter, ANetworkTargetIsItsOwnNetworkForm) {
    EXPECT_EQ(ReadShortcut(Write(ToFile("\\\\server\\share\\a.txt"))).networkTarget,
              "\\\\server\\share\\a.txt");
}

TEST(ShellLinkWriter, BothFormsOfAPathReadBack) {
    using Forms = std::pair<std::string, std::string>;
    for (const auto& [local, network] :
         {Forms("C:\\share\\dir\\a.txt", "\\\\pc\\share\\dir\\a.txt"),
          Forms("Z:\\a.txt", "\\\\pc\\share\\a.txt"), Forms("C:\\other.txt", "\\\\pc\\share\\a.txt"),
          Forms("C:\\share", "\\\\pc\\share"), Forms("odd", "\\\\pc\\share\\a.txt"),
          Forms("C:\\\u0416\\a.txt", "\\\\pc\\\u0416\\a.txt")}) {
        Shortcut shortcut = ToFile(local);
        shortcut.networkTarget = network;
        const Shortcut read = ReadShortcut(Write(shortcut));
        EXPECT_EQ(read.target, local);
        EXPECT_EQ(read.networkTarget, network);
    }
}

TEST(ShellLinkWriter, TheIdentifierListTellsTheSamePath) {
    const ShellHost host = TestHost();
    for (const std::string target : {"C:\\Docs\\a b.txt", "C:\\\u0416\\\u00E9.txt", "C:\\",
                                     "\\\\server\\share\\dir\\a.txt", "\\\\server"}) {
        auto link = ReadShellLink(Write(ToFile(target)), host.decodeAnsi);
        ASSERT_TRUE(link) << target;
        ASSERT_TRUE(link->idList) << target;
        link->linkInfo.reset();
        EXPECT_EQ(ResolveShortcut(*link, host).target, target);
    }
}

TEST(ShellLinkWriter, VariablesOfATargetAreExpandedWhenItIsRead) {
    EXPECT_EQ(ReadShortcut(Write(ToFile("%windir%\\n.exe"))).target, "C:\\WINDOWS\\n.exe");
}

TEST(ShellLinkWriter, WhatTheFormatCannotHoldIsRefused) {
    Shortcut shortcut;
    shortcut.description = std::string(65535, 'd');
    EXPECT_EQ(ReadShortcut(Write(shortcut)).description, shortcut.description);
    shortcut.description += 'd';
    EXPECT_FALSE(WriteShellLink(shortcut));

    EXPECT_EQ(ReadShortcut(Write(ToFile(std::string(259, 'r')))).target, std::string(259, 'r'));
    EXPECT_FALSE(WriteShellLink(ToFile(std::string(260, 'r'))));
    EXPECT_FALSE(WriteShellLink(ToFile("C:\\" + std::string(65536, 'p'))));
}

TEST(ShellLinkWriter, APathTooLongForTheListStandsInTheLinkInformation) {
    const std::string target = "C:\\" + std::string(40000, 'p');
    const auto link = ReadShellLink(Write(ToFile(target)), TestHost().decodeAnsi);
    ASSERT_TRUE(link);
    EXPECT_FALSE(link->idList);
    EXPECT_EQ(ResolveShortcut(*link, TestHost()).target, target);
}

// --- What an independent reader says of what was written.

struct ClosePipe {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

std::string OutputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, ClosePipe> pipe(popen(command.c_str(), "r"));
    std::string output;
    for (int c = pipe ? std::fgetc(pipe.get()) : EOF; c != EOF; c = std::fgetc(pipe.get())) {
        output += static_cast<char>(c);
    }
    return output;
}

/// What lnkinfo prints of the shortcut, each run of blanks as one.
std::string LnkInfo(const Shortcut& shortcut) {
    const auto file = std::filesystem::path(testing::TempDir()) /
                      (std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".lnk");
    const std::vector<std::byte> bytes = Write(shortcut);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    const std::string printed = OutputOf("LC_ALL=C.UTF-8 lnkinfo '" + file.string() + "' 2>&1");
    std::filesystem::remove(file);
    std::string text;
    for (const char c : printed) {
        const char blank = c == '\t' ? ' ' : c;
        if (blank != ' ' || !text.ends_with(' ')) {
            text += blank;
        }
    }
    return text;
}

class LnkInfoTest : public testing::Test {
  protected:
    void SetUp() override {
        if (OutputOf("command -v lnkinfo").empty()) {
            GTEST_SKIP() << "lnkinfo is not installed";
        }
    }
};

void ExpectLine(const std::string& output, const std::string& line) {
    EXPECT_NE(output.find(' ' + line + '\n'), std::string::npos) << "no \"" << line << "\" in\n" << output;
}

TEST_F(LnkInfoTest, ReadsALocalShortcut) {
    Shortcut shortcut = FullShortcut();
    shortcut.description = "An application \u0416";  // lnkinfo prints surrogates as other characters
    const std::string output = LnkInfo(shortcut);
    ExpectLine(output, "Local path : " + shortcut.target);
    ExpectLine(output, "Command line arguments : " + shortcut.arguments);
    ExpectLine(output, "Working directory : " + shortcut.workingDirectory);
    ExpectLine(output, "Description : " + shortcut.description);
    ExpectLine(output, "Icon location : " + shortcut.iconFile);
    ExpectLine(output, "Icon index : -12");
    ExpectLine(output, "Shell folder name : My Computer");
    ExpectLine(output, "Volume name : C:\\");
    ExpectLine(output, "Long name : Program Files");
    ExpectLine(output, "Long name : App");
    ExpectLine(output, "Long name : app.exe");
    ExpectLine(output, "Number of items : 5");
}

TEST_F(LnkInfoTest, ReadsAShortcutWithUnicodePath) {
    const std::string output = LnkInfo(ToFile("C:\\\u0418\u0432\u0430\u043D\\\u0416.txt"));
    ExpectLine(output, "Local path : C:\\\u0418\u0432\u0430\u043D\\\u0416.txt");
    ExpectLine(output, "Long name : \u0418\u0432\u0430\u043D");
    ExpectLine(output, "Long name : \u0416.txt");
}

TEST_F(LnkInfoTest, ReadsANetworkShortcut) {
    const std::string output = LnkInfo(ToFile("\\\\server\\share\\dir\\a.txt"));
    ExpectLine(output, "Network path : \\\\server\\share\\dir\\a.txt");
    ExpectLine(output, "Long name : dir");
    ExpectLine(output, "Long name : a.txt");
}

TEST_F(LnkInfoTest, ReadsAShortcutWithVariables) {
    ExpectLine(LnkInfo(ToFile("%windir%\\n.exe")), "Environment variables location : %windir%\\n.exe");
}

}  // namespace
}  // namespace ostrevin::lnk
