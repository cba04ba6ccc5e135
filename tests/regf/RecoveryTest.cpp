#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "platform/volume/regf/Hive.h"
#include "tests/regf/HiveBytes.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/DirtyHive.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::regf {
namespace {

using samples::DirtyHive;
using samples::HiveKey;
using samples::MakeDirtyHive;
using samples::MakeDirtyHiveWithEntries;
using samples::WriteHive;
using ByteVector = std::vector<std::byte>;

constexpr std::uint64_t kWritten = 0x01D29627F1C8A860;
constexpr std::size_t kSector = 512;

constexpr std::size_t kTimestampOfBase = 12;
constexpr std::size_t kTimestampOfFirstBin = 4096 + 20;

/// The states of a hive in time: each has more in it than the one before.
ByteVector State(int n) {
    HiveKey root = SmallHive();
    for (int i = 0; i < n; ++i) {
        HiveKey& key = root.Key("Software\\Key " + std::to_string(i));
        key.SetString("state", std::to_string(n));
        key.SetBinary("more", Pattern(2000));
    }
    return WriteHive(root, Options([](auto& o) { o.lastWritten = kWritten; }));
}

std::string Read(const ByteVector& hive) {
    return Dump(*OpenHive(hive, {}));
}

/// Expects that a dirty hive with these logs is read like a clean one.
void ExpectRecovered(const ByteVector& primary, const LogBytes& logs, const ByteVector& expected) {
    ASSERT_EQ(OpenError(primary, logs), "");
    const auto hive = OpenHive(primary, logs);
    EXPECT_EQ(hive->HowRecovered(), Recovery::FromLogs);
    EXPECT_EQ(Dump(*hive), Read(expected));
}

void ExpectNotRecovered(const ByteVector& primary, const LogBytes& logs, const char* why) {
    const auto hive = OpenHive(primary, logs);
    EXPECT_EQ(hive->HowRecovered(), Recovery::DirtyNoLogs) << why;
    EXPECT_EQ(Dump(*hive), Dump(*OpenHive(primary, {}))) << why;
}

/// Changes 32-bit fields of a base block, and its checksum.
ByteVector WithField(ByteVector file, std::size_t place, std::uint32_t value) {
    HiveBytes bytes(std::move(file));
    bytes.PutU32(place, value);
    bytes.UpdateChecksum();
    return bytes.View();
}

// --- Logs with a dirty vector

TEST(RecoveryFromDirtyVector, CompletesAWriteCutOffAnywhere) {
    const ByteVector before = State(1);
    const ByteVector after = State(6);
    for (std::size_t pagesWritten = 0; pagesWritten < 20; ++pagesWritten) {
        const DirtyHive dirty = MakeDirtyHive(before, after, pagesWritten);
        ExpectRecovered(dirty.primary, {dirty.log, {}, {}}, after);
        ExpectRecovered(dirty.primary, {{}, dirty.log, {}}, after);
        ExpectRecovered(dirty.primary, {{}, {}, dirty.log}, after);
    }
}

TEST(RecoveryFromDirtyVector, MakesTheHiveLargerThanItsFile) {
    const ByteVector before = State(0);
    const ByteVector after = State(40);
    ASSERT_GT(after.size(), before.size());
    DirtyHive dirty = MakeDirtyHive(before, after);
    dirty.primary.resize(before.size());
    ExpectRecovered(dirty.primary, {dirty.log, {}, {}}, after);
}

TEST(RecoveryFromDirtyVector, LeavesACleanHiveAlone) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(2));
    const auto hive = OpenHive(State(1), {dirty.log, {}, {}});
    EXPECT_EQ(hive->HowRecovered(), Recovery::None);
    EXPECT_EQ(Dump(*hive), Read(State(1)));
}

TEST(RecoveryFromDirtyVector, TakesADamagedBaseBlockFromTheLog) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    HiveBytes checksum(dirty.primary);
    checksum.PutU32(508, ~checksum.U32(508));
    ExpectRecovered(checksum.View(), {dirty.log, {}, {}}, State(6));

    HiveBytes zeroed(dirty.primary);
    std::fill_n(zeroed.Change().begin(), kSector, std::byte{0});
    ExpectRecovered(zeroed.View(), {dirty.log, {}, {}}, State(6));

    // The first bin has to tell that the file is a hive.
    HiveBytes noBin = zeroed;
    noBin.PutText(4096, "nibh");
    EXPECT_EQ(OpenError(noBin.View(), {dirty.log, {}, {}}),
              "The file is not a registry hive: it does not begin with \"regf\".");
}

// The write was cut off before the first bin, which has the time of the write before.
TEST(RecoveryFromDirtyVector, TakesADamagedBaseBlockFromALogOfALaterTime) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    HiveBytes earlier(dirty.primary);
    earlier.PutU32(kTimestampOfFirstBin, 1);
    HiveBytes checksum = earlier;
    checksum.PutU32(508, ~checksum.U32(508));
    HiveBytes version = earlier;
    version.PutU32(20, 0xEEEEEEEE);
    HiveBytes rootCell = earlier;
    rootCell.PutU32(36, 0x7FFFFFF8);
    HiveBytes zeroed = earlier;
    std::fill_n(zeroed.Change().begin(), kSector, std::byte{0});
    for (const HiveBytes& damaged : {checksum, version, rootCell, zeroed}) {
        ExpectRecovered(damaged.View(), {dirty.log, {}, {}}, State(6));
        ExpectRecovered(damaged.View(), {{}, {}, dirty.log}, State(6));
        EXPECT_TRUE(OpenHive(damaged.View(), {dirty.log, {}, {}})->HadDamagedBaseBlock());
    }
    ExpectNotRecovered(WithField(earlier.View(), kTimestampOfBase, 2), {dirty.log, {}, {}},
                       "a sound base block tells which log fits");
}

TEST(RecoveryFromDirtyVector, OfADamagedBaseBlockPrefersTheLatestLog) {
    const DirtyHive old = MakeDirtyHive(State(1), State(3));
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    const ByteVector oldLog = WithField(old.log, kTimestampOfBase, 2);
    HiveBytes primary(dirty.primary);
    primary.PutU32(508, ~primary.U32(508));
    primary.PutU32(kTimestampOfFirstBin, 1);
    ExpectRecovered(primary.View(), {oldLog, oldLog, dirty.log}, State(6));
    ExpectRecovered(primary.View(), {dirty.log, oldLog, {}}, State(6));
    primary.PutU32(kTimestampOfFirstBin, 2);
    ExpectRecovered(primary.View(), {dirty.log, oldLog, {}}, State(3));
}

TEST(RecoveryFromDirtyVector, OfADamagedBaseBlockLeavesALaterHiveAlone) {
    const DirtyHive old = MakeDirtyHive(State(1), State(3));
    HiveBytes primary(State(6));
    primary.PutU32(508, ~primary.U32(508));
    const LogBytes logs = {WithField(old.log, kTimestampOfBase, 1), {}, {}};
    ExpectNotRecovered(primary.View(), logs, "the log is older than the first bin");
    EXPECT_EQ(Dump(*OpenHive(primary.View(), logs)), Read(State(6)));
}

TEST(RecoveryFromDirtyVector, OfADamagedBaseBlockTakesNoLogThatBreaksABin) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    HiveBytes broken(dirty.log);
    const std::size_t firstPage = 2 * kSector;
    ASSERT_EQ(broken.U32(firstPage), 0x6E696268U);
    broken.PutU32(firstPage + 8, 0x20000);  // the size of the first bin
    const ByteVector later = WithField(broken.View(), kTimestampOfBase + 4, 0x02000000);
    HiveBytes primary(dirty.primary);
    primary.PutU32(508, ~primary.U32(508));
    primary.PutU32(kTimestampOfFirstBin, 1);
    ExpectRecovered(primary.View(), {{}, later, dirty.log}, State(6));
}

TEST(RecoveryFromDirtyVector, NeedsALogOfThisWrite) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    const auto expectUnfit = [&](const ByteVector& log, const char* why) {
        ExpectNotRecovered(dirty.primary, {log, {}, {}}, why);
        ExpectNotRecovered(dirty.primary, {{}, log, log}, why);
    };
    expectUnfit({}, "empty");
    expectUnfit(WithField(dirty.log, kTimestampOfBase, 1), "log of another time or hive");
    expectUnfit(WithField(dirty.log, 8, 99), "the log was not written to its end");
    expectUnfit(WithField(dirty.log, 28, 0), "a primary file");
    expectUnfit(WithField(dirty.log, 20, 2), "unknown version");
    expectUnfit(WithField(dirty.log, 32, 2), "unknown format");
    expectUnfit(WithField(dirty.log, 40, 0xFFFFF000), "the bitmap is missing");
    expectUnfit(WithField(dirty.log, 40, 4097), "odd size of the bins");
    expectUnfit(WithField(dirty.log, 44, 0), "no sector size");
    expectUnfit(WithField(dirty.log, 44, 9), "unknown sector size");

    HiveBytes checksum(dirty.log);
    checksum.PutU32(508, ~checksum.U32(508));
    expectUnfit(checksum.View(), "wrong checksum");
    HiveBytes signature(dirty.log);
    signature.PutText(kSector, "TRID");
    expectUnfit(signature.View(), "no dirty vector");
    for (std::size_t size = 0; size < dirty.log.size(); size += 509) {
        expectUnfit({dirty.log.begin(), dirty.log.begin() + static_cast<std::ptrdiff_t>(size)}, "torn");
    }
}

TEST(RecoveryFromDirtyVector, FindsTheLogThatFits) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    const ByteVector other = WithField(dirty.log, kTimestampOfBase, 1);
    ExpectRecovered(dirty.primary, {other, other, dirty.log}, State(6));
    ExpectRecovered(dirty.primary, {dirty.log, other, {}}, State(6));
    ExpectRecovered(dirty.primary, {other, dirty.log, other}, State(6));
}

TEST(RecoveryFromDirtyVector, ReadsLogsOfWindows2000) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    ExpectRecovered(dirty.primary, {WithField(dirty.log, 28, 2), {}, {}}, State(6));
}

TEST(RecoveryFromDirtyVector, ReadsLogsOfDisksWithLargeSectors) {
    const DirtyHive dirty = MakeDirtyHive(State(1), State(6));
    // The parts begin at sectors of 4096 bytes: the base block, the vector of less than 512 bytes, the pages.
    samples::ByteBuffer log;
    log.Bytes(std::span(dirty.log).first(kSector));
    log.PadTo(4096);
    log.Bytes(std::span(dirty.log).subspan(kSector, kSector));
    log.PadTo(8192);
    log.Bytes(std::span(dirty.log).subspan(2 * kSector));
    ExpectRecovered(dirty.primary, {WithField(log.Take(), 44, 8), {}, {}}, State(6));
}

TEST(RecoveryFromDirtyVector, StopsAtABinThatIsNotSound) {
    const ByteVector before = State(1);
    const ByteVector after = State(6);
    const DirtyHive dirty = MakeDirtyHive(before, after);
    HiveBytes log(dirty.log);
    const std::size_t firstPage = 2 * kSector;
    ASSERT_EQ(log.U32(firstPage), 0x6E696268U);
    log.PutText(firstPage, "nibh");
    const auto hive = OpenHive(dirty.primary, {log.View(), {}, {}});
    EXPECT_EQ(hive->HowRecovered(), Recovery::FromLogs);
    EXPECT_EQ(Dump(*hive), Dump(*OpenHive(dirty.primary, {})));
}

TEST(RecoveryFromDirtyVector, NeverLeavesAHole) {
    constexpr std::uint32_t kBinsSize = 1U << 30U;
    DirtyHive dirty = MakeDirtyHive(State(1), State(1));
    // A page at the end of a gigabyte.
    samples::ByteBuffer log;
    log.Bytes(std::span(dirty.log).first(kSector));
    log.Text("DIRT");
    log.PadTo(kSector + 4 + kBinsSize / kSector / 8 - 1);
    log.U8(0x80);
    log.Align(kSector);
    log.PadTo(log.Size() + kSector);
    ExpectNotRecovered(dirty.primary, {WithField(log.Take(), 40, kBinsSize), {}, {}}, "a hole");
}

// --- Logs with entries

std::vector<ByteVector> States(int count) {
    std::vector<ByteVector> states;
    states.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        states.push_back(State(3 * i));
    }
    return states;
}

LogBytes LogsOf(const DirtyHive& dirty) {
    return {{}, dirty.log, dirty.log2};
}

/// The places of the entries of a log.
std::vector<std::size_t> Entries(const ByteVector& log) {
    std::vector<std::size_t> places;
    for (std::size_t at = kSector; at < log.size(); at += samples::U32At(log, at + 4)) {
        places.push_back(at);
    }
    return places;
}

/// Gives an entry the hashes that belong to it.
void UpdateHashes(HiveBytes& log, std::size_t entry) {
    const std::uint32_t size = log.U32(entry + 4);
    const auto put = [&](std::size_t place, std::uint64_t hash) {
        log.PutU32(place, static_cast<std::uint32_t>(hash));
        log.PutU32(place + 4, static_cast<std::uint32_t>(hash >> 32U));
    };
    const std::span<const std::byte> bytes(log.View());
    put(entry + 24, samples::Marvin32(bytes.subspan(entry + 40, size - 40), samples::kLogSeed));
    put(entry + 32, samples::Marvin32(bytes.subspan(entry, 32), samples::kLogSeed));
}

TEST(RecoveryFromEntries, AppliesThemFromBothLogs) {
    const auto states = States(5);
    for (std::size_t inFirst = 0; inFirst <= 4; ++inFirst) {
        const DirtyHive dirty = MakeDirtyHiveWithEntries(states, inFirst);
        ExpectRecovered(dirty.primary, LogsOf(dirty), states.back());
        // The logs take turns: either may hold the earlier entries.
        ExpectRecovered(dirty.primary, {{}, dirty.log2, dirty.log}, states.back());
    }
}

TEST(RecoveryFromEntries, MakesTheHiveLarger) {
    const std::vector<ByteVector> states = {State(0), State(50)};
    ASSERT_GT(states[1].size(), states[0].size());
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 1);
    ASSERT_EQ(dirty.primary.size(), states[0].size());
    ExpectRecovered(dirty.primary, LogsOf(dirty), states[1]);
}

TEST(RecoveryFromEntries, StopsAtAnEntryThatIsNotSound) {
    const auto states = States(4);
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 3);
    const std::size_t second = Entries(dirty.log).at(1);
    for (const std::size_t place :
         {std::size_t{0}, std::size_t{4}, std::size_t{12}, std::size_t{16}, std::size_t{20}, std::size_t{24},
          std::size_t{32}, std::size_t{40}, std::size_t{500}}) {
        HiveBytes log(dirty.log);
        log.PutU32(second + place, log.U32(second + place) ^ 0x1000U);
        ExpectRecovered(dirty.primary, {{}, log.View(), {}}, states[1]);
    }
    HiveBytes torn(dirty.log);
    torn.Change().resize(Entries(dirty.log).at(2) - 1);
    ExpectRecovered(dirty.primary, {{}, torn.View(), {}}, states[1]);
}

TEST(RecoveryFromEntries, StopsAtAnEntryWithWrongFieldsAndRightHashes) {
    const auto states = States(4);
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 3);
    const std::size_t second = Entries(dirty.log).at(1);
    struct Case {
        std::size_t place;
        std::uint32_t value;
        const char* what;
    };
    for (const Case& c : {Case{12, 99, "sequence number out of turn"}, Case{16, 0, "no hive bins"},
                          Case{16, 4097, "odd size of the hive bins"},
                          Case{20, 0x7FFFFFFF, "more pages than there is room for"},
                          Case{40, 0xFFFFF000, "page outside of the hive bins"},
                          Case{44, 0xFFFFFFFF, "page larger than the entry"}}) {
        HiveBytes log(dirty.log);
        log.PutU32(second + c.place, c.value);
        UpdateHashes(log, second);
        SCOPED_TRACE(c.what);
        ExpectRecovered(dirty.primary, {{}, log.View(), {}}, states[1]);
    }
    HiveBytes hole(dirty.log);
    hole.PutU32(second + 16, 0xFFFFF000);
    hole.PutU32(second + 40, 0xF0000000);
    UpdateHashes(hole, second);
    ExpectRecovered(dirty.primary, {{}, hole.View(), {}}, states[1]);
}

TEST(RecoveryFromEntries, DoesNotSkipEntriesBetweenTheLogs) {
    const auto states = States(5);
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 2);
    HiveBytes log1(dirty.log);
    const std::size_t second = Entries(dirty.log).at(1);
    log1.PutU32(second + 24, 0);
    ExpectRecovered(dirty.primary, {{}, log1.View(), dirty.log2}, states[1]);

    const std::size_t first = Entries(dirty.log).at(0);
    log1.PutU32(first + 24, 0);
    ExpectNotRecovered(dirty.primary, {{}, log1.View(), dirty.log2}, "first entry is torn");
}

TEST(RecoveryFromEntries, LeavesOldEntriesAlone) {
    const auto states = States(4);
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 2);
    // What the first log holds was written out: the primary file has its state and its numbers.
    const std::uint32_t sequence = samples::U32At(dirty.log2, 4);
    ByteVector primary = WithField(states[2], 8, sequence);
    primary = WithField(primary, 4, sequence + 1);
    ExpectRecovered(primary, LogsOf(dirty), states[3]);
    ExpectNotRecovered(primary, {{}, dirty.log, {}}, "all entries are old");
}

TEST(RecoveryFromEntries, TakesADamagedBaseBlockFromTheLaterLog) {
    const auto states = States(4);
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 2);
    ByteVector primary = states[2];
    std::fill_n(primary.begin(), kSector, std::byte{0});
    ExpectRecovered(primary, LogsOf(dirty), states[3]);
    ExpectRecovered(primary, {{}, dirty.log2, dirty.log}, states[3]);
}

TEST(RecoveryFromEntries, NeedsASoundLog) {
    const DirtyHive dirty = MakeDirtyHiveWithEntries(States(2), 1);
    ExpectNotRecovered(dirty.primary, {dirty.log, {}, {}}, "there are only two such logs");
    ExpectNotRecovered(dirty.primary, {{}, WithField(dirty.log, 8, 99), {}}, "not written to its end");
    HiveBytes checksum(dirty.log);
    checksum.PutU32(508, ~checksum.U32(508));
    ExpectNotRecovered(dirty.primary, {{}, checksum.View(), {}}, "wrong checksum");
    ExpectNotRecovered(dirty.primary, {{}, ByteVector(dirty.log.begin(), dirty.log.begin() + 700), {}},
                       "torn");
    ExpectNotRecovered(WithField(dirty.primary, 8, 1000), LogsOf(dirty), "log of an earlier time");
}

}  // namespace
}  // namespace ostrevin::regf
