#include <gtest/gtest.h>
#include <string>

#include "platform/Text.h"
#include "platform/volume/regf/Hive.h"
#include "tests/regf/HiveBytes.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::regf {
namespace {

using samples::HiveKey;
using samples::HiveOptions;
using samples::SubKeyLeaf;
using samples::WriteHive;

std::unique_ptr<Hive> Write(const HiveKey& root, const HiveOptions& options = {}) {
    return OpenHive(WriteHive(root, options), {});
}

TEST(Hive, HasARootWithItsNameClassAndTime) {
    HiveKey root;
    root.name = "$$$PROTO.HIV";
    root.className = "Klasse \u0416";
    root.lastWritten = 0x01C5000000000000;
    const auto hive = Write(root);
    EXPECT_EQ(hive->HowRecovered(), Recovery::None);
    EXPECT_EQ(hive->Root().Name(), "$$$PROTO.HIV");
    EXPECT_EQ(hive->Root().NameLength(), 12U);
    EXPECT_EQ(hive->Root().ClassName(), "Klasse \u0416");
    EXPECT_EQ(hive->Root().LastWritten(), 0x01C5000000000000U);
    EXPECT_TRUE(hive->Root().SubKeys().empty());
    EXPECT_TRUE(hive->Root().Values().empty());
}

TEST(Hive, ListsSubKeysInSortedAndValuesInStoredOrder) {
    HiveKey root;
    for (const char* name : {"delta", "Alpha", "CHARLIE", "bravo"}) {
        root.AddKey(name);
        root.SetDword(name, 1);
    }
    const auto hive = Write(root);
    EXPECT_EQ(Names(hive->Root().SubKeys()), "Alpha,bravo,CHARLIE,delta");
    EXPECT_EQ(Names(hive->Root().Values()), "delta,Alpha,CHARLIE,bravo");
}

class HiveNames : public testing::TestWithParam<bool> {};

TEST_P(HiveNames, AreUtf8AndFoundWithoutRegardToCase) {
    struct Case {
        const char* name;
        const char* other;
        std::uint32_t length;
    };
    constexpr Case kCases[] = {
        {"Plain", "pLAIN", 5},
        {"Caf\u00E9", "CAF\u00C9", 4},  // within Latin-1
        {"\u041F\u0440\u0438\u0432\u0435\u0442", "\u043F\u0420\u0438\u0432\u0435\u0442", 6},
        {"\U0001F600 x", "\U0001F600 X", 4},
    };
    HiveKey root;
    for (const Case& c : kCases) {
        root.AddKey(c.name);
        root.SetDword(c.name, c.length);
    }
    const auto hive = Write(root, Options([&](auto& o) { o.compressNames = GetParam(); }));
    for (const Case& c : kCases) {
        const auto key = hive->Root().FindSubKey(c.other);
        ASSERT_TRUE(key) << c.name;
        EXPECT_EQ(key->Name(), c.name);
        EXPECT_EQ(key->NameLength(), c.length);
        const auto value = hive->Root().FindValue(c.other);
        ASSERT_TRUE(value) << c.name;
        EXPECT_EQ(value->Name(), c.name);
        EXPECT_EQ(value->NameLength(), c.length);
        EXPECT_TRUE(value->HasName(c.other));
        EXPECT_FALSE(value->HasName(std::string(c.name) + "x"));
        EXPECT_FALSE(value->HasName(""));
    }
    EXPECT_FALSE(hive->Root().FindSubKey("Plai"));
    EXPECT_FALSE(hive->Root().FindSubKey("Plain "));
    EXPECT_FALSE(hive->Root().FindSubKey(""));
    EXPECT_FALSE(hive->Root().FindValue(""));
}

INSTANTIATE_TEST_SUITE_P(Storing, HiveNames, testing::Values(true, false));

TEST(Hive, ReadsTheDefaultValue) {
    HiveKey root;
    root.SetString("other", "no");
    root.SetString("", "yes");
    const auto hive = Write(root);
    const auto value = hive->Root().FindValue("");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->Name(), "");
    EXPECT_EQ(value->NameLength(), 0U);
    EXPECT_EQ(value->Type(), 1U);
    EXPECT_EQ(Utf16ToUtf8(value->Data()), std::string("yes\0", 4));
}

std::string KeyName(int i) {
    std::string name = "Key ";
    name += std::to_string(10000 + i);
    return name;
}

struct ListCase {
    SubKeyLeaf leaf;
    std::uint32_t leafElements;
};

class SubKeyLists : public testing::TestWithParam<ListCase> {};

TEST_P(SubKeyLists, HoldEveryKey) {
    constexpr int kCount = 1200;
    HiveKey root;
    std::string expected;
    for (int i = 0; i < kCount; ++i) {
        const std::string name = KeyName(i);
        root.AddKey(name);
        if (i > 0) {
            expected += ',';
        }
        expected += name;
    }
    const auto hive = Write(root, Options([&](auto& o) {
                                o.leaf = GetParam().leaf;
                                o.leafElements = GetParam().leafElements;
                            }));
    EXPECT_TRUE(Names(hive->Root().SubKeys()) == expected);
    for (int i = 0; i < kCount; ++i) {
        const auto key = hive->Root().FindSubKey(UpperCase(KeyName(i)));
        ASSERT_TRUE(key);
        EXPECT_EQ(key->Name(), KeyName(i));
    }
    EXPECT_FALSE(hive->Root().FindSubKey("Key"));
    EXPECT_FALSE(hive->Root().FindSubKey("Key 10600x"));
    EXPECT_FALSE(hive->Root().FindSubKey("Kez"));
}

INSTANTIATE_TEST_SUITE_P(Leaves, SubKeyLists,
                         testing::Values(ListCase{SubKeyLeaf::Li, 2000}, ListCase{SubKeyLeaf::Lf, 2000},
                                         ListCase{SubKeyLeaf::Lh, 2000}, ListCase{SubKeyLeaf::Li, 100},
                                         ListCase{SubKeyLeaf::Lf, 7}, ListCase{SubKeyLeaf::Lh, 1}));

TEST(SubKeyLists, MayStandInNestedRoots) {
    HiveKey root;
    for (const char* name : {"a", "b", "c", "d"}) {
        root.AddKey(name);
    }
    HiveBytes bytes(WriteHive(root, Options([](auto& o) {
                                  o.leaf = SubKeyLeaf::Li;
                                  o.leafElements = 1;
                              })));
    const std::size_t outer = HiveBytes::Place(bytes.U32(bytes.Root() + kNodeSubKeysList));
    ASSERT_EQ(bytes.U16(outer + 2), 4);
    const std::uint32_t inner = bytes.AddCell(
        ListData("ri", 3, {bytes.U32(outer + 8), bytes.U32(outer + 12), bytes.U32(outer + 16)}));
    bytes.PutU16(outer + 2, 2);
    bytes.PutU32(outer + 8, inner);
    const auto hive = bytes.Open();
    EXPECT_EQ(Names(hive->Root().SubKeys()), "a,b,c,d");
    EXPECT_TRUE(hive->Root().FindSubKey("D"));
}

TEST(SubKeyLists, ThatAreNotSortedStillFindEveryKey) {
    HiveKey root;
    for (const char* name : {"a", "b", "c", "d", "e"}) {
        root.AddKey(name);
    }
    HiveBytes bytes(WriteHive(root, Options([](auto& o) { o.leaf = SubKeyLeaf::Li; })));
    const std::size_t list = HiveBytes::Place(bytes.U32(bytes.Root() + kNodeSubKeysList));
    constexpr std::size_t kCount = 5;
    std::vector<std::uint32_t> cells;
    for (std::size_t i = 0; i < kCount; ++i) {
        cells.push_back(bytes.SubKeyCell(bytes.Root(), i));
    }
    for (std::size_t i = 0; i < kCount; ++i) {
        bytes.PutU32(list + 4 + 4 * i, cells[kCount - 1 - i]);
    }
    const auto hive = bytes.Open();
    EXPECT_EQ(Names(hive->Root().SubKeys()), "e,d,c,b,a");
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        EXPECT_TRUE(hive->Root().FindSubKey(name)) << name;
    }
}

/// What one cell of data, or one segment of big data, holds.
constexpr std::size_t kSegment = 16344;

struct DataCase {
    std::uint32_t minorVersion;
    std::size_t size;
    bool inlineData;
};

class ValueData : public testing::TestWithParam<DataCase> {};

TEST_P(ValueData, IsReadWhole) {
    HiveKey root;
    root.Set("value", 0x12345, Pattern(GetParam().size));
    const auto hive = Write(root, Options([&](auto& o) {
                                o.minorVersion = GetParam().minorVersion;
                                o.inlineData = GetParam().inlineData;
                            }));
    const auto values = hive->Root().Values();
    ASSERT_EQ(values.size(), 1U);
    EXPECT_EQ(values[0].Type(), 0x12345U);
    EXPECT_EQ(values[0].Data(), Pattern(GetParam().size));
}

INSTANTIATE_TEST_SUITE_P(Layouts, ValueData,
                         testing::Values(DataCase{5, 0, true}, DataCase{5, 1, true}, DataCase{5, 3, true},
                                         DataCase{5, 4, true}, DataCase{5, 4, false}, DataCase{5, 5, true},
                                         DataCase{3, kSegment, true}, DataCase{5, kSegment, true},
                                         DataCase{3, kSegment + 1, true}, DataCase{4, kSegment + 1, true},
                                         DataCase{5, 2 * kSegment, true}, DataCase{6, 2 * kSegment + 1, true},
                                         DataCase{2, 300000, true}, DataCase{5, 1000000, true}));

TEST(ValueData, ThatMerelyBeginsLikeBigDataIsData) {
    // A version without big data, with data that looks like the record.
    std::vector<std::byte> data = Pattern(20000);
    data[0] = std::byte{'d'};
    data[1] = std::byte{'b'};
    HiveKey root;
    root.SetBinary("value", data);
    EXPECT_EQ(Write(root, Options([](auto& o) { o.minorVersion = 3; }))->Root().Values().at(0).Data(), data);
}

TEST(Hive, OfEveryVersionIsRead) {
    const std::string expected = Dump(*Write(SmallHive(), Options([](auto& o) { o.minorVersion = 5; })));
    for (const std::uint32_t version : {2U, 3U, 4U, 6U}) {
        EXPECT_EQ(Dump(*Write(SmallHive(), Options([&](auto& o) { o.minorVersion = version; }))), expected)
            << version;
    }
}

// Windows NT 3.1: cells have the offset of the cell before behind their size, names are always UTF-16.
TEST(Hive, OfTheFirstVersionIsRead) {
    samples::ByteBuffer bin;
    const auto cell = [&](std::string_view signature, std::size_t size) {
        const std::uint32_t offset = bin.Offset();
        bin.U32(0U - samples::Size32(size));
        bin.U32(kNowhere);
        bin.Text(signature);
        bin.PadTo(offset + size);
        return offset;
    };
    bin.Text("hbin");
    bin.U32(0);
    bin.U32(4096);
    bin.PadTo(32);
    constexpr std::size_t kData = 8;
    const std::uint32_t root = cell("nk", 96);
    const std::uint32_t list = cell("", 16);
    const std::uint32_t value = cell("vk", 48);
    bin.PadTo(4096);
    bin.PutU16(root + kData + 2, 0x20);  // means nothing in this version
    bin.PutU32(root + kData + kNodeSubKeysList, kNowhere);
    bin.PutU32(root + kData + kNodeValueCount, 1);
    bin.PutU32(root + kData + kNodeValuesList, list);
    bin.PutU16(root + kData + kNodeNameLength, 4);
    bin.PutU16(root + kData + 76, 'N');
    bin.PutU16(root + kData + 78, 'T');
    bin.PutU32(list + kData, value);
    bin.PutU16(value + kData + kValueNameLength, 2);
    bin.PutU32(value + kData + kValueDataSize, 0x80000002);
    bin.PutU32(value + kData + kValueDataOffset, 0x00330031);
    bin.PutU16(value + kData + 16, 1);  // a title index here, not a flag
    bin.PutU16(value + kData + 20, 0x416);

    HiveBytes bytes(WriteHive(HiveKey(), Options([](auto& o) { o.minorVersion = 1; })));
    bytes.Change().resize(samples::kBaseBlockSize);
    bytes.PutU32(36, root);
    bytes.PutU32(40, 4096);
    bytes.UpdateChecksum();
    bytes.Change().insert(bytes.Change().end(), bin.View().begin(), bin.View().end());
    const auto hive = bytes.Open();
    EXPECT_EQ(hive->Root().Name(), "NT");
    ASSERT_EQ(Names(hive->Root().Values()), "\u0416");
    EXPECT_EQ(Utf16ToUtf8(hive->Root().Values()[0].Data()), "1");
}

TEST(Hive, MayHavePaddingAfterItsBins) {
    auto bytes = WriteHive(SmallHive(), {});
    const std::string expected = Dump(*OpenHive(bytes, {}));
    bytes.resize(bytes.size() + 10000, std::byte{0xEE});
    EXPECT_EQ(Dump(*OpenHive(bytes, {})), expected);
}

TEST(Hive, KeysWithAPredefinedHandleHaveNoValues) {
    HiveKey root;
    root.SetDword("a", 1);
    HiveBytes bytes(WriteHive(root, {}));
    bytes.PutU16(bytes.Root() + 2, bytes.U16(bytes.Root() + 2) | 0x40U);
    EXPECT_TRUE(bytes.Open()->Root().Values().empty());
}

TEST(Hive, OfGreatSizeIsReadWhole) {
    constexpr std::size_t kKeys = 100000;
    constexpr std::size_t kValues = 20000;
    HiveKey root;
    for (std::size_t i = 0; i < kKeys; ++i) {
        root.AddKey(std::to_string(1000000 + i));
    }
    HiveKey& count = root.Key("Count");
    for (std::size_t i = 0; i < kValues; ++i) {
        count.Add("HRZR_EHACNGU:" + std::to_string(i), 3, Pattern(16));
    }
    const auto hive = Write(root);
    EXPECT_EQ(hive->Root().SubKeys().size(), kKeys + 1);
    for (std::size_t i = 0; i < kKeys; ++i) {
        ASSERT_TRUE(hive->Root().FindSubKey(std::to_string(1000000 + i)));
    }
    const auto values = hive->Root().FindSubKey("COUNT")->Values();
    ASSERT_EQ(values.size(), kValues);
    for (std::size_t i = 0; i < kValues; ++i) {
        ASSERT_EQ(values[i].Name(), "HRZR_EHACNGU:" + std::to_string(i));
        ASSERT_EQ(values[i].Data(), Pattern(16));
    }
}

}  // namespace
}  // namespace ostrevin::regf
