// Hives of which not everything is sound: what is gone is absent, the rest is read, and nothing else happens.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>

#include "platform/volume/regf/Hive.h"
#include "tests/regf/HiveBytes.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::regf {
namespace {

using samples::HiveKey;
using samples::WriteHive;

/// A root with the sub-keys a, b and c, each with one value "v" of 4 bytes, and a class.
HiveBytes ThreeKeys() {
    HiveKey root;
    root.name = "Root";
    for (const char* name : {"a", "b", "c"}) {
        HiveKey& key = root.AddKey(name);
        key.className = "class";
        key.SetBinary("v", Pattern(100));
    }
    return HiveBytes(WriteHive(root, Options([](auto& o) { o.leaf = samples::SubKeyLeaf::Li; })));
}

/// What one segment of big data holds.
constexpr std::size_t kSegment = 16344;

/// The place of the size field of a cell.
std::size_t SizePlace(std::uint32_t cell) {
    return HiveBytes::Place(cell) - 4;
}

TEST(DamagedHive, IsRefusedWithAClearSentence) {
    const std::vector<std::byte> hive = WriteHive(SmallHive(), {});
    EXPECT_EQ(OpenError(hive), "");
    EXPECT_EQ(OpenError({}), "The file is too short to be a registry hive.");
    EXPECT_EQ(OpenError({hive.begin(), hive.begin() + 511}), "The file is too short to be a registry hive.");
    EXPECT_EQ(OpenError({hive.begin(), hive.begin() + 4096}),
              "The registry hive is damaged: it has no first hive bin.");
    EXPECT_EQ(OpenError(std::vector<std::byte>(10000)),
              "The file is not a registry hive: it does not begin with \"regf\".");

    HiveBytes log(hive);
    log.PutU32(28, 1);
    log.UpdateChecksum();
    EXPECT_EQ(OpenError(log.View()), "The file is a transaction log of a registry hive, not the hive.");

    HiveBytes version(hive);
    version.PutU32(24, 7);
    version.UpdateChecksum();
    EXPECT_EQ(OpenError(version.View()), "The file is a registry hive of the unknown version 1.7.");

    HiveBytes bin(hive);
    bin.PutText(4096, "nibh");
    EXPECT_EQ(OpenError(bin.View()), "The registry hive is damaged: it has no first hive bin.");

    for (const std::uint32_t cell : {0U, 4U, 32U + 8U, 0x7FFFFFF8U, 0xFFFFFFF8U, 0xFFFFFFFFU}) {
        HiveBytes root(hive);
        root.PutU32(36, cell);
        root.UpdateChecksum();
        EXPECT_EQ(OpenError(root.View()), "The registry hive is damaged: it has no root key.") << cell;
    }
}

TEST(DamagedHive, WithoutLogsIsReadAsItStands) {
    const std::string expected = Dump(*OpenHive(WriteHive(SmallHive(), {}), {}));
    const auto unclean =
        OpenHive(WriteHive(SmallHive(), Options([](auto& o) { o.primarySequence = 2; })), {});
    EXPECT_EQ(unclean->HowRecovered(), Recovery::DirtyNoLogs);
    EXPECT_EQ(Dump(*unclean), expected);
    const auto wrong = OpenHive(WriteHive(SmallHive(), Options([](auto& o) { o.wrongChecksum = true; })), {});
    EXPECT_EQ(wrong->HowRecovered(), Recovery::DirtyNoLogs);
    EXPECT_EQ(Dump(*wrong), expected);
}

TEST(DamagedBaseBlock, IsMadeUpFromTheSoundBins) {
    const std::vector<std::byte> whole = WriteHive(SmallHive(), {});
    const std::string expected = Dump(*OpenHive(whole));
    const auto expectRead = [&](const HiveBytes& damaged, const char* what) {
        ASSERT_EQ(OpenError(damaged.View()), "") << what;
        const auto hive = damaged.Open();
        EXPECT_EQ(hive->HowRecovered(), Recovery::DirtyNoLogs) << what;
        EXPECT_TRUE(hive->HadDamagedBaseBlock()) << what;
        EXPECT_EQ(Dump(*hive), expected) << what;
    };
    struct Case {
        std::size_t place;
        std::uint32_t value;
        const char* what;
    };
    for (const Case& c :
         {Case{40, 4096, "a smaller size"}, Case{40, 0, "no size"}, Case{40, 0xFFFFF000, "a larger size"},
          Case{20, 7, "major version"}, Case{24, 77, "minor version"}, Case{24, 1, "another minor version"},
          Case{36, 0x7FFFFFF8, "root cell"}, Case{0, 0, "signature"}, Case{28, 0x70, "file type"},
          Case{508, 0x1234, "checksum"}}) {
        HiveBytes bytes(whole);
        bytes.PutU32(c.place, c.value);
        expectRead(bytes, c.what);
    }
    HiveBytes zeroed(whole);
    std::fill_n(zeroed.Change().begin(), 4096, std::byte{0});
    expectRead(zeroed, "zeros");
}

TEST(DamagedBaseBlock, IsReadToABinThatIsNotSound) {
    HiveBytes sound(WriteHive(SmallHive(), {}));
    sound.PutU32(40, 4096);
    sound.UpdateChecksum();
    HiveBytes damaged = sound;
    damaged.PutU32(508, 0);
    constexpr std::size_t kSecondBin = 8192;
    ASSERT_EQ(damaged.U32(kSecondBin), 0x6E696268U);
    EXPECT_GT(Dump(*damaged.Open()).size(), Dump(*sound.Open()).size());
    damaged.PutText(kSecondBin, "nibh");
    EXPECT_EQ(Dump(*damaged.Open()), Dump(*sound.Open()));
}

// A sound base block has the last word, as Windows sees it.
TEST(DamagedBaseBlock, OnlyIsReadBeyondItsSize) {
    HiveBytes bytes(WriteHive(SmallHive(), {}));
    const std::string whole = Dump(*bytes.Open());
    bytes.PutU32(40, 4096);
    bytes.UpdateChecksum();
    const auto hive = bytes.Open();
    EXPECT_FALSE(hive->HadDamagedBaseBlock());
    EXPECT_LT(Dump(*hive).size(), whole.size());
}

TEST(DamagedHive, CutOffAnywhereNeverGivesWhatItDoesNotHold) {
    const std::vector<std::byte> hive = WriteHive(SmallHive(), {});
    const std::string whole = Dump(*OpenHive(hive, {}));
    const auto lines = [](const std::string& text) { return std::ranges::count(text, '\n'); };
    std::size_t opened = 0;
    for (std::size_t size = 0; size < hive.size(); size += size < 12288 ? 1 : 97) {
        const std::vector<std::byte> part(hive.begin(), hive.begin() + static_cast<std::ptrdiff_t>(size));
        if (OpenError(part).empty()) {
            ++opened;
            EXPECT_LE(lines(Dump(*OpenHive(part, {}))), lines(whole)) << size;
        }
    }
    EXPECT_GT(opened, 1000U);
}

TEST(DamagedHive, WithAnyByteWrongIsReadWithoutHarm) {
    const std::vector<std::byte> hive = ThreeKeys().View();
    constexpr std::size_t kMostText = 100000;
    for (std::size_t i = 0; i < hive.size(); ++i) {
        for (const unsigned wrong : {0x00U, 0xFFU, 0x80U, 0x08U}) {
            HiveBytes bytes(hive);
            bytes.PutU8(i, static_cast<std::uint8_t>(wrong));
            if (OpenError(bytes.View()).empty()) {
                EXPECT_LT(Dump(*bytes.Open()).size(), kMostText) << i;
            }
        }
    }
}

TEST(DamagedKey, IsLeftOutAlone) {
    const HiveBytes sound = ThreeKeys();
    const std::uint32_t cell = sound.SubKeyCell(sound.Root(), 1);
    const std::size_t node = HiveBytes::Place(cell);
    ASSERT_EQ(Names(sound.Open()->Root().SubKeys()), "a,b,c");
    const auto expectAbsent = [](const HiveBytes& bytes, const char* why) {
        const auto hive = bytes.Open();
        EXPECT_EQ(Names(hive->Root().SubKeys()), "a,c") << why;
        EXPECT_FALSE(hive->Root().FindSubKey("b")) << why;
        EXPECT_TRUE(hive->Root().FindSubKey("c")) << why;
    };
    HiveBytes signature = sound;
    signature.PutText(node, "kn");
    expectAbsent(signature, "wrong signature");

    HiveBytes freeCell = sound;
    freeCell.PutU32(SizePlace(cell), 0U - freeCell.U32(SizePlace(cell)));
    expectAbsent(freeCell, "the cell is free");

    HiveBytes shortCell = sound;
    shortCell.PutU32(SizePlace(cell), 0U - 72U);
    expectAbsent(shortCell, "the cell is too small");

    HiveBytes longName = sound;
    longName.PutU16(node + kNodeNameLength, 0xFFFF);
    expectAbsent(longName, "the name leaves the cell");

    HiveBytes parent = sound;
    parent.PutU32(node + kNodeParent, sound.SubKeyCell(sound.Root(), 0));
    expectAbsent(parent, "the key belongs to another");

    for (const std::uint32_t wrong : {kNowhere, 0xFFFFFFF8U, 0x80000000U, 0x10000000U, cell + 4, 0U}) {
        HiveBytes offset = sound;
        offset.PutU32(HiveBytes::Place(sound.U32(sound.Root() + kNodeSubKeysList)) + 8, wrong);
        expectAbsent(offset, "the offset points elsewhere");
    }
}

TEST(DamagedKey, ThatListsItsParentMakesNoCircle) {
    HiveBytes bytes = ThreeKeys();
    const std::uint32_t root = bytes.RootCell();
    const std::uint32_t a = bytes.SubKeyCell(bytes.Root(), 0);
    const std::uint32_t list = bytes.AddCell(ListData("li", 2, {root, a}));
    bytes.PutU32(HiveBytes::Place(a) + kNodeSubKeyCount, 2);
    bytes.PutU32(HiveBytes::Place(a) + kNodeSubKeysList, list);
    bytes.PutU32(HiveBytes::Place(root) + kNodeParent, a);
    const auto hive = bytes.Open();
    const auto key = hive->Root().FindSubKey("a");
    ASSERT_TRUE(key);
    EXPECT_TRUE(key->SubKeys().empty());
}

TEST(DamagedSubKeysList, OfUnknownKindOrPlaceIsEmpty) {
    const HiveBytes sound = ThreeKeys();
    for (const std::uint32_t wrong : {kNowhere, 0xFFFFFFF8U, 0U, sound.RootCell()}) {
        HiveBytes bytes = sound;
        bytes.PutU32(bytes.Root() + kNodeSubKeysList, wrong);
        EXPECT_TRUE(bytes.Open()->Root().SubKeys().empty());
        EXPECT_FALSE(bytes.Open()->Root().FindSubKey("a"));
    }
    HiveBytes none = sound;
    none.PutU32(none.Root() + kNodeSubKeyCount, 0);
    EXPECT_TRUE(none.Open()->Root().SubKeys().empty());
}

TEST(DamagedSubKeysList, WithACountBeyondItsCellEndsWithTheCell) {
    HiveBytes bytes = ThreeKeys();
    bytes.PutU16(HiveBytes::Place(bytes.U32(bytes.Root() + kNodeSubKeysList)) + 2, 0xFFFF);
    EXPECT_EQ(Names(bytes.Open()->Root().SubKeys()), "a,b,c");
}

TEST(DamagedSubKeysList, RootThatHoldsItselfIsReadOnce) {
    HiveBytes bytes = ThreeKeys();
    const std::uint32_t leaf = bytes.U32(bytes.Root() + kNodeSubKeysList);
    const std::uint32_t root = bytes.AddCell(ListData("ri", 4, {0, 0, 0, 0}));
    const std::array<std::uint32_t, 4> elements = {root, leaf, root, leaf};
    for (std::size_t i = 0; i < elements.size(); ++i) {
        bytes.PutU32(HiveBytes::Place(root) + 4 + 4 * i, elements[i]);
    }
    bytes.PutU32(bytes.Root() + kNodeSubKeysList, root);
    EXPECT_EQ(Names(bytes.Open()->Root().SubKeys()), "a,b,c");
}

// A tree in which every key is listed many times would take forever to walk.
TEST(DamagedSubKeysList, GivesEachKeyOnce) {
    HiveBytes bytes = ThreeKeys();
    const std::uint32_t a = bytes.SubKeyCell(bytes.Root(), 0);
    const std::uint32_t b = bytes.SubKeyCell(bytes.Root(), 1);
    bytes.PutU32(bytes.Root() + kNodeSubKeysList, bytes.AddCell(ListData("li", 6, {a, a, b, a, b, b})));
    EXPECT_EQ(Names(bytes.Open()->Root().SubKeys()), "a,b");
}

TEST(DamagedSubKeysList, RootsInACircleEnd) {
    HiveBytes bytes = ThreeKeys();
    const std::uint32_t leaf = bytes.U32(bytes.Root() + kNodeSubKeysList);
    const std::uint32_t first = bytes.AddCell(ListData("ri", 2, {leaf, 0}));
    const std::uint32_t second = bytes.AddCell(ListData("ri", 1, {first}));
    bytes.PutU32(HiveBytes::Place(first) + 8, second);
    bytes.PutU32(bytes.Root() + kNodeSubKeysList, first);
    EXPECT_EQ(Names(bytes.Open()->Root().SubKeys()), "a,b,c");
}

// Cells that overlap could otherwise make a small file give billions of keys.
TEST(DamagedSubKeysList, GivesNoMoreKeysThanTheHiveHasRoomFor) {
    constexpr std::uint32_t kCells = 8000;
    HiveBytes bytes = ThreeKeys();
    const std::uint32_t a = bytes.SubKeyCell(bytes.Root(), 0);
    samples::ByteBuffer overlapping;
    overlapping.U32(0);
    for (std::uint32_t i = 0; i < kCells; ++i) {
        overlapping.U32(0x80000000);  // the size of a cell that takes all that follows
        overlapping.Text("li");
        overlapping.U16(0xFFFF);
    }
    for (std::uint32_t i = 0; i < kCells; ++i) {
        overlapping.U32(a);
    }
    const std::uint32_t start = bytes.AddCell(overlapping.Take());
    std::vector<std::uint32_t> lists;
    for (std::uint32_t i = 0; i < kCells; ++i) {
        lists.push_back(start + 8 + 8 * i);
    }
    bytes.PutU32(bytes.Root() + kNodeSubKeysList,
                 bytes.AddCell(ListData("ri", static_cast<std::uint16_t>(kCells), lists)));
    EXPECT_LE(bytes.Open()->Root().SubKeys().size(), bytes.View().size() / 76);
}

TEST(DamagedValue, IsLeftOutAlone) {
    HiveKey root;
    for (const char* name : {"x", "y", "z"}) {
        root.SetBinary(name, Pattern(50));
    }
    const HiveBytes sound(WriteHive(root, {}));
    const std::uint32_t cell = sound.ValueCell(sound.Root(), 1);
    const auto expectAbsent = [](const HiveBytes& bytes, const char* why) {
        const auto hive = bytes.Open();
        EXPECT_EQ(Names(hive->Root().Values()), "x,z") << why;
        EXPECT_FALSE(hive->Root().FindValue("y")) << why;
    };
    HiveBytes signature = sound;
    signature.PutText(HiveBytes::Place(cell), "vl");
    expectAbsent(signature, "wrong signature");

    HiveBytes longName = sound;
    longName.PutU16(HiveBytes::Place(cell) + kValueNameLength, 0xFFFF);
    expectAbsent(longName, "the name leaves the cell");

    HiveBytes shortCell = sound;
    shortCell.PutU32(SizePlace(cell), 0U - 16U);
    expectAbsent(shortCell, "the cell is too small");

    for (const std::uint32_t wrong : {kNowhere, 0xFFFFFFF8U, cell + 4, sound.RootCell()}) {
        HiveBytes offset = sound;
        offset.PutU32(HiveBytes::Place(sound.U32(sound.Root() + kNodeValuesList)) + 4, wrong);
        expectAbsent(offset, "the offset points elsewhere");
    }
}

TEST(DamagedValuesList, EndsWithItsCell) {
    HiveKey root;
    root.SetDword("x", 1);
    HiveBytes bytes(WriteHive(root, {}));
    bytes.PutU32(bytes.Root() + kNodeValueCount, kNowhere);
    EXPECT_EQ(Names(bytes.Open()->Root().Values()), "x");
    bytes.PutU32(bytes.Root() + kNodeValuesList, kNowhere);
    EXPECT_TRUE(bytes.Open()->Root().Values().empty());
    EXPECT_FALSE(bytes.Open()->Root().FindValue("x"));
}

class DamagedData : public testing::Test {
  protected:
    /// The first value's data, and its key value's place before that.
    static std::size_t ValuePlace(const HiveBytes& bytes) {
        return HiveBytes::Place(bytes.ValueCell(bytes.Root(), 0));
    }
    static std::vector<std::byte> Read(const HiveBytes& bytes) {
        return bytes.Open()->Root().Values().at(0).Data();
    }
    static HiveBytes WithData(std::size_t size) {
        HiveKey root;
        root.SetBinary("x", Pattern(size));
        return HiveBytes(WriteHive(root, {}));
    }
};

TEST_F(DamagedData, InlineIsNeverMoreThanFourBytes) {
    HiveBytes bytes = WithData(4);
    for (const std::uint32_t length : {0x80000005U, 0xFFFFFFFFU}) {
        bytes.PutU32(ValuePlace(bytes) + kValueDataSize, length);
        EXPECT_EQ(Read(bytes), Pattern(4));
    }
}

TEST_F(DamagedData, EndsWithItsCell) {
    HiveBytes bytes = WithData(100);
    bytes.PutU32(ValuePlace(bytes) + kValueDataSize, 0x7FFFFFFF);
    const auto data = Read(bytes);
    EXPECT_EQ(data.size(), 100U);  // 104 bytes of cell, of which 4 are its size
    EXPECT_EQ(data, Pattern(100));
}

TEST_F(DamagedData, OutsideOfTheHiveIsEmpty) {
    HiveBytes bytes = WithData(100);
    for (const std::uint32_t offset : {kNowhere, 0xFFFFFFF8U, 0x10000000U, 4U}) {
        bytes.PutU32(ValuePlace(bytes) + kValueDataOffset, offset);
        EXPECT_TRUE(Read(bytes).empty());
    }
}

TEST_F(DamagedData, OfABigRecordEndsWhereASegmentIsMissing) {
    HiveBytes bytes = WithData(3 * kSegment);
    ASSERT_EQ(Read(bytes), Pattern(3 * kSegment));
    const std::size_t record = HiveBytes::Place(bytes.U32(ValuePlace(bytes) + kValueDataOffset));
    const std::size_t list = HiveBytes::Place(bytes.U32(record + 4));
    HiveBytes middle = bytes;
    middle.PutU32(list + 4, kNowhere);
    EXPECT_EQ(Read(middle), Pattern(kSegment));

    HiveBytes fewer = bytes;
    fewer.PutU16(record + 2, 2);
    EXPECT_EQ(Read(fewer), Pattern(2 * kSegment));

    HiveBytes noList = bytes;
    noList.PutU32(record + 4, kNowhere);
    EXPECT_TRUE(Read(noList).empty());
}

TEST_F(DamagedData, OfABigRecordIsNeverLargerThanTheHive) {
    HiveBytes bytes = WithData(2 * kSegment);
    const std::size_t value = ValuePlace(bytes);
    const std::uint32_t segment =
        bytes.U32(HiveBytes::Place(bytes.U32(HiveBytes::Place(bytes.U32(value + kValueDataOffset)) + 4)));
    // A record that names one segment again and again.
    constexpr std::uint16_t kCount = 0xFFFF;
    std::vector<std::byte> list(std::size_t{kCount} * 4);
    for (std::size_t i = 0; i < list.size(); ++i) {
        list[i] = static_cast<std::byte>(segment >> (8 * (i % 4)));
    }
    const std::uint32_t listCell = bytes.AddCell(list);
    bytes.PutU32(value + kValueDataOffset, bytes.AddCell(ListData("db", kCount, {listCell})));
    bytes.PutU32(value + kValueDataSize, 0x7FFFFFFF);
    EXPECT_LE(Read(bytes).size(), bytes.View().size());
}

TEST(DamagedClassName, IsCutOrEmpty) {
    HiveBytes bytes = ThreeKeys();
    const std::size_t node = HiveBytes::Place(bytes.SubKeyCell(bytes.Root(), 0));
    bytes.PutU16(node + kNodeClassLength, 0xFFFF);
    EXPECT_EQ(bytes.Open()->Root().SubKeys()[0].ClassName().substr(0, 5), "class");
    bytes.PutU32(node + kNodeClassName, kNowhere);
    EXPECT_EQ(bytes.Open()->Root().SubKeys()[0].ClassName(), "");
}

}  // namespace
}  // namespace ostrevin::regf
