#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/samples/HiveOracle.h"
#include "tests/samples/Oracle.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/HiveWriter.h"
#include "tools/writers/SampleText.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

std::vector<std::byte> Pattern(std::size_t size) {
    std::vector<std::byte> bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::byte>(i * 7 + i / 251);
    }
    return bytes;
}

HiveKey Everything() {
    HiveKey root;
    root.name = "Root";
    HiveKey& values = root.Key("Values");
    values.className = "Class of values";
    values.SetString("", "the default one");
    values.SetString("text", "quoted \"text\" with \\ and é");
    values.SetString("Кириллица", "Значение €");
    values.SetString("expand", "%SystemRoot%\\x", 2);
    values.SetDword("number", 0xFFFFFFC4);
    values.Set("nothing", 3, {});
    values.Set("one byte", 3, Pattern(1));
    values.Set("three bytes", 3, Pattern(3));
    values.Set("four bytes", 3, Pattern(4));
    values.Set("five bytes", 3, Pattern(5));
    values.Set("odd type", 1003, Pattern(8));
    const std::array<std::string, 2> texts = {"one", "two"};
    values.SetMultiString("list", texts);
    HiveKey& large = root.Key("Large data");
    for (const unsigned size : {16343U, 16344U, 16345U, 32688U, 32689U, 100000U}) {
        large.SetBinary(std::to_string(size), Pattern(size));
    }
    HiveKey& many = root.Key("Many");
    for (int i = 0; i < 1100; ++i) {
        many.AddKey("key " + std::to_string(i)).lastWritten = FileTimeOf({2008, 2, 29, 23, 59, 58});
    }
    root.Key("Ordered\\b");
    root.Key("Ordered\\A");
    root.Key("Ordered\\_");
    root.Key("Ordered\\Ёлка");
    root.Key("Ordered\\ель");
    root.Key("Deep\\1\\2\\3\\4\\5\\6\\7\\8\\9").SetDword("bottom", 1);
    return root;
}

struct Variant {
    const char* name;
    HiveOptions options;
};

void PrintTo(const Variant& variant, std::ostream* out) {
    *out << variant.name;
}

class HiveWriterTest : public ::testing::TestWithParam<Variant> {
  protected:
    HiveWriterTest() : root_(Everything()), options_(GetParam().options) {
        options_.lastWritten = FileTimeOf({2009, 8, 4, 15, 22, 18});
        options_.fileName = "\\??\\C:\\Documents and Settings\\anna\\ntuser.dat";
        bytes_ = WriteHive(root_, options_);
    }
    HiveKey root_;
    HiveOptions options_;
    std::vector<std::byte> bytes_;
};

TEST_P(HiveWriterTest, HivexReadsAll) {
    OSTREVIN_NEED("hivexsh", "libhivex-bin");
    ExpectHivexAgrees(root_, bytes_);
}

TEST_P(HiveWriterTest, ReglookupReadsAll) {
    OSTREVIN_NEED("reglookup", "reglookup");
    ExpectReglookupAgrees(root_, options_, bytes_);
}

TEST_P(HiveWriterTest, RegfexportReadsAll) {
    OSTREVIN_NEED("regfexport", "libregf-utils");
    ExpectRegfexportAgrees(root_, bytes_);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, HiveWriterTest,
    ::testing::Values(
        Variant{"Windows2000", {.minorVersion = 2}}, Variant{"WindowsXpConfig", {.minorVersion = 3}},
        Variant{"WindowsXp", {.minorVersion = 5}},
        Variant{"IndexLeaves", {.minorVersion = 3, .leaf = SubKeyLeaf::Li}},
        Variant{"FastLeavesOfThree", {.minorVersion = 5, .leaf = SubKeyLeaf::Lf, .leafElements = 3}},
        Variant{"HashLeavesOfOne", {.leaf = SubKeyLeaf::Lh, .leafElements = 1}},
        Variant{"WideNames", {.compressNames = false}}, Variant{"NoInlineData", {.inlineData = false}}),
    [](const auto& param) { return param.param.name; });

TEST(HiveKeyTest, FindsKeysWithoutRegardToCaseAndReplacesValues) {
    HiveKey root;
    HiveKey& key = root.Key("Software\\Größe");
    key.SetDword("n", 1);
    root.Key("SOFTWARE\\GRÖßE").SetDword("n", 2);
    EXPECT_EQ(root.subKeys.size(), 1U);
    ASSERT_EQ(key.values.size(), 1U);
    EXPECT_EQ(U32At(key.values[0].data, 0), 2U);
}

TEST(HiveOptionsTest, SequencesAndChecksum) {
    HiveKey root;
    root.name = "R";
    const std::vector<std::byte> clean = WriteHive(root, {.primarySequence = 7, .secondarySequence = 7});
    EXPECT_EQ(U32At(clean, 508), BaseBlockChecksum(clean));
    const std::vector<std::byte> dirty =
        WriteHive(root, {.primarySequence = 8, .secondarySequence = 7, .wrongChecksum = true});
    EXPECT_EQ(U32At(dirty, 4), 8U);
    EXPECT_EQ(U32At(dirty, 8), 7U);
    EXPECT_NE(U32At(dirty, 508), BaseBlockChecksum(dirty));
}

TEST(HiveOptionsTest, SegmentsOfSplitDataHaveFourBytesToSpareUnlessTight) {
    HiveKey root;
    root.name = "R";
    root.SetBinary("v", Pattern(16345));
    const auto lastSegmentSize = [&](bool tight) {
        const std::vector<std::byte> hive = WriteHive(root, {.tightSegments = tight});
        const std::array<std::byte, 4> record = {std::byte{'d'}, std::byte{'b'}, std::byte{2}, std::byte{0}};
        const auto found = std::search(hive.begin(), hive.end(), record.begin(), record.end());
        const std::uint32_t list = U32At(hive, static_cast<std::size_t>(found - hive.begin()) + 4);
        return 0U - U32At(hive, 4096 + U32At(hive, 4096 + list + 8));
    };
    // A byte of data and the size of the cell, in steps of eight.
    EXPECT_EQ(lastSegmentSize(true), 8U);
    EXPECT_EQ(lastSegmentSize(false), 16U);
}

TEST(SampleTextTest, UpperCase) {
    EXPECT_EQ(ToUpper(u"aäÿ÷ ßçжёŀαω"), u"AÄŸ÷ ßÇЖЁĿΑΩ");
    EXPECT_EQ(ToWindows1252("a – € é Ж"), "a \x96 \x80 \xE9 ?");
    EXPECT_THROW(ToUtf16("\xFF"), std::invalid_argument);
    EXPECT_THROW(ToUtf16("\xE2\x82"), std::invalid_argument);
}

TEST(TimesTest, CalendarDates) {
    EXPECT_EQ(FileTimeOf({1601, 1, 1}), 0U);
    EXPECT_EQ(FileTimeOf({1970, 1, 1}), 116444736000000000U);
    // 2009-11-27 17:42:08: (29 years, month 11, day 27) and (17 hours, 42 minutes, 4 double seconds).
    EXPECT_EQ(FatTimeOf(FileTimeOf({2009, 11, 27, 17, 42, 9})),
              (17U << 27U | 42U << 21U | 4U << 16U) | (29U << 9U | 11U << 5U | 27U));
    EXPECT_EQ(FatTimeOf(0), 0U);
}

}  // namespace
}  // namespace ostrevin::samples
