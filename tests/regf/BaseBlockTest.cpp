#include <gtest/gtest.h>
#include <vector>

#include "platform/volume/regf/BaseBlock.h"
#include "platform/volume/regf/Hive.h"
#include "tests/regf/HiveBytes.h"

namespace ostrevin::regf {
namespace {

std::vector<std::byte> Sector(std::uint32_t first, std::uint32_t second) {
    HiveBytes bytes{std::vector<std::byte>(BaseBlock::kFieldsSize)};
    bytes.PutU32(0, first);
    bytes.PutU32(4, second);
    return bytes.View();
}

TEST(BaseBlock, ChecksumIsTheExclusiveOrOfIntegers) {
    EXPECT_EQ(BaseBlockChecksum(Sector(0x12345678, 0x00FF00FF)), 0x12CB5687U);
}

TEST(BaseBlock, ChecksumIsNeverZeroOrAllOnes) {
    EXPECT_EQ(BaseBlockChecksum(Sector(0, 0)), 1U);
    EXPECT_EQ(BaseBlockChecksum(Sector(7, 7)), 1U);
    EXPECT_EQ(BaseBlockChecksum(Sector(0xFFFFFFFF, 0)), 0xFFFFFFFEU);
}

TEST(BaseBlock, TellsWhetherLogsAreNeeded) {
    const samples::HiveKey root = SmallHive();
    EXPECT_FALSE(Hive::IsDirty(samples::WriteHive(root, {})));
    EXPECT_TRUE(Hive::IsDirty(samples::WriteHive(root, Options([](auto& o) {
                                                     o.primarySequence = 8;
                                                     o.secondarySequence = 7;
                                                 }))));
    EXPECT_TRUE(Hive::IsDirty(samples::WriteHive(root, Options([](auto& o) { o.wrongChecksum = true; }))));
    EXPECT_TRUE(Hive::IsDirty(std::vector<std::byte>(512)));
    EXPECT_TRUE(Hive::IsDirty({}));
}

TEST(BaseBlock, TellsWhenTheHiveWasWritten) {
    const auto hive =
        samples::WriteHive(SmallHive(), Options([](auto& o) { o.lastWritten = 0x01D29627F1C8A860; }));
    EXPECT_EQ(Hive::LastWritten(std::span(hive).first(512)), 0x01D29627F1C8A860U);
    EXPECT_EQ(Hive::LastWritten(std::span(hive).first(511)), std::nullopt);
    EXPECT_EQ(Hive::LastWritten(std::vector<std::byte>(4096)), std::nullopt);
}

}  // namespace
}  // namespace ostrevin::regf
