// The program's own readers, held against independent readers on the same files.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Dates.h"
#include "platform/volume/lnk/Shortcut.h"
#include "platform/volume/regf/Hive.h"
#include "sources/IEHistoryList.h"
#include "tests/samples/HiveOracle.h"
#include "tests/samples/Oracle.h"
#include "tests/support/BytesFile.h"
#include "tests/support/MemoryPlatform.h"
#include "tools/sample-volume/SampleVolume.h"

namespace ostrevin::samples {
namespace {

using Lines = std::vector<std::string>;

template <typename Content, typename Check>
void ForEachFile(const Check& check) {
    const SampleVolume volume = MakeSampleVolume({});
    std::size_t count = 0;
    for (const SampleFile& file : volume.Files()) {
        if (std::holds_alternative<Content>(file.content)) {
            SCOPED_TRACE(file.path);
            check(BytesOf(file));
            ++count;
        }
    }
    EXPECT_GE(count, 4U);
}

HiveKey TreeOf(const regf::Key& key) {
    HiveKey tree;
    tree.name = key.Name();
    tree.className = key.ClassName();
    tree.lastWritten = key.LastWritten();
    for (const regf::Value& value : key.Values()) {
        tree.Add(value.Name(), value.Type(), value.Data());
    }
    for (const regf::Key& subKey : key.SubKeys()) {
        tree.subKeys.push_back(TreeOf(subKey));
    }
    return tree;
}

TEST(ReadersTest, HivesAreReadAsHivexReadsThem) {
    OSTREVIN_NEED("hivexsh", "libhivex-bin");
    ForEachFile<HiveFile>([](const std::vector<std::byte>& bytes) {
        const auto hive = regf::Hive::Open(std::make_unique<BytesFile>(bytes), {});
        ExpectHivexAgrees(TreeOf(hive->Root()), bytes);
    });
}

TEST(ReadersTest, HivesAreReadAsRegfexportReadsThem) {
    OSTREVIN_NEED("regfexport", "libregf-utils");
    ForEachFile<HiveFile>([](const std::vector<std::byte>& bytes) {
        const auto hive = regf::Hive::Open(std::make_unique<BytesFile>(bytes), {});
        ExpectRegfexportAgrees(TreeOf(hive->Root()), bytes);
    });
}

Lines LineOf(const std::string& text) {
    return text.empty() ? Lines() : Lines{text};
}

TEST(ReadersTest, ShortcutsAreReadAsLnkinfoReadsThem) {
    OSTREVIN_NEED("lnkinfo", "liblnk-utils");
    ForEachFile<Link>([](const std::vector<std::byte>& bytes) {
        MemoryPlatform platform;
        lnk::ShellHost host;
        host.decodeAnsi = [&](std::string_view text) { return platform.DecodeAnsi(text); };
        const auto file = lnk::ReadShellLink(bytes, host.decodeAnsi);
        ASSERT_TRUE(file.has_value());
        const lnk::Shortcut shortcut = lnk::ResolveShortcut(*file, host);
        const TestFile onDisk(bytes);
        const Lines said = LinesOf({"lnkinfo", onDisk.Path()});
        EXPECT_EQ(After(said, "\tDescription\t\t\t:"), LineOf(shortcut.description));
        EXPECT_EQ(After(said, "\tWorking directory\t\t:"), LineOf(shortcut.workingDirectory));
        EXPECT_EQ(After(said, "\tCommand line arguments\t\t:"), LineOf(shortcut.arguments));
        EXPECT_EQ(After(said, "\tIcon index\t\t\t:"), Lines{std::to_string(shortcut.iconIndex)});
        const Lines local = After(said, "\tLocal path\t\t\t:");
        if (!local.empty()) {
            EXPECT_EQ(local, Lines{shortcut.target});
        }
        EXPECT_EQ(After(said, "\tNetwork path\t\t\t:"), LineOf(shortcut.networkTarget));
    });
}

/// 400 records as a browser writes them, with addresses of all lengths.
std::vector<IndexRecord> PlainRecords() {
    std::vector<IndexRecord> records;
    for (int i = 0; i < 400; ++i) {
        IndexRecord record;
        record.accessed = std::uint64_t{128938729380000000} + static_cast<std::uint64_t>(i) * 10000000U;
        record.modified = record.accessed;
        record.address = "Visited: anna@http://host" + std::to_string(i) + ".example/" +
                         std::string(static_cast<std::size_t>(i % 250), 'p');
        // The block behind an address that ends with its block is passed over on purpose; here none does.
        while (AddressEndInBlock(record.address) == 0 ||
               AddressEndInBlock(record.address) == kIndexBlock - 1) {
            record.address += "x";
        }
        records.push_back(std::move(record));
    }
    return records;
}

std::string Visit(const std::string& address, int minute, int second) {
    return std::string(address)
        .append(" ")
        .append(std::to_string(minute))
        .append(":")
        .append(std::to_string(second));
}

TEST(ReadersTest, IndexesAreReadAsMsiecfexportReadsThem) {
    OSTREVIN_NEED("msiecfexport", "libmsiecf-utils");
    const std::vector<std::byte> bytes = WriteIndex(PlainRecords(), {});
    MemoryPlatform platform;
    platform.AddFile("C:\\Documents and Settings\\anna\\Cookies\\index.dat", bytes);
    IEHistoryList list(platform, "anna");
    list.LoadIEHistory("anna");
    Lines urls;
    for (std::int32_t i = 0; i < list.Count(); ++i) {
        const SystemTime civil = CivilFromDate(list.DateAccessed(i));
        urls.push_back(Visit("Visited: anna@" + list.URL(i), civil.minute, civil.second));
    }
    const TestFile onDisk(bytes);
    const Lines said = LinesOf({"msiecfexport", onDisk.Path()});
    Lines expected = After(said, "Location\t\t:");
    const Lines times = After(said, "Primary time\t\t:");
    ASSERT_EQ(expected.size(), times.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        // Such as: Aug 04, 2009 15:22:18.000000000
        const std::size_t colon = times[i].find(':');
        const int minute = std::stoi(times[i].substr(colon + 1, 2));
        const int second = std::stoi(times[i].substr(colon + 4, 2));
        expected[i] = Visit(expected[i], minute, second);
    }
    EXPECT_EQ(expected.size(), 400U);
    std::sort(urls.begin(), urls.end());
    std::sort(expected.begin(), expected.end());
    ExpectSameLines(urls, expected);
}

}  // namespace
}  // namespace ostrevin::samples
