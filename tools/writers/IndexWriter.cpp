#include "tools/writers/IndexWriter.h"

#include <algorithm>
#include <array>

#include "tools/writers/ByteBuffer.h"
#include "tools/writers/Times.h"

namespace ostrevin::samples {
namespace {

constexpr std::uint32_t kGarbage = 0xDEADBEEF;  // what unused bytes of a record hold
constexpr std::size_t kBitmap = 0x250;
constexpr std::size_t kTableBlocks = 32;
constexpr std::size_t kTableSize = kTableBlocks * kIndexBlock;
constexpr std::uint32_t kBuckets = 64;
constexpr std::size_t kBucketEntries = 7;
constexpr std::uint32_t kFreeEntry = 3;
constexpr std::size_t kFileUnit = 0x4000;

void PadBlocks(ByteBuffer& record, std::size_t blocks) {
    while (record.Size() % 4 != 0) {
        record.U8(0);
    }
    while (record.Size() < blocks * kIndexBlock) {
        record.U32(kGarbage);
    }
}

std::size_t BlocksOf(std::size_t size) {
    return (size + kIndexBlock - 1) / kIndexBlock;
}

/// Text of a record at the next multiple of four; returns its offset, 0 for no text.
std::uint32_t PutPart(ByteBuffer& record, const std::string& text) {
    if (text.empty()) {
        return 0;
    }
    record.Align(4);
    const std::uint32_t offset = record.Offset();
    record.TextZ(text);
    return offset;
}

ByteBuffer UrlRecord(const IndexRecord& record) {
    constexpr std::uint32_t kVersionSize = 0x60;
    ByteBuffer out;
    out.Text(record.kind == IndexRecord::Kind::Leak ? "LEAK" : "URL ");
    out.U32(0);  // the count of blocks, below
    out.U64(record.modified);
    out.U64(record.accessed);
    out.U32(FatTimeOf(record.expires));
    out.U32(0);
    out.U32(record.fileSize);
    out.PadTo(0x30);
    out.U32(kVersionSize);
    out.U32(record.addressPointer.value_or(kAddressOffset));
    out.U8(record.folder);
    out.U8(0);
    out.U16(0x1010);
    out.U32(0);           // the file name's offset, below
    out.U32(0x00200001);  // the kind of entry
    out.U32(0);           // the headers' offset, below
    out.U32(Size32(record.headers.size()));
    out.U32(0);
    out.U32(FatTimeOf(record.accessed));
    out.U32(record.hits);
    out.PadTo(0x64);
    out.U32(kGarbage);
    out.TextZ(record.address);
    out.PutU32(0x3C, PutPart(out, record.fileName));
    out.PutU32(0x44, PutPart(out, record.headers));
    return out;
}

ByteBuffer RedirectRecord(const IndexRecord& record) {
    ByteBuffer out;
    out.Text("REDR");
    out.U32(0);  // the count of blocks, below
    out.U32(0);
    out.U32(0);
    out.TextZ(record.address);
    return out;
}

ByteBuffer RecordBytes(const IndexRecord& record) {
    ByteBuffer out;
    if (record.kind == IndexRecord::Kind::Raw) {
        out.Bytes(record.raw);
    } else {
        out = record.kind == IndexRecord::Kind::Redirect ? RedirectRecord(record) : UrlRecord(record);
        out.PutU32(4, record.blocks.value_or(Size32(BlocksOf(out.Size()))));
    }
    PadBlocks(out, BlocksOf(out.Size()));
    return out;
}

// The lowest six bits tell the bucket and are kept free in the entry.
std::uint32_t AddressHash(std::string_view address) {
    std::uint32_t hash = 2166136261U;
    for (const char c : address) {
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619U;
    }
    return hash;
}

/// The entries of each bucket, over all tables.
class HashTables {
  public:
    explicit HashTables(const std::vector<IndexRecord>& records) : places_(records.size()) {
        for (std::size_t i = 0; i < records.size(); ++i) {
            if (records[i].kind == IndexRecord::Kind::Url) {
                const std::uint32_t hash = AddressHash(records[i].address);
                std::vector<Entry>& bucket = buckets_[hash % kBuckets];
                bucket.push_back({hash - hash % kBuckets, i});
                tables_ = std::max(tables_, (bucket.size() + kBucketEntries - 1) / kBucketEntries);
            }
        }
    }

    [[nodiscard]] std::size_t Size() const { return tables_ * kTableSize; }

    /// The file offset of a record.
    void SetPlace(std::size_t record, std::uint32_t offset) { places_[record] = offset; }

    [[nodiscard]] ByteBuffer Bytes() const {
        ByteBuffer out;
        for (std::size_t table = 0; table < tables_; ++table) {
            const std::size_t next = kIndexBlocksStart + (table + 1) * kTableSize;
            out.Text("HASH");
            out.U32(kTableBlocks);
            out.U32(table + 1 < tables_ ? Size32(next) : 0);
            out.U32(Size32(table));
            for (const std::vector<Entry>& bucket : buckets_) {
                WriteBucket(out, bucket, table * kBucketEntries);
            }
            PadBlocks(out, (table + 1) * kTableBlocks);
        }
        return out;
    }

  private:
    struct Entry {
        std::uint32_t hash = 0;
        std::size_t record = 0;
    };

    void WriteBucket(ByteBuffer& out, const std::vector<Entry>& bucket, std::size_t first) const {
        for (std::size_t i = first; i < first + kBucketEntries; ++i) {
            out.U32(i < bucket.size() ? bucket[i].hash : kFreeEntry);
            out.U32(i < bucket.size() ? places_[bucket[i].record] : kFreeEntry);
        }
    }

    std::array<std::vector<Entry>, kBuckets> buckets_;
    std::vector<std::uint32_t> places_;
    std::size_t tables_ = 1;
};

void WriteFolders(ByteBuffer& header, const std::vector<std::string>& folders) {
    header.U32(Size32(folders.size()));
    for (const std::string& folder : folders) {
        header.U32(0);
        header.Text(folder);
    }
}

ByteBuffer Header(const IndexOptions& options, std::size_t fileSize, std::size_t usedBlocks) {
    ByteBuffer header;
    header.TextZ("Client UrlCache MMF Ver 5.2");
    header.U32(Size32(fileSize));
    header.U32(options.scanOffset.value_or(kIndexBlocksStart));
    header.U32(Size32((fileSize - kIndexBlocksStart) / kIndexBlock));
    header.U32(Size32(usedBlocks));
    header.PadTo(0x34);
    header.U32(0x00800000);  // the limit of the cache's size
    header.PadTo(0x48);
    WriteFolders(header, options.folders);
    header.PadTo(kBitmap);
    // One bit a block, as far as the header has room.
    const std::size_t bits = std::min(usedBlocks, (kIndexBlocksStart - kBitmap) * 8);
    header.PadTo(kBitmap + bits / 8, 0xFF);
    if (bits % 8 != 0) {
        header.U8(static_cast<std::uint8_t>((1U << bits % 8) - 1));
    }
    header.PadTo(kIndexBlocksStart);
    return header;
}

}  // namespace

std::vector<std::byte> WriteIndex(const std::vector<IndexRecord>& records, const IndexOptions& options) {
    HashTables tables(records);
    ByteBuffer bodies;
    for (std::size_t i = 0; i < records.size(); ++i) {
        tables.SetPlace(i, Size32(kIndexBlocksStart + tables.Size() + bodies.Size()));
        bodies.Bytes(RecordBytes(records[i]).View());
    }
    const std::size_t usedEnd = kIndexBlocksStart + tables.Size() + bodies.Size();
    const std::size_t wanted = usedEnd + options.spareBlocks * kIndexBlock;
    const std::size_t fileSize = (wanted + kFileUnit - 1) / kFileUnit * kFileUnit;

    ByteBuffer file = Header(options, fileSize, (usedEnd - kIndexBlocksStart) / kIndexBlock);
    file.Bytes(tables.Bytes().View());
    file.Bytes(bodies.View());
    if (options.cutBytes == 0) {
        file.PadTo(fileSize);
        return file.Take();
    }
    std::vector<std::byte> bytes = file.Take();
    bytes.resize(bytes.size() - std::min(bytes.size(), options.cutBytes));
    return bytes;
}

std::size_t AddressEndInBlock(std::string_view address) {
    return (kAddressOffset + address.size() + 1) % kIndexBlock;
}

std::string PadAddress(std::string address, std::size_t endInBlock) {
    const std::size_t missing =
        (endInBlock % kIndexBlock + kIndexBlock - AddressEndInBlock(address)) % kIndexBlock;
    return address.append(missing, 'x');
}

}  // namespace ostrevin::samples
