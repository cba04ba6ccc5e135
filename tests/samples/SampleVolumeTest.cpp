#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <variant>

#include "tests/samples/HiveOracle.h"
#include "tests/samples/IndexOracle.h"
#include "tests/samples/LinkOracle.h"
#include "tests/samples/Oracle.h"
#include "tools/sample-volume/Machine.h"
#include "tools/sample-volume/Profile.h"
#include "tools/sample-volume/SampleVolume.h"
#include "tools/writers/ByteBuffer.h"

namespace ostrevin::samples {
namespace {

const SampleVolume& Volume() {
    static const SampleVolume volume = MakeSampleVolume({});
    return volume;
}

/// Calls check(content, bytes) for every file of a kind; says which file when something fails.
template <typename Content, typename Check>
void ForEach(const Check& check) {
    std::size_t count = 0;
    for (const SampleFile& file : Volume().Files()) {
        if (const auto* const content = std::get_if<Content>(&file.content)) {
            SCOPED_TRACE(file.path);
            check(*content, BytesOf(file));
            ++count;
        }
    }
    EXPECT_GE(count, 4U);
}

/// What the primary file itself shows.
const HiveKey& Shown(const HiveFile& hive) {
    return hive.before ? *hive.before : hive.root;
}

TEST(SampleVolumeTest, HivexAgrees) {
    OSTREVIN_NEED("hivexsh", "libhivex-bin");
    ForEach<HiveFile>([](const HiveFile& hive, const std::vector<std::byte>& bytes) {
        ExpectHivexAgrees(Shown(hive), bytes);
    });
}

TEST(SampleVolumeTest, ReglookupAgrees) {
    OSTREVIN_NEED("reglookup", "reglookup");
    ForEach<HiveFile>([](const HiveFile& hive, const std::vector<std::byte>& bytes) {
        ExpectReglookupAgrees(Shown(hive), hive.before ? OptionsBefore(hive) : hive.options, bytes);
    });
}

TEST(SampleVolumeTest, RegfexportAgrees) {
    OSTREVIN_NEED("regfexport", "libregf-utils");
    ForEach<HiveFile>([](const HiveFile& hive, const std::vector<std::byte>& bytes) {
        ExpectRegfexportAgrees(Shown(hive), bytes);
    });
}

TEST(SampleVolumeTest, LnkinfoAgrees) {
    OSTREVIN_NEED("lnkinfo", "liblnk-utils");
    ForEach<Link>(
        [](const Link& link, const std::vector<std::byte>& bytes) { ExpectLnkinfoAgrees(link, bytes); });
}

TEST(SampleVolumeTest, MsiecfexportAgrees) {
    OSTREVIN_NEED("msiecfexport", "libmsiecf-utils");
    ForEach<IndexFile>([](const IndexFile& index, const std::vector<std::byte>& bytes) {
        ExpectMsiecfexportAgrees(index.records, bytes);
    });
}

HiveKey KeyOf(const SampleVolume& volume, std::string_view hive, std::string_view key) {
    const SampleFile* const file = volume.Find(hive);
    if (file == nullptr) {
        throw std::out_of_range("no such hive: " + std::string(hive));
    }
    HiveKey root = std::get<HiveFile>(file->content).root;
    return root.Key(key);
}

TEST(SampleVolumeTest, EveryProfileHasItsAccountAndItsHive) {
    const SampleVolume volume = MakeSampleVolume({.extraProfiles = 3});
    const HiveKey list = KeyOf(volume, "WINDOWS/system32/config/software",
                               "Microsoft\\Windows NT\\CurrentVersion\\ProfileList");
    EXPECT_EQ(list.subKeys.size(), 3U + 5U + 3U);
    for (const std::string name : {"anna", "felix", "Светлана", "M.Keller", "LocalService", "user3"}) {
        EXPECT_NE(volume.Find("Documents and Settings/" + name + "/NTUSER.DAT"), nullptr) << name;
    }
    const HiveKey names = KeyOf(volume, "WINDOWS/system32/config/SAM", "SAM\\Domains\\Account\\Users\\Names");
    for (const std::string name : {"anna", "felix", "Светлана", "user3"}) {
        EXPECT_TRUE(std::any_of(names.subKeys.begin(), names.subKeys.end(), [&](const HiveKey& key) {
            return key.name == name;
        })) << name;
    }
}

TEST(SampleVolumeTest, TheDirtyHiveLacksWhatItsLogHolds) {
    const SampleFile* const file = Volume().Find("Documents and Settings/felix/NTUSER.DAT");
    ASSERT_NE(file, nullptr);
    HiveFile hive = std::get<HiveFile>(file->content);
    ASSERT_TRUE(hive.before);
    const std::string counts = std::string(kFirstUserAssist) + "\\Count";
    EXPECT_EQ(hive.before->Key(counts).values.size() + 2, hive.root.Key(counts).values.size());
    // The second key shows only because it holds more values than the first one.
    EXPECT_GT(hive.root.Key(kSecondUserAssist).values.size(), hive.root.Key(counts).values.size() + 3);
}

TEST(SampleVolumeTest, OptionsMakeItLarger) {
    const SampleVolume volume = MakeSampleVolume({.extraUserAssistValues = 500, .extraIndexRecords = 700});
    const std::string counts = std::string(kFirstUserAssist) + "\\Count";
    EXPECT_GT(KeyOf(volume, "Documents and Settings/anna/NTUSER.DAT", counts).values.size(), 500U);
    const SampleFile* const index =
        volume.Find("Documents and Settings/anna/Local Settings/History/History.IE5/index.dat");
    ASSERT_NE(index, nullptr);
    EXPECT_GT(std::get<IndexFile>(index->content).records.size(), 700U);
}

TEST(SampleVolumeTest, IsTheSameEveryTime) {
    const SampleVolume again = MakeSampleVolume({});
    ASSERT_EQ(again.Files().size(), Volume().Files().size());
    for (std::size_t i = 0; i < again.Files().size(); ++i) {
        EXPECT_EQ(again.Files()[i].path, Volume().Files()[i].path);
        EXPECT_EQ(BytesOf(again.Files()[i]), BytesOf(Volume().Files()[i])) << again.Files()[i].path;
    }
}

TEST(SampleVolumeTest, IdentifiersInBinaryForm) {
    const std::vector<std::byte> sid = SidBytes("S-1-5-21-4294967295-2-3-1003");
    ByteBuffer expected;
    expected.U8(1);
    expected.U8(5);
    expected.U32(0);
    expected.U8(0);
    expected.U8(5);
    for (const std::uint32_t part : {21U, 4294967295U, 2U, 3U, 1003U}) {
        expected.U32(part);
    }
    EXPECT_EQ(sid, expected.View());
    EXPECT_THROW(SidBytes("S-1-5-x"), std::invalid_argument);
}

}  // namespace
}  // namespace ostrevin::samples
