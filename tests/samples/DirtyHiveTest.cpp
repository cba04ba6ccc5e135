#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/samples/HiveOracle.h"
#include "tests/samples/Oracle.h"
#include "tests/support/RealLogEntry.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/DirtyHive.h"
#include "tools/writers/HiveWriter.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

using Bytes = std::vector<std::byte>;

HiveKey Tree(unsigned extra) {
    HiveKey root;
    root.name = "Root";
    HiveKey& key = root.Key("Software\\Counted");
    for (unsigned i = 0; i < 400 + extra; ++i) {
        key.Add("value " + std::to_string(i), 3, Bytes(20, static_cast<std::byte>(i)));
    }
    return root;
}

Bytes State(unsigned extra) {
    return WriteHive(Tree(extra), {.lastWritten = FileTimeOf({2009, 8, 4}) + extra * kSecond,
                                   .primarySequence = 20,
                                   .secondarySequence = 20});
}

std::size_t PageOf(const Bytes& log) {
    return U32At(log, 512) == 0x54524944 ? 512 : 0;
}

/// Puts the pages of a log of the older layout into the primary file.
Bytes Apply(Bytes primary, const Bytes& log) {
    const std::size_t pages = U32At(log, 40) / 512;
    std::size_t next = 512 + (4 + pages / 8 + 511) / 512 * 512;
    for (std::size_t page = 0; page < pages; ++page) {
        const auto bits = std::to_integer<unsigned>(log.at(516 + page / 8));
        if ((bits >> (page % 8) & 1U) != 0) {
            std::copy_n(log.begin() + static_cast<std::ptrdiff_t>(next), 512,
                        primary.begin() + static_cast<std::ptrdiff_t>(4096 + page * 512));
            next += 512;
        }
    }
    EXPECT_EQ(next, log.size());
    return primary;
}

bool SameBins(const Bytes& a, const Bytes& b) {
    return std::equal(a.begin() + 4096, a.end(), b.begin() + 4096, b.end());
}

class DirtyHiveTest : public ::testing::TestWithParam<std::size_t> {};

TEST_P(DirtyHiveTest, LogLeadsFromThePrimaryFileToTheNewState) {
    const Bytes before = State(0);
    const Bytes after = State(60);
    ASSERT_LE(before.size(), after.size());
    const DirtyHive dirty = MakeDirtyHive(before, after, GetParam());
    EXPECT_EQ(U32At(dirty.primary, 4), 21U);
    EXPECT_EQ(U32At(dirty.primary, 8), 20U);
    EXPECT_EQ(U32At(dirty.primary, 508), BaseBlockChecksum(dirty.primary));
    EXPECT_FALSE(SameBins(dirty.primary, after));

    EXPECT_EQ(PageOf(dirty.log), 512U);
    EXPECT_EQ(U32At(dirty.log, 4), 21U);
    EXPECT_EQ(U32At(dirty.log, 8), 21U);
    EXPECT_EQ(U32At(dirty.log, 28), 1U);
    EXPECT_EQ(U32At(dirty.log, 508), BaseBlockChecksum(dirty.log));
    // The log fits when the time of the last write is that of the primary file.
    EXPECT_TRUE(std::equal(dirty.log.begin() + 12, dirty.log.begin() + 20, dirty.primary.begin() + 12));
    EXPECT_TRUE(SameBins(Apply(dirty.primary, dirty.log), after));
}

INSTANTIATE_TEST_SUITE_P(PagesWritten, DirtyHiveTest, ::testing::Values(0, 1, 2));

TEST(DirtyHiveTest, ThePrimaryFileShowsTheOldState) {
    OSTREVIN_NEED("hivexsh", "libhivex-bin");
    // The reader refuses a hive that ends with an empty bin, so this one must not grow.
    ASSERT_EQ(State(0).size(), State(1).size());
    const DirtyHive dirty = MakeDirtyHive(State(0), State(1));
    ExpectHivexAgrees(Tree(0), dirty.primary);
}

/// Applies the entries of a log of the newer layout; checks each on the way.
void ApplyEntries(Bytes& primary, const Bytes& log, std::uint32_t& sequence) {
    EXPECT_EQ(U32At(log, 28), 6U);
    EXPECT_EQ(U32At(log, 508), BaseBlockChecksum(log));
    for (std::size_t at = 512; at < log.size(); at += U32At(log, at + 4)) {
        const auto entry = std::span(log).subspan(at, U32At(log, at + 4));
        ByteBuffer hashes;
        hashes.U64(Marvin32(entry.subspan(40), kLogSeed));
        hashes.U64(Marvin32(entry.first(32), kLogSeed));
        EXPECT_TRUE(std::equal(hashes.View().begin(), hashes.View().end(), entry.begin() + 24));
        EXPECT_EQ(U32At(entry, 12), sequence++);
        primary.resize(4096 + U32At(entry, 16));
        std::size_t data = 40 + std::size_t{8} * U32At(entry, 20);
        for (std::size_t page = 0; page < U32At(entry, 20); ++page) {
            const std::size_t size = U32At(entry, 44 + page * 8);
            std::copy_n(entry.begin() + static_cast<std::ptrdiff_t>(data), size,
                        primary.begin() + 4096 + U32At(entry, 40 + page * 8));
            data += size;
        }
    }
}

TEST(DirtyHiveTest, EntriesLeadThroughAllStates) {
    const std::array<Bytes, 4> states = {State(0), State(1), State(300), State(301)};
    const DirtyHive dirty = MakeDirtyHiveWithEntries(states, 2);
    EXPECT_EQ(U32At(dirty.primary, 4), 21U);
    EXPECT_EQ(U32At(dirty.primary, 8), 20U);
    EXPECT_TRUE(SameBins(dirty.primary, states[0]));
    Bytes recovered = dirty.primary;
    std::uint32_t sequence = 21;
    ApplyEntries(recovered, dirty.log, sequence);
    EXPECT_TRUE(SameBins(recovered, states[2]));
    ApplyEntries(recovered, dirty.log2, sequence);
    EXPECT_TRUE(SameBins(recovered, states[3]));
    EXPECT_EQ(sequence, 24U);
}

TEST(DirtyHiveTest, RefusesWhatIsNoHive) {
    EXPECT_THROW(MakeDirtyHive(Bytes(100), State(0)), std::invalid_argument);
    const std::array<Bytes, 1> one = {State(0)};
    EXPECT_THROW(MakeDirtyHiveWithEntries(one, 1), std::invalid_argument);
}

TEST(Marvin32Test, KnownHashes) {
    // Published test vectors of the hash.
    constexpr std::uint64_t kSeed = 0x004FB61A001BDBCC;
    const auto hash = [](std::initializer_list<int> data) {
        Bytes bytes;
        for (const int byte : data) {
            bytes.push_back(static_cast<std::byte>(byte));
        }
        return Marvin32(bytes, kSeed);
    };
    EXPECT_EQ(hash({}), 0x30ED35C100CD3C7DU);
    EXPECT_EQ(hash({0xAF}), 0x48E73FC77D75DDC1U);
    EXPECT_EQ(hash({0xE7, 0x0F}), 0xB5F6E1FC485DBFF8U);
    EXPECT_EQ(hash({0x37, 0xF4, 0x95}), 0xF0B07C789B8CF7E8U);
}

TEST(Marvin32Test, HashThatWindowsStoredInALogEntry) {
    const auto hashed = std::as_bytes(std::span(kRealLogEntryHeader)).first(kRealLogEntryHashed);
    EXPECT_EQ(Marvin32(hashed, kLogSeed), kRealLogEntryHash);
}

}  // namespace
}  // namespace ostrevin::samples
