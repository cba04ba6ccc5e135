#include <gtest/gtest.h>
#include <string>

#include "tests/samples/IndexOracle.h"
#include "tests/samples/Oracle.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/IndexWriter.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

std::vector<IndexRecord> Records(unsigned count) {
    std::vector<IndexRecord> records;
    for (unsigned i = 0; i < count; ++i) {
        IndexRecord record;
        record.accessed = FileTimeOf({2009, 8, 4, 15, 22, 18}) + i * kHour;
        record.modified = record.accessed - kDay;
        record.expires = record.accessed + 20 * kDay;
        record.address = "Visited: anna@http://www.example.com/page/" + std::to_string(i);
        records.push_back(record);
    }
    return records;
}

TEST(IndexWriterTest, EveryKindOfRecord) {
    OSTREVIN_NEED("msiecfexport", "libmsiecf-utils");
    std::vector<IndexRecord> records = Records(8);
    records[1].kind = IndexRecord::Kind::Leak;
    records[2].kind = IndexRecord::Kind::Redirect;
    records[3].fileName = "page[1].htm";
    records[3].headers = "HTTP/1.1 200 OK\r\n\r\n";
    records[3].folder = 1;
    records[4].address = PadAddress(records[4].address, 0);
    records[5].address = PadAddress(records[5].address, 127);
    records[6].address = std::string(2000, 'a');
    ExpectMsiecfexportAgrees(records, WriteIndex(records, {.folders = {"ABCD0123", "EFGH4567"}}));
}

TEST(IndexWriterTest, ManyRecordsNeedManyHashTables) {
    OSTREVIN_NEED("msiecfexport", "libmsiecf-utils");
    const std::vector<IndexRecord> records = Records(1500);
    ExpectMsiecfexportAgrees(records, WriteIndex(records, {}));
}

TEST(IndexWriterTest, MoreBlocksThanTheBitmapHasBits) {
    std::vector<IndexRecord> records = Records(1);
    records[0].kind = IndexRecord::Kind::Raw;
    records[0].raw.resize(17'000'000);
    const std::vector<std::byte> bytes = WriteIndex(records, {});
    EXPECT_EQ(U32At(bytes, 28), bytes.size());
    EXPECT_EQ(U32At(bytes, kIndexBlocksStart), 0x48534148U);  // "HASH" right behind the header
}

TEST(IndexWriterTest, HeaderAndOddities) {
    std::vector<IndexRecord> records = Records(2);
    const std::vector<std::byte> whole = WriteIndex(records, {});
    EXPECT_EQ(U32At(whole, 28), whole.size());
    EXPECT_EQ(U32At(whole, 32), kIndexBlocksStart);
    EXPECT_EQ(whole.size() % 0x4000, 0U);
    // Header, one hash table of 32 blocks, two records of two blocks each.
    const std::size_t first = kIndexBlocksStart + 32 * kIndexBlock;
    EXPECT_EQ(U32At(whole, 0x28), 36U);
    EXPECT_EQ(U32At(whole, first), 0x204C5255U);
    EXPECT_EQ(U32At(whole, first + 0x34), kAddressOffset);

    records[0].blocks = 0xFFFFFFFF;
    records[0].addressPointer = 0x70;
    const std::vector<std::byte> odd = WriteIndex(records, {.scanOffset = 0xFFFFFFF0, .cutBytes = 100});
    EXPECT_EQ(odd.size(), first + 4 * kIndexBlock - 100);
    EXPECT_EQ(U32At(odd, 32), 0xFFFFFFF0U);
    EXPECT_EQ(U32At(odd, first + 4), 0xFFFFFFFFU);
    EXPECT_EQ(U32At(odd, first + 0x34), 0x70U);
}

TEST(IndexWriterTest, PadAddressEndsWhereTold) {
    for (std::size_t end = 0; end < kIndexBlock; ++end) {
        const std::string address = PadAddress("http://example.com/", end);
        EXPECT_EQ((kAddressOffset + address.size() + 1) % kIndexBlock, end);
        EXPECT_LT(address.size(), std::string("http://example.com/").size() + kIndexBlock);
    }
}

}  // namespace
}  // namespace ostrevin::samples
