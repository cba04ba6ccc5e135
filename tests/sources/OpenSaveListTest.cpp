#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "sources/OpenSaveList.h"
#include "tests/support/Lists.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

constexpr char kSid[] = "S-1-5-21-1";
constexpr char kKey[] =
    "S-1-5-21-1\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU";

using Documents = std::vector<std::string>;

class OpenSaveListTest : public testing::Test {
  protected:
    static Documents DocumentsOf(const OpenSaveList& list) { return All(list, &OpenSaveList::Document); }
    /// The documents in the order in which they are read.
    Documents Load() {
        OpenSaveList list(platform);
        loaded = list.LoadOpenSaveList(kSid);
        return DocumentsOf(list);
    }

    MemoryPlatform platform;
    MemoryKey& key{platform.Root(kUsers).Key(kKey)};
    bool loaded = false;
};

TEST_F(OpenSaveListTest, ReadsKindByKindInTheOrderOfTheirUse) {
    key.Key("*").SetText("MRUList", "a").SetText("a", "C:\\all.txt");
    key.Key("txt").SetText("MRUList", "a").SetText("a", "C:\\a.txt");
    key.Key("doc").SetText("MRUList", "ba").SetText("a", "C:\\1.doc").SetText("b", "C:\\2.doc");
    EXPECT_EQ(Load(), (Documents{"C:\\2.doc", "C:\\1.doc", "C:\\a.txt"}));
    EXPECT_TRUE(loaded);
    OpenSaveList list(platform);
    list.LoadOpenSaveList(kSid);
    list.Sort();
    EXPECT_EQ(DocumentsOf(list), (Documents{"C:\\1.doc", "C:\\2.doc", "C:\\a.txt"}));
}

TEST_F(OpenSaveListTest, LeavesOutEveryKindThatBeginsWithAStar) {
    key.Key("*").SetText("MRUList", "a").SetText("a", "all");
    key.Key("*x").SetText("MRUList", "a").SetText("a", "starred");
    EXPECT_EQ(Load(), Documents{});
    EXPECT_TRUE(loaded);
}

TEST_F(OpenSaveListTest, ListsADocumentUnderEachOfItsKinds) {
    key.Key("doc").SetText("MRUList", "a").SetText("a", "same");
    key.Key("txt").SetText("MRUList", "a").SetText("a", "same");
    EXPECT_EQ(Load(), (Documents{"same", "same"}));
}

TEST_F(OpenSaveListTest, ALetterThatIsNamedAgainIsListedAgainWithoutBeingRead) {
    key.Key("doc").SetText("MRUList", "axabxab").SetText("a", "A").SetText("b", "B");
    const Documents expected = {"A", "A", "A", "B", "B", "A", "B"};
    EXPECT_EQ(Load(), expected) << "x is not there and takes what was read before it, each time";
    std::size_t read = 0;
    for (const MemoryPlatform::KeyOpened& opened : platform.keysOpened) {
        read += opened.subKey == std::string(kKey) + "\\doc" ? 1U : 0U;
    }
    EXPECT_EQ(read, 1U + 2U + 2U) << "the list, a and b once each, x twice";
}

TEST_F(OpenSaveListTest, OneLongTextForManyLettersIsNotListedWithoutEnd) {
    key.Key("doc").SetText("MRUList", std::string(8000, 'a')).SetText("a", std::string(100'000, 'x'));
    OpenSaveList list(platform);
    list.LoadOpenSaveList(kSid);
    std::size_t bytes = 0;
    for (const std::string& document : DocumentsOf(list)) {
        EXPECT_EQ(document, std::string(kLongestText, 'x'));
        bytes += document.size();
    }
    EXPECT_LE(bytes, TextIntake::kMostOfList);
    EXPECT_GT(list.Count(), 1000);
    EXPECT_EQ(list.Loss(),
              "Texts of more than 32767 characters are cut. There is more text than any real list holds: the "
              "rest is left out.");
}

TEST_F(OpenSaveListTest, ManyLettersAreSharedByManyKeysWithoutEnd) {
    key.Key("a").SetText("MRUList", std::string(30'000, 'z'));
    for (int i = 0; i < 200; ++i) {
        key.Key("k" + std::to_string(i));  // without a list, so that it takes the one before
    }
    OpenSaveList list(platform);
    list.LoadOpenSaveList(kSid);
    EXPECT_LE(list.Count(), 1 << 20U);
    EXPECT_NE(list.Loss(), "");
}

TEST_F(OpenSaveListTest, AnEmptyListOfLettersAddsNothing) {
    key.Key("doc").SetText("MRUList", "").SetText("a", "C:\\1.doc");
    key.Key("htm").SetData("MRUList", kRegSz, {}).SetText("a", "C:\\1.htm");
    key.Key("txt").SetText("MRUList", "a").SetText("a", "C:\\a.txt");
    EXPECT_EQ(Load(), Documents{"C:\\a.txt"});
}

TEST_F(OpenSaveListTest, AMissingValueRepeatsTheDocumentBeforeIt) {
    key.Key("doc").SetText("MRUList", "xab").SetText("a", "C:\\1.doc");
    key.Key("txt").SetText("MRUList", "ca").SetText("a", "C:\\a.txt");
    EXPECT_EQ(Load(), (Documents{"", "C:\\1.doc", "C:\\1.doc", "C:\\1.doc", "C:\\a.txt"}))
        << "an empty text at the very start, later across kinds";
}

TEST_F(OpenSaveListTest, MissingLettersAreThoseOfTheKindBefore) {
    key.Key("bmp").SetText("a", "C:\\never.bmp");
    key.Key("doc").SetText("MRUList", "ba").SetText("a", "C:\\1.doc").SetText("b", "C:\\2.doc");
    key.Key("txt").SetText("a", "C:\\a.txt").SetText("b", "C:\\b.txt");
    EXPECT_EQ(Load(), (Documents{"C:\\2.doc", "C:\\1.doc", "C:\\b.txt", "C:\\a.txt"}))
        << "the first kind has none to take";
}

TEST_F(OpenSaveListTest, KindsAreInTheOrderOfTheirBytesCapitalsFirst) {
    key.Key("bmp").SetText("a", "C:\\a.bmp");
    key.Key("Doc").SetText("MRUList", "b").SetText("b", "C:\\b.doc");
    key.Key("TXT").SetText("MRUList", "a").SetText("a", "C:\\a.txt");
    EXPECT_EQ(Load(), (Documents{"C:\\b.doc", "C:\\a.txt", "C:\\a.bmp"}))
        << "bmp comes last, so that it takes the letters of TXT";
}

TEST_F(OpenSaveListTest, AKindThatCannotBeOpenedRepeatsTheLastDocument) {
    key.Key("doc").SetText("MRUList", "ab").SetText("a", "C:\\1.doc").SetText("b", "C:\\2.doc");
    key.Key("txt").openResult = kAccessDenied;
    EXPECT_EQ(Load(), (Documents{"C:\\1.doc", "C:\\2.doc", "C:\\2.doc", "C:\\2.doc"}));
}

TEST_F(OpenSaveListTest, ANumberInPlaceOfTheLettersIsReadAsItsDigits) {
    key.Key("doc").SetDword("MRUList", 21).SetText("1", "one").SetText("2", "two");
    EXPECT_EQ(Load(), (Documents{"two", "one"}));
    key.Key("doc").SetDword("MRUList", 0xFFFFFFFF).SetText("-", "minus");
    EXPECT_EQ(Load(), (Documents{"minus", "one"}));
}

TEST_F(OpenSaveListTest, OtherTypesOfLettersCannotBeRead) {
    constexpr std::array<std::byte, 5> kFive{};
    key.Key("bmp").SetText("MRUList", "a").SetText("a", "C:\\a.bmp");
    key.Key("doc").SetText("MRUList", "b", kRegMultiSz).SetText("a", "C:\\a.doc").SetText("b", "no");
    key.Key("txt").SetData("MRUList", kRegBinary, kFive).SetText("a", "C:\\a.txt");
    EXPECT_EQ(Load(), (Documents{"C:\\a.bmp", "C:\\a.doc", "C:\\a.txt"}));
}

TEST_F(OpenSaveListTest, DocumentsOfOtherTypesAreReadAsTheRegistryModuleDoes) {
    key.Key("doc")
        .SetText("MRUList", "abc")
        .SetText("a", "%HOME%\\1.doc", kRegExpandSz)
        .SetDword("b", 7)
        .SetText("c", "multi", kRegMultiSz);
    EXPECT_EQ(Load(), (Documents{"%HOME%\\1.doc", "7", "7"}));
}

TEST_F(OpenSaveListTest, ALetterIsACharacterNotAByte) {
    key.Key("doc")
        .SetText("MRUList", "\u0416a")
        .SetText("\u0416", "C:\\\u0416.doc")
        .SetText("a", "C:\\a.doc");
    EXPECT_EQ(Load(), (Documents{"C:\\\u0416.doc", "C:\\a.doc"}));
}

TEST_F(OpenSaveListTest, ALetterMayStandForTheDefaultValueOfNothing) {
    // A separator among the letters names a default value, which is not there.
    key.Key("doc").SetText("MRUList", "a\\").SetText("a", "C:\\a.doc");
    EXPECT_EQ(Load(), (Documents{"C:\\a.doc", "C:\\a.doc"}));
}

TEST_F(OpenSaveListTest, AMissingKeyGivesNothing) {
    MemoryPlatform bare;
    OpenSaveList list(bare);
    EXPECT_FALSE(list.LoadOpenSaveList(kSid));
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(Load(), Documents{}) << "a key without kinds";
    EXPECT_TRUE(loaded);
}

TEST_F(OpenSaveListTest, IndexesOutOfRangeAreEmpty) {
    key.Key("doc").SetText("MRUList", "a").SetText("a", "C:\\a.doc");
    OpenSaveList list(platform);
    list.LoadOpenSaveList(kSid);
    EXPECT_EQ(list.Document(0), "C:\\a.doc");
    EXPECT_EQ(list.Document(-1), "");
    EXPECT_EQ(list.Document(list.Count()), "");
}

TEST_F(OpenSaveListTest, SortsWithRegardToCase) {
    key.Key("doc").SetText("MRUList", "abc").SetText("a", "b").SetText("b", "C").SetText("c", "a");
    OpenSaveList list(platform);
    list.LoadOpenSaveList(kSid);
    list.Sort();
    EXPECT_EQ(DocumentsOf(list), (Documents{"C", "a", "b"}));
}

}  // namespace
}  // namespace ostrevin
