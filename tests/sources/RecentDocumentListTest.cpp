#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "sources/RecentDocumentList.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

constexpr char kFolder[] = "C:\\Documents and Settings\\anna\\Recent";

using Entries = std::vector<std::pair<std::string, std::string>>;

class RecentDocumentListTest : public testing::Test {
  protected:
    MemoryFile& AddFile(const std::string& name) { return platform.AddFile(kFolder + ("\\" + name)); }
    MemoryFile& AddShortcut(const std::string& name, const std::string& target) {
        MemoryShortcut shortcut;
        shortcut.target = target;
        return platform.AddShortcut(kFolder + ("\\" + name), shortcut);
    }
    Entries Load(bool sort = false) {
        RecentDocumentList list(platform);
        loaded = list.LoadRecentDocuments(kFolder);
        if (sort) {
            list.Sort();
        }
        Entries entries;
        for (std::int32_t i = 0; i < list.Count(); ++i) {
            entries.emplace_back(list.RecentDocument(i), list.RecentDocumentPath(i));
        }
        return entries;
    }

    MemoryPlatform platform;
    bool loaded = false;
};

TEST_F(RecentDocumentListTest, ListsShortcutsWithTheirTargets) {
    AddShortcut("b.doc.lnk", "C:\\b.doc");
    AddShortcut("a.txt.lnk", "C:\\z\\a.txt");
    EXPECT_EQ(Load(), (Entries{{"b.doc.lnk", "C:\\b.doc"}, {"a.txt.lnk", "C:\\z\\a.txt"}}))
        << "in the order of the listing";
    EXPECT_TRUE(loaded);
}

TEST_F(RecentDocumentListTest, AFileThatIsNoShortcutGetsTheTargetBeforeIt) {
    AddShortcut("a.lnk", "C:\\b.txt");
    AddFile("notes.txt");
    AddFile("more.txt");
    AddShortcut("c.lnk", "C:\\c.txt");
    EXPECT_EQ(Load(), (Entries{{"a.lnk", "C:\\b.txt"},
                               {"notes.txt", "C:\\b.txt"},
                               {"more.txt", "C:\\b.txt"},
                               {"c.lnk", "C:\\c.txt"}}));
}

TEST_F(RecentDocumentListTest, AFileThatComesFirstGetsNone) {
    AddFile("notes.txt");
    AddShortcut("a.lnk", "C:\\b.txt");
    EXPECT_EQ(Load(), (Entries{{"notes.txt", ""}, {"a.lnk", "C:\\b.txt"}}));
}

TEST_F(RecentDocumentListTest, AShortcutThatCannotBeLoadedCountsAsNone) {
    AddShortcut("a.lnk", "C:\\a.txt");
    AddShortcut("locked.lnk", "C:\\locked.txt").readable = false;
    EXPECT_EQ(Load(), (Entries{{"a.lnk", "C:\\a.txt"}, {"locked.lnk", "C:\\a.txt"}}));
}

TEST_F(RecentDocumentListTest, AShortcutWithoutATargetHasAnEmptyOne) {
    AddShortcut("a.lnk", "C:\\a.txt");
    AddShortcut("nothing.lnk", "");
    EXPECT_EQ(Load(), (Entries{{"a.lnk", "C:\\a.txt"}, {"nothing.lnk", ""}}));
}

TEST_F(RecentDocumentListTest, AFailureBehindTheTargetDoesNotMatter) {
    AddShortcut("a.lnk", "C:\\a.txt");
    platform.Fail("GetWorkingDirectory");
    EXPECT_EQ(Load(), (Entries{{"a.lnk", "C:\\a.txt"}}));
}

TEST_F(RecentDocumentListTest, ListsOrdinaryFilesOnly) {
    AddFile("desktop.ini").attributes = kAttributeHidden | kAttributeSystem;
    AddShortcut("hidden.lnk", "C:\\hidden").attributes = kAttributeHidden;
    AddShortcut("system.lnk", "C:\\system").attributes = kAttributeSystem;
    AddShortcut("readonly.lnk", "C:\\readonly").attributes = kAttributeReadOnly;
    platform.AddFolder(std::string(kFolder) + "\\folder.lnk");
    AddFile("notes.txt");
    EXPECT_EQ(Load(), (Entries{{"readonly.lnk", "C:\\readonly"}, {"notes.txt", "C:\\readonly"}}))
        << "those that are not listed are not read either";
}

TEST_F(RecentDocumentListTest, CutsLongTargets) {
    AddShortcut("a.lnk", std::string(300, 'x'));
    EXPECT_EQ(Load(), (Entries{{"a.lnk", std::string(259, 'x')}}));
}

TEST_F(RecentDocumentListTest, AnEmptyOrMissingFolderGivesNothing) {
    EXPECT_EQ(Load(), Entries{});
    EXPECT_FALSE(loaded);
    platform.AddFolder(kFolder);
    EXPECT_EQ(Load(), Entries{});
    EXPECT_FALSE(loaded);
}

TEST_F(RecentDocumentListTest, SortsByTargetAndMovesTheNamesWithIt) {
    AddShortcut("1.lnk", "C:\\b");
    AddShortcut("2.lnk", "C:\\a");
    AddShortcut("3.lnk", "C:\\B");
    EXPECT_EQ(Load(true), (Entries{{"3.lnk", "C:\\B"}, {"2.lnk", "C:\\a"}, {"1.lnk", "C:\\b"}}));
}

TEST_F(RecentDocumentListTest, IndexesOutOfRangeAreEmpty) {
    AddShortcut("a.lnk", "C:\\a");
    RecentDocumentList list(platform);
    list.LoadRecentDocuments(kFolder);
    EXPECT_EQ(list.RecentDocument(0), "a.lnk");
    for (const std::int32_t index : {-1, list.Count()}) {
        EXPECT_EQ(list.RecentDocument(index), "");
        EXPECT_EQ(list.RecentDocumentPath(index), "");
    }
}

TEST_F(RecentDocumentListTest, ASecondLoadAppendsAndStartsWithoutATarget) {
    AddFile("notes.txt");
    AddShortcut("a.lnk", "C:\\a");
    RecentDocumentList list(platform);
    list.LoadRecentDocuments(kFolder);
    list.LoadRecentDocuments(kFolder);
    ASSERT_EQ(list.Count(), 4);
    EXPECT_EQ(list.RecentDocumentPath(2), "");
}

}  // namespace
}  // namespace ostrevin
