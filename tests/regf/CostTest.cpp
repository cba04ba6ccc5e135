// What hives cost: memory in proportion to what is used, and never more of the hive than its size, however
// often its cells are shared.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/volume/regf/FileImage.h"
#include "platform/volume/regf/Hive.h"
#include "tests/regf/HiveBytes.h"
#include "tests/support/BytesFile.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/DirtyHive.h"
#include "tools/writers/HiveWriter.h"

namespace ostrevin::regf {
namespace {

using samples::HiveKey;
using samples::WriteHive;

/// A file that ends with a hole.
class SparseFile : public BytesFile {
  public:
    SparseFile(std::vector<std::byte> bytes, std::uint64_t size) : BytesFile(std::move(bytes)), size_(size) {}
    [[nodiscard]] std::uint64_t Size() const override { return size_; }
    std::size_t Read(std::uint64_t offset, std::span<std::byte> buffer) override {
        const std::size_t got = BytesFile::Read(offset, buffer);
        std::fill(buffer.begin() + static_cast<std::ptrdiff_t>(got), buffer.end(), std::byte{0});
        return buffer.size();
    }

  private:
    std::uint64_t size_;
};

TEST(HiveCost, OfALargeHiveIsThatOfItsUsedParts) {
    constexpr std::uint32_t kSize = 500U << 20U;
    HiveBytes bytes(WriteHive(SmallHive(), {}));
    const std::string expected = Dump(*bytes.Open());
    bytes.PutU32(40, kSize - 4096);
    bytes.UpdateChecksum();
    for (const std::uint32_t sequence : {1U, 2U}) {
        bytes.PutU32(4, sequence);
        bytes.UpdateChecksum();
        std::vector<std::unique_ptr<Hive>> hives;
        std::size_t held = 0;
        for (int i = 0; i < 4; ++i) {
            hives.push_back(Hive::Open(std::make_unique<SparseFile>(bytes.View(), kSize), {}));
            EXPECT_EQ(Dump(*hives.back()), expected);
            held += hives.back()->Held();
        }
        EXPECT_LE(held, 8 * FileImage::kPiece);
    }
}

/// Tells whether it is still open.
class NotedFile : public SparseFile {
  public:
    NotedFile(std::vector<std::byte> bytes, std::uint64_t size, bool& isOpen)
        : SparseFile(std::move(bytes), size), isOpen_(isOpen) {
        isOpen_ = true;
    }
    NotedFile(const NotedFile&) = delete;
    NotedFile& operator=(const NotedFile&) = delete;
    ~NotedFile() override { isOpen_ = false; }

  private:
    bool& isOpen_;
};

TEST(HiveCost, OfASmallHiveIsNoOpenFile) {
    const std::vector<std::byte> bytes = WriteHive(SmallHive(), {});
    const std::string expected = Dump(*OpenHive(bytes));
    bool isOpen = false;
    const auto small = Hive::Open(std::make_unique<NotedFile>(bytes, bytes.size(), isOpen), {});
    EXPECT_FALSE(isOpen);
    EXPECT_EQ(Dump(*small), expected);
    const auto large = Hive::Open(std::make_unique<NotedFile>(bytes, 5U << 20U, isOpen), {});
    EXPECT_TRUE(isOpen);
    EXPECT_EQ(Dump(*large), expected);
}

TEST(HiveCost, OfRecoveryIsThatOfThePagesInTheLog) {
    constexpr std::uint32_t kSize = 500U << 20U;
    HiveBytes bytes(WriteHive(SmallHive(), {}));
    bytes.PutU32(40, kSize - 4096);
    bytes.PutU32(4, 2);
    bytes.UpdateChecksum();
    // The last page of the file is the only one that is dirty; no bin stands there.
    samples::ByteBuffer log;
    log.Bytes(std::span(bytes.View()).first(512));
    log.PutU32(4, 2);
    log.PutU32(8, 2);
    log.PutU32(28, 1);
    log.Text("DIRT");
    log.PadTo(512 + 4 + (kSize - 4096) / 512 / 8 - 1);
    log.U8(0x80);
    log.Align(512);
    log.PadTo(log.Size() + 512, 0xAB);
    std::vector<std::byte> logBytes = log.Take();
    samples::UpdateChecksum(logBytes);
    const auto hive = Hive::Open(std::make_unique<SparseFile>(bytes.View(), kSize),
                                 {nullptr, std::make_unique<BytesFile>(logBytes), nullptr});
    EXPECT_EQ(hive->HowRecovered(), Recovery::FromLogs);
    EXPECT_LE(hive->Held(), 3 * FileImage::kPiece);
}

/// Opens a hive and notes that there was trouble with it.
class Troubled {
  public:
    explicit Troubled(const HiveBytes& bytes)
        : hive_(OpenHive(bytes.View(), {},
                         [this](Trouble trouble) { overlaps_ += trouble == Trouble::Overlapping; })) {}
    [[nodiscard]] const Hive& Get() const { return *hive_; }
    [[nodiscard]] int Overlaps() const { return overlaps_; }

  private:
    int overlaps_ = 0;
    std::unique_ptr<Hive> hive_;
};

TEST(HiveCost, NoSoundHiveRunsOutOfRoom) {
    HiveKey root = SmallHive();
    for (int i = 0; i < 3000; ++i) {
        root.AddKey("key " + std::to_string(i)).Add("value", 3, Pattern(2));
        root.Add("value " + std::to_string(i), 3, Pattern(static_cast<std::size_t>(i) % 20));
    }
    for (const auto leaf : {samples::SubKeyLeaf::Li, samples::SubKeyLeaf::Lf}) {
        const Troubled hive(HiveBytes(WriteHive(root, Options([&](auto& o) {
                                                    o.leaf = leaf;
                                                    o.leafElements = 100;
                                                }))));
        const std::string once = Dump(hive.Get());
        EXPECT_EQ(Dump(hive.Get()), once);
        for (int i = 0; i < 3000; ++i) {
            ASSERT_TRUE(hive.Get().Root().FindSubKey("KEY " + std::to_string(i)));
            ASSERT_TRUE(hive.Get().Root().FindValue("VALUE " + std::to_string(i)));
        }
        EXPECT_FALSE(hive.Get().Root().FindSubKey("key"));
        EXPECT_FALSE(hive.Get().Root().FindValue("value"));
        EXPECT_EQ(hive.Overlaps(), 0);
    }
}

TEST(HiveCost, OfSharedDataIsNoMoreThanTheHive) {
    HiveKey root;
    for (int i = 0; i < 4000; ++i) {
        root.Add(std::to_string(i), 3, Pattern(8));
    }
    HiveBytes bytes(WriteHive(root, {}));
    const std::uint32_t data = bytes.AddCell(std::vector<std::byte>(16000));
    for (std::size_t i = 0; i < 4000; ++i) {
        const std::size_t value = HiveBytes::Place(bytes.ValueCell(bytes.Root(), i));
        bytes.PutU32(value + kValueDataSize, 16000);
        bytes.PutU32(value + kValueDataOffset, data);
    }
    const Troubled hive(bytes);
    std::size_t size = 0;
    for (const Value& value : hive.Get().Root().Values()) {
        size += value.Data().size();
    }
    EXPECT_GT(size, 0U);
    EXPECT_LE(size, bytes.View().size());
    EXPECT_EQ(hive.Overlaps(), 1) << "told once";
    EXPECT_EQ(hive.Get().Root().Values().front().Data().size(), 16000U)
        << "what was read once can be read again";
}

TEST(HiveCost, OfSharedListsIsNoMoreThanTheHive) {
    HiveKey root;
    for (int i = 0; i < 3000; ++i) {
        HiveKey& key = root.AddKey("k" + std::to_string(i));
        key.Add("v", 4, Pattern(4));
        key.AddKey("s");
    }
    HiveBytes bytes(WriteHive(root, Options([](auto& o) {
                                  o.leaf = samples::SubKeyLeaf::Li;
                                  o.leafElements = 4000;
                              })));
    std::vector<std::uint32_t> values;
    std::vector<std::size_t> nodes;
    for (std::size_t i = 0; i < 3000; ++i) {
        nodes.push_back(HiveBytes::Place(bytes.SubKeyCell(bytes.Root(), i)));
        values.push_back(bytes.ValueCell(nodes.back(), 0));
    }
    samples::ByteBuffer list;
    for (const std::uint32_t value : values) {
        list.U32(value);
    }
    const std::uint32_t allValues = bytes.AddCell(list.Take());
    const std::uint32_t allKeys = bytes.U32(bytes.Root() + kNodeSubKeysList);
    for (const std::size_t node : nodes) {
        bytes.PutU32(node + kNodeValuesList, allValues);
        bytes.PutU32(node + kNodeValueCount, 3000);
        bytes.PutU32(node + kNodeSubKeysList, allKeys);
    }
    const Troubled hive(bytes);
    std::size_t found = 0;
    for (const Key& key : hive.Get().Root().SubKeys()) {
        found += key.Values().size() + key.SubKeys().size();
        EXPECT_FALSE(key.FindSubKey("none"));
    }
    EXPECT_GT(found, 0U);
    EXPECT_LE(found, bytes.View().size() / 20);
    EXPECT_EQ(hive.Overlaps(), 1);
}

TEST(HiveCost, AValueListedManyTimesIsThereOnce) {
    HiveKey root;
    root.SetBinary("x", Pattern(50));
    root.SetBinary("y", Pattern(50));
    HiveBytes bytes(WriteHive(root, {}));
    const std::uint32_t x = bytes.ValueCell(bytes.Root(), 0);
    const std::uint32_t y = bytes.ValueCell(bytes.Root(), 1);
    samples::ByteBuffer list;
    for (const std::uint32_t value : {y, x, y, x, x}) {
        list.U32(value);
    }
    bytes.PutU32(bytes.Root() + kNodeValuesList, bytes.AddCell(list.Take()));
    bytes.PutU32(bytes.Root() + kNodeValueCount, 5);
    EXPECT_EQ(Names(bytes.Open()->Root().Values()), "y,x");
}

}  // namespace
}  // namespace ostrevin::regf
