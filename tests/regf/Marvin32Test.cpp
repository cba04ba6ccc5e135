#include <gtest/gtest.h>
#include <initializer_list>
#include <span>
#include <vector>

#include "platform/volume/regf/LogEntry.h"
#include "platform/volume/regf/Marvin32.h"
#include "tests/support/RealLogEntry.h"

namespace ostrevin::regf {
namespace {

std::uint64_t HashOf(std::initializer_list<unsigned char> values) {
    std::vector<std::byte> bytes;
    for (const unsigned char value : values) {
        bytes.push_back(std::byte{value});
    }
    return Marvin32(bytes, 0x004FB61A001BDBCC);
}

TEST(Marvin32, GivesThePublishedHashes) {
    EXPECT_EQ(HashOf({}), 0x30ED35C100CD3C7DU);
    EXPECT_EQ(HashOf({0xAF}), 0x48E73FC77D75DDC1U);
    EXPECT_EQ(HashOf({0xE7, 0x0F}), 0xB5F6E1FC485DBFF8U);
    EXPECT_EQ(HashOf({0x37, 0xF4, 0x95}), 0xF0B07C789B8CF7E8U);
    EXPECT_EQ(HashOf({0x86, 0x42, 0xDC, 0x59}), 0x7008F2E87E9CF556U);
    EXPECT_EQ(HashOf({0x15, 0x3F, 0xB7, 0x98, 0x26}), 0xE6C08C6DA2AFA997U);
    EXPECT_EQ(HashOf({0x09, 0x32, 0xE6, 0x24, 0x6C, 0x47}), 0x6F04BF1A5EA24060U);
    EXPECT_EQ(HashOf({0xAB, 0x42, 0x7E, 0xA8, 0xD1, 0x0F, 0xC7}), 0xE11847E4F0678C41U);
}

TEST(Marvin32, GivesTheHashThatWindowsStoredInALogEntry) {
    const auto hashed = std::as_bytes(std::span(kRealLogEntryHeader)).first(kRealLogEntryHashed);
    EXPECT_EQ(Marvin32(hashed, LogEntry::kHashSeed), kRealLogEntryHash);
}

}  // namespace
}  // namespace ostrevin::regf
