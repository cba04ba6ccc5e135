#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "sources/TypedURLList.h"
#include "tests/support/Lists.h"
#include "tests/support/MemoryPlatform.h"

namespace ostrevin {
namespace {

constexpr char kSid[] = "S-1-5-21-1";

class TypedURLListTest : public testing::Test {
  protected:
    std::vector<std::string> Load() {
        TypedURLList list(platform);
        loaded = list.LoadTypedURL(kSid);
        return All(list, &TypedURLList::URL);
    }

    MemoryPlatform platform;
    MemoryKey& key{
        platform.Root(kUsers).Key("S-1-5-21-1\\Software\\Microsoft\\Internet Explorer\\TypedURLs")};
    bool loaded = false;
};

using Urls = std::vector<std::string>;

TEST_F(TypedURLListTest, GoesByTheNumbers) {
    key.SetText("url3", "http://three/").SetText("url1", "http://one/").SetText("url10", "http://ten/");
    EXPECT_EQ(Load(), (Urls{"http://one/", "http://three/", "http://ten/"}));
    EXPECT_TRUE(loaded);
}

TEST_F(TypedURLListTest, AMissingNumberDoesNotEndTheList) {
    key.SetText("url1", "a").SetText("url2", "b").SetText("url3", "c").SetText("url7", "d");
    EXPECT_EQ(Load(), (Urls{"a", "b", "c", "d"}));
}

TEST_F(TypedURLListTest, EndsAt25) {
    key.SetText("url25", "last").SetText("url26", "beyond").SetText("url0", "before");
    EXPECT_EQ(Load(), Urls{"last"});
}

TEST_F(TypedURLListTest, KnowsNoLeadingZeros) {
    key.SetText("url01", "no").SetText("url 2", "no").SetText("URL3", "yes");
    EXPECT_EQ(Load(), Urls{"yes"}) << "names of values have no case";
}

TEST_F(TypedURLListTest, PassesOverEmptyValues) {
    key.SetText("url1", "").SetData("url2", kRegSz, {}).SetText("url3", "c");
    EXPECT_EQ(Load(), Urls{"c"});
}

TEST_F(TypedURLListTest, ReadsOtherTypesAsTheRegistryModuleDoes) {
    constexpr std::byte kLarge[5] = {};
    key.SetDword("url1", 0xFFFFFFFF)
        .SetText("url2", "%x%", kRegExpandSz)
        .SetText("url3", "multi", kRegMultiSz)
        .SetData("url4", kRegBinary, kLarge);
    EXPECT_EQ(Load(), (Urls{"-1", "%x%"}));
}

TEST_F(TypedURLListTest, ListsRepeatedAddressesEachTime) {
    key.SetText("url1", "a").SetText("url2", "a");
    EXPECT_EQ(Load(), (Urls{"a", "a"}));
}

TEST_F(TypedURLListTest, AMissingKeyGivesNothing) {
    MemoryPlatform bare;
    TypedURLList list(bare);
    EXPECT_FALSE(list.LoadTypedURL(kSid));
    EXPECT_EQ(list.Count(), 0);
    key.openResult = kAccessDenied;
    key.SetText("url1", "a");
    EXPECT_EQ(Load(), Urls{});
    EXPECT_FALSE(loaded);
}

TEST_F(TypedURLListTest, IndexesOutOfRangeAreEmpty) {
    key.SetText("url1", "a");
    TypedURLList list(platform);
    list.LoadTypedURL(kSid);
    EXPECT_EQ(list.URL(0), "a");
    EXPECT_EQ(list.URL(-1), "");
    EXPECT_EQ(list.URL(list.Count()), "");
    EXPECT_EQ(TypedURLList(platform).URL(0), "");
}

TEST_F(TypedURLListTest, ASecondLoadAppends) {
    key.SetText("url1", "a");
    TypedURLList list(platform);
    list.LoadTypedURL(kSid);
    list.LoadTypedURL(kSid);
    EXPECT_EQ(list.Count(), 2);
}

}  // namespace
}  // namespace ostrevin
