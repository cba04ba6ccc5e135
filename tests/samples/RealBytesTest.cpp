// What the writers make, held against bytes that Windows wrote, where no independent reader looks.
#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/samples/Oracle.h"
#include "tools/sample-volume/Machine.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/DirtyHive.h"
#include "tools/writers/HiveWriter.h"
#include "tools/writers/LinkWriter.h"

namespace ostrevin::samples {
namespace {

using Bytes = std::vector<std::byte>;

std::string Hex(std::span<const std::byte> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : bytes) {
        text += kDigits[std::to_integer<unsigned>(byte) >> 4U];
        text += kDigits[std::to_integer<unsigned>(byte) & 15U];
    }
    return text;
}

std::string Hex(const Bytes& bytes, std::size_t at, std::size_t size) {
    return Hex(std::span(bytes).subspan(at, size));
}

/// A hive of which only the base block and the sizes matter: sequence number, time, size of the hive bins.
Bytes EmptyHive(std::uint32_t sequence, std::uint64_t time, std::size_t binsSize) {
    ByteBuffer hive;
    hive.Text("regf");
    hive.U32(sequence);
    hive.U32(sequence);
    hive.U64(time);
    for (const std::uint32_t field : {1U, 3U, 0U, 1U, 32U, Size32(binsSize), 1U}) {
        hive.U32(field);
    }
    hive.PadTo(kBaseBlockSize + binsSize);
    return hive.Take();
}

// The log of a hive that Windows 7 did not write out: base block of file type 1 with equal sequence numbers,
// and the vector, in which a bit stands for a page of 512 bytes.
TEST(RealBytesTest, DirtyVectorLog) {
    constexpr std::size_t kBins = 487424;
    const Bytes before = EmptyHive(4, 0x01D29627F1C8A860, kBins);
    Bytes after = before;
    const std::array<std::size_t, 8> changed = {0, 1, 12, 13, 106, 117, 118, 116};
    for (const std::size_t block : changed) {
        after[kBaseBlockSize + block * 4096] = std::byte{1};
    }
    const Bytes log = MakeDirtyHive(before, after).log;
    EXPECT_EQ(Hex(log, 0, 48),
              "72656766050000000500000060a8c8f12796d201"
              "01000000030000000100000001000000200000000070070001000000");
    EXPECT_EQ(Hex(log, 512, 4), "44495254");  // "DIRT"
    EXPECT_EQ(Hex(log, 516, 2), "ffff");
    EXPECT_EQ(Hex(log, 516 + 12, 2), "ffff");
    EXPECT_EQ(Hex(log, 516 + 106, 1), "ff");
    EXPECT_EQ(Hex(log, 516 + 116, 4), "ffffff00");
    EXPECT_EQ(log.size(), 33792U) << "eight blocks, from byte 1024 on";
}

// The log of Windows 10 that holds an entry for the first 4096 bytes of a hive of five pages.
TEST(RealBytesTest, EntriesLog) {
    const Bytes before = EmptyHive(2, 0x01D295059E68E89E, 20480);
    Bytes after = before;
    after[kBaseBlockSize] = std::byte{1};
    const std::array<Bytes, 2> states = {before, after};
    const Bytes log = MakeDirtyHiveWithEntries(states, 1).log;
    EXPECT_EQ(Hex(log, 0, 48),
              "7265676603000000030000009ee8689e0595d201"
              "01000000030000000600000001000000200000000050000001000000");
    EXPECT_EQ(Hex(log, 512, 4), "48764c45");                               // "HvLE"
    EXPECT_EQ(Hex(log, 512 + 8, 16), "00000000030000000050000001000000");  // flags, sequence, bins, pages
    EXPECT_EQ(Hex(log, 512 + 40, 8), "0000000000100000");                  // the page: where and how long
    EXPECT_EQ(U32At(log, 512 + 4) % 512, 0U) << "Windows gave this one 7680 bytes";
}

// The key "4500" of a hive of Windows 7, which has one value with a name of one letter and data of 20 bytes.
TEST(RealBytesTest, KeyNode) {
    HiveKey root;
    root.Key("4500").SetBinary("a", Bytes(20));
    const Bytes hive = WriteHive(root, {.minorVersion = 3, .lastWritten = 0x01D29627DDF0F220});
    constexpr std::string_view kName = "4500";
    const auto bytes = std::as_bytes(std::span(kName));
    const auto name = std::search(hive.begin(), hive.end(), bytes.begin(), bytes.end());
    const auto node = std::span(hive).subspan(static_cast<std::size_t>(name - hive.begin()) - 76, 80);
    const auto part = [&](std::size_t at, std::size_t size) { return Hex(node.subspan(at, size)); };
    EXPECT_EQ(part(0, 16), "6e6b200020f2f0dd2796d20100000000");  // name of one byte a character, time
    EXPECT_EQ(part(20, 8), "0000000000000000");                  // sub-keys, volatile ones
    EXPECT_EQ(part(36, 4), "01000000");                          // values
    EXPECT_EQ(part(48, 28),
              "ffffffff0000000000000000020000001400000000000000"
              "04000000");
}

// The administrator's account in a SAM hive: what stands before the descriptor's length, and the entries of
// the name, the hours, the groups; identifier, group, flags and logons in the fixed part.
TEST(RealBytesTest, Account) {
    Account account;
    account.name = "Administrator";
    account.rid = 500;
    account.lastLogon = 0x01CF4293BA7D0270;
    account.logons = 3;
    account.disabled = true;
    HiveKey root = AccountDatabase({account});
    const HiveKey& key = root.Key("SAM\\Domains\\Account\\Users\\000001F4");
    const auto value = [&](std::string_view name) {
        return std::ranges::find(key.values, name, &HiveValue::name)->data;
    };
    const Bytes fixed = value("F");
    EXPECT_EQ(fixed.size(), 80U);
    EXPECT_EQ(Hex(fixed, 0, 24), "020001000000000070027dba9342cf010000000000000000");
    EXPECT_EQ(Hex(fixed, 48, 20),
              "f4010000010200001102000000000000"
              "00000300");

    const Bytes variable = value("V");
    EXPECT_EQ(Hex(variable, 0, 4), "00000000");
    EXPECT_EQ(Hex(variable, 8, 4), "02000100");
    EXPECT_EQ(U32At(variable, 12), U32At(variable, 4)) << "the name stands behind the descriptor";
    EXPECT_EQ(Hex(variable, 16, 8), "1a00000000000000");
    EXPECT_EQ(Hex(variable, 12 * 11 + 4, 8), "15000000a8000000");
    EXPECT_EQ(Hex(variable, 12 * 12 + 4, 8), "0800000001000000");
    EXPECT_EQ(Hex(variable, 0xCC + U32At(variable, 12), 26),
              "410064006d0069006e006900730074007200610074006f007200");

    const Bytes domain = root.Key("SAM\\Domains\\Account").values.front().data;
    EXPECT_EQ(Hex(domain, 16, 8), "1800000000000000");
    EXPECT_EQ(Hex(domain, domain.size() - 24, 12), "010400000000000515000000");
}

// The header of a shortcut of Windows XP, and the block that tells where its special folder stands.
TEST(RealBytesTest, Shortcut) {
    Link link;
    link.items = {Bytes(1)};
    link.info = LinkInfo();
    link.description = link.relativePath = link.workingFolder = link.arguments = link.iconFile = "x";
    link.environmentPath = "x";
    link.specialFolder = LinkSpecialFolder{0x24, 0x69};
    link.attributes = 0x20;
    link.created = link.modified = 0x01C89E2710A1A000;
    link.accessed = 0x01D14DF47A4D1ACC;
    link.size = 0xFC600;
    link.showCommand = 1;
    const Bytes bytes = WriteLink(link);
    EXPECT_EQ(Hex(bytes, 0, 76),
              "4c0000000114020000000000c000000000000046ff0200002000000000a0a110279ec801cc1a4d7af44dd101"
              "00a0a110279ec80100c60f000000000001000000000000000000000000000000");
    EXPECT_NE(Hex(bytes).find("10000000050000a02400000069000000"), std::string::npos);
}

TEST(RealBytesTest, SecurityOfAKeyIsReadByReglookup) {
    OSTREVIN_NEED("reglookup", "reglookup");
    HiveKey root;
    root.Key("Key").className = "Shell";
    const TestFile file(WriteHive(root, {}));
    const std::vector<std::string> lines = LinesOf({"reglookup", "-s", "-H", file.Path()});
    ASSERT_EQ(lines.size(), 2U);
    const std::string expected =
        ",S-1-5-32-544,S-1-5-18,,S-1-5-32-544:ALLOW:QRY_VAL SET_VAL CREATE_KEY ENUM_KEYS NOTIFY CREATE_LNK "
        "DELETE R_CONT W_DAC W_OWNER:CI|S-1-5-18:ALLOW:QRY_VAL SET_VAL CREATE_KEY ENUM_KEYS NOTIFY "
        "CREATE_LNK "
        "DELETE R_CONT W_DAC W_OWNER:CI|S-1-1-0:ALLOW:QRY_VAL ENUM_KEYS NOTIFY R_CONT:CI,";
    EXPECT_NE(lines[0].find(expected), std::string::npos) << lines[0];
    EXPECT_NE(lines[1].find(expected + "Shell"), std::string::npos) << lines[1];
}

}  // namespace
}  // namespace ostrevin::samples
