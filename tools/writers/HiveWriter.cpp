#include "tools/writers/HiveWriter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tools/writers/ByteBuffer.h"
#include "tools/writers/SampleText.h"

namespace ostrevin::samples {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr std::size_t kBinUnit = 4096;
constexpr std::size_t kBinHeader = 32;
constexpr std::size_t kSegment = 16344;  // the most data in one cell where big data exists
constexpr std::uint32_t kInline = 0x80000000;

// Flags of key nodes and values.
constexpr std::uint16_t kRootKey = 0x000C;  // the root of its hive, and cannot be deleted
constexpr std::uint16_t kCompressedKey = 0x0020;
constexpr std::uint16_t kCompressedValue = 0x0001;

// Offsets of the fields of a key node that are known only when its contents are written.
enum KeyNodeField : std::size_t {
    kSubKeyCount = 20,
    kSubKeyList = 28,
    kValueCount = 36,
    kValueList = 40,
    kSecurity = 44,
    kClassName = 48,
    kLongestSubKeyName = 52,
    kLongestClassName = 56,
    kLongestValueName = 60,
    kLargestData = 64,
};

/// A name as it is stored.
struct StoredName {
    bool compressed = false;
    std::vector<std::byte> bytes;
};

StoredName NameFor(std::u16string_view name, bool compress) {
    ByteBuffer bytes;
    const bool latin = std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x100; });
    if (!compress || !latin) {
        bytes.Utf16(name);
        return {false, bytes.Take()};
    }
    for (const char16_t unit : name) {
        bytes.U8(static_cast<std::uint8_t>(unit));
    }
    return {true, bytes.Take()};
}

std::uint32_t NameHash(std::u16string_view name) {
    std::uint32_t hash = 0;
    for (const char16_t unit : name) {
        hash = hash * 37 + ToUpper(unit);
    }
    return hash;
}

// The first four characters; all zero when one of them does not fit a byte.
std::uint32_t NameHint(std::u16string_view name) {
    std::uint32_t hint = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(name.size(), 4); ++i) {
        if (name[i] > 0xFF) {
            return 0;
        }
        hint |= static_cast<std::uint32_t>(name[i]) << (8 * i);
    }
    return hint;
}

// A self-relative descriptor: owner Administrators, group SYSTEM, full access for these two, reading for
// everyone.
std::vector<std::byte> SecurityDescriptor() {
    constexpr std::uint32_t kFullAccess = 0x000F003F;
    constexpr std::uint32_t kReadAccess = 0x00020019;
    constexpr std::uint32_t kHeaderSize = 20;
    struct Sid {
        std::uint8_t authority;
        std::vector<std::uint32_t> parts;
    };
    const Sid administrators{5, {32, 544}};
    const Sid system{5, {18}};
    const Sid everyone{1, {0}};
    const auto put = [](ByteBuffer& out, const Sid& sid) {
        out.U8(1);
        out.U8(static_cast<std::uint8_t>(sid.parts.size()));
        out.Bytes(std::array<std::byte, 5>{});
        out.U8(sid.authority);
        std::for_each(sid.parts.begin(), sid.parts.end(), [&](std::uint32_t part) { out.U32(part); });
    };
    ByteBuffer entries;
    for (const auto& [sid, access] : {std::pair{&administrators, kFullAccess},
                                      std::pair{&system, kFullAccess}, std::pair{&everyone, kReadAccess}}) {
        entries.U8(0);  // access allowed
        entries.U8(2);  // inherited by sub-keys
        entries.U16(Size16(16 + 4 * sid->parts.size()));
        entries.U32(access);
        put(entries, *sid);
    }
    ByteBuffer descriptor;
    const std::uint32_t listSize = Size32(8 + entries.Size());
    descriptor.U16(1);
    descriptor.U16(0x8004);                       // self-relative, with a discretionary list
    descriptor.U32(kHeaderSize + listSize);       // owner
    descriptor.U32(kHeaderSize + listSize + 16);  // group, after the owner's 16 bytes
    descriptor.U32(0);                            // no system list
    descriptor.U32(kHeaderSize);
    descriptor.U16(2);
    descriptor.U16(static_cast<std::uint16_t>(listSize));
    descriptor.U32(3);
    descriptor.Bytes(entries.View());
    put(descriptor, administrators);
    put(descriptor, system);
    return descriptor.Take();
}

/// The hive bins data, cell after cell.
class Bins {
  public:
    explicit Bins(std::uint64_t timestamp) : timestamp_(timestamp) {}

    /// Allocates a cell that holds the content; returns its offset.
    std::uint32_t Allocate(std::span<const std::byte> content) {
        const std::size_t size = (4 + content.size() + 7) / 8 * 8;
        if (binEnd_ - data_.Size() < size) {
            Close();
            Open(size);
        }
        const std::uint32_t offset = data_.Offset();
        data_.U32(0U - Size32(size));
        data_.Bytes(content);
        data_.Align(8);
        return offset;
    }

    void PutU32(std::uint32_t cell, std::size_t field, std::uint32_t value) {
        data_.PutU32(cell + 4 + field, value);
    }

    /// Ends the last bin.
    std::vector<std::byte> Finish() {
        Close();
        return data_.Take();
    }

  private:
    void Open(std::size_t cellSize) {
        const std::size_t size = (kBinHeader + cellSize + kBinUnit - 1) / kBinUnit * kBinUnit;
        const std::uint32_t offset = data_.Offset();
        data_.Text("hbin");
        data_.U32(offset);
        data_.U32(Size32(size));
        data_.U64(0);
        data_.U64(offset == 0 ? timestamp_ : 0);
        data_.U32(0);
        binEnd_ = offset + size;
    }

    // What is left of the bin is one free cell.
    void Close() {
        if (data_.Size() < binEnd_) {
            data_.U32(Size32(binEnd_ - data_.Size()));
            data_.PadTo(binEnd_, 0xFF);
        }
    }

    ByteBuffer data_;
    std::size_t binEnd_ = 0;
    std::uint64_t timestamp_;
};

class Writer {
  public:
    explicit Writer(const HiveOptions& options)
        : options_(options), leaf_(LeafOf(options)), bins_(options.lastWritten) {}

    std::vector<std::byte> Write(const HiveKey& root) {
        const std::uint32_t rootCell = WriteKey(root, ToUtf16(root.name), 0, kRootKey);
        bins_.PutU32(security_, 12, keyCount_);
        const std::vector<std::byte> bins = bins_.Finish();
        ByteBuffer hive = BaseBlock(rootCell, Size32(bins.size()));
        hive.Bytes(bins);
        return hive.Take();
    }

  private:
    struct Child {
        std::u16string name;
        std::u16string sortName;
        const HiveKey* key = nullptr;
        std::uint32_t cell = 0;
    };

    static SubKeyLeaf LeafOf(const HiveOptions& options) {
        if (options.leaf != SubKeyLeaf::OfVersion) {
            return options.leaf;
        }
        return options.minorVersion >= 5 ? SubKeyLeaf::Lh : SubKeyLeaf::Lf;
    }

    ByteBuffer BaseBlock(std::uint32_t rootCell, std::uint32_t binsSize) const {
        ByteBuffer block;
        block.Text("regf");
        block.U32(options_.primarySequence);
        block.U32(options_.secondarySequence);
        block.U64(options_.lastWritten);
        block.U32(1);
        block.U32(options_.minorVersion);
        block.U32(0);  // a primary file
        block.U32(1);  // direct memory load
        block.U32(rootCell);
        block.U32(binsSize);
        block.U32(1);  // sectors of 512 bytes
        const std::u16string fileName = ToUtf16(options_.fileName);
        block.Utf16(std::u16string_view(fileName).substr(fileName.size() -
                                                         std::min<std::size_t>(fileName.size(), 31)));
        block.PadTo(kBaseBlockSize);
        const std::uint32_t checksum = BaseBlockChecksum(block.View());
        block.PutU32(508, options_.wrongChecksum ? ~checksum : checksum);
        return block;
    }

    std::uint32_t WriteKey(const HiveKey& key, std::u16string_view name, std::uint32_t parent,
                           std::uint16_t flags) {
        const StoredName stored = NameFor(name, options_.compressNames);
        const std::u16string className = ToUtf16(key.className);
        ByteBuffer node;
        node.Text("nk");
        node.U16(static_cast<std::uint16_t>(flags | (stored.compressed ? kCompressedKey : 0)));
        node.U64(key.lastWritten != 0 ? key.lastWritten : options_.lastWritten);
        node.U32(0);
        node.U32(parent);
        node.U32(Size32(key.subKeys.size()));
        node.U32(0);
        node.U32(kNone);
        node.U32(kNone);
        node.U32(Size32(key.values.size()));
        node.PadTo(kLongestSubKeyName, 0xFF);
        node.PadTo(72);
        node.U16(Size16(stored.bytes.size()));
        node.U16(Size16(2 * className.size()));
        node.Bytes(stored.bytes);
        const std::uint32_t cell = bins_.Allocate(node.View());

        ++keyCount_;
        if (security_ == kNone) {
            WriteSecurity();
        }
        bins_.PutU32(cell, kSecurity, security_);
        if (!className.empty()) {
            ByteBuffer text;
            text.Utf16(className);
            bins_.PutU32(cell, kClassName, bins_.Allocate(text.View()));
        }
        WriteValues(key, cell);
        WriteSubKeys(key, cell);
        return cell;
    }

    void WriteSecurity() {
        const std::vector<std::byte> descriptor = SecurityDescriptor();
        ByteBuffer item;
        item.Text("sk");
        item.PadTo(16);
        item.U32(Size32(descriptor.size()));
        item.Bytes(descriptor);
        security_ = bins_.Allocate(item.View());
        bins_.PutU32(security_, 4, security_);  // a list of its own, forward and backward
        bins_.PutU32(security_, 8, security_);
    }

    void WriteValues(const HiveKey& key, std::uint32_t cell) {
        if (key.values.empty()) {
            return;
        }
        ByteBuffer list;
        std::size_t longestName = 0;
        std::size_t largestData = 0;
        for (const HiveValue& value : key.values) {
            const std::u16string name = ToUtf16(value.name);
            longestName = std::max(longestName, 2 * name.size());
            largestData = std::max(largestData, value.data.size());
            list.U32(WriteValue(value, name));
        }
        bins_.PutU32(cell, kValueList, bins_.Allocate(list.View()));
        bins_.PutU32(cell, kLongestValueName, Size32(longestName));
        bins_.PutU32(cell, kLargestData, Size32(largestData));
    }

    std::uint32_t WriteValue(const HiveValue& value, std::u16string_view name) {
        const StoredName stored = NameFor(name, options_.compressNames);
        const std::uint32_t size = Size32(value.data.size());
        const bool isInline = size == 0 || (options_.inlineData && size <= 4);
        ByteBuffer content;
        content.Text("vk");
        content.U16(Size16(stored.bytes.size()));
        content.U32(isInline ? size | kInline : size);
        if (isInline) {
            content.Bytes(value.data);
            content.PadTo(12);
        } else {
            content.U32(WriteData(value.data));
        }
        content.U32(value.type);
        content.U16(stored.compressed ? kCompressedValue : 0);
        content.U16(0);
        content.Bytes(stored.bytes);
        return bins_.Allocate(content.View());
    }

    std::uint32_t WriteData(std::span<const std::byte> data) {
        if (data.size() <= kSegment || options_.minorVersion < 4) {
            return bins_.Allocate(data);
        }
        ByteBuffer segments;
        std::uint16_t count = 0;
        for (; !data.empty(); ++count) {
            ByteBuffer segment;
            segment.Bytes(data.first(std::min(data.size(), kSegment)));
            data = data.subspan(segment.Size());
            segment.PadTo(segment.Size() + (options_.tightSegments ? 0 : 4));
            segments.U32(bins_.Allocate(segment.View()));
        }
        ByteBuffer record;
        record.Text("db");
        record.U16(count);
        record.U32(bins_.Allocate(segments.View()));
        return bins_.Allocate(record.View());
    }

    void WriteSubKeys(const HiveKey& key, std::uint32_t cell) {
        if (key.subKeys.empty()) {
            return;
        }
        std::vector<Child> children;
        std::size_t longestName = 0;
        std::size_t longestClass = 0;
        for (const HiveKey& subKey : key.subKeys) {
            std::u16string name = ToUtf16(subKey.name);
            longestName = std::max(longestName, 2 * name.size());
            longestClass = std::max(longestClass, 2 * ToUtf16(subKey.className).size());
            std::u16string sortName = ToUpper(name);
            children.push_back({std::move(name), std::move(sortName), &subKey});
        }
        std::stable_sort(children.begin(), children.end(),
                         [](const Child& a, const Child& b) { return a.sortName < b.sortName; });
        for (Child& child : children) {
            child.cell = WriteKey(*child.key, child.name, cell, 0);
        }
        bins_.PutU32(cell, kSubKeyList, WriteList(children));
        bins_.PutU32(cell, kLongestSubKeyName, Size32(longestName));
        bins_.PutU32(cell, kLongestClassName, Size32(longestClass));
    }

    std::uint32_t WriteList(std::span<const Child> children) {
        const std::size_t fits = leaf_ == SubKeyLeaf::Li ? 1014 : 507;
        const std::size_t most = options_.leafElements != 0 ? options_.leafElements : fits;
        if (children.size() <= most) {
            return WriteLeaf(children);
        }
        ByteBuffer leaves;
        std::uint16_t count = 0;
        for (; !children.empty(); ++count) {
            const auto part = children.first(std::min(children.size(), most));
            leaves.U32(WriteLeaf(part));
            children = children.subspan(part.size());
        }
        ByteBuffer root;
        root.Text("ri");
        root.U16(count);
        root.Bytes(leaves.View());
        return bins_.Allocate(root.View());
    }

    std::uint32_t WriteLeaf(std::span<const Child> children) {
        ByteBuffer list;
        list.Text(leaf_ == SubKeyLeaf::Li ? "li" : leaf_ == SubKeyLeaf::Lf ? "lf" : "lh");
        list.U16(Size16(children.size()));
        for (const Child& child : children) {
            list.U32(child.cell);
            if (leaf_ == SubKeyLeaf::Lf) {
                list.U32(NameHint(child.name));
            } else if (leaf_ == SubKeyLeaf::Lh) {
                list.U32(NameHash(child.name));
            }
        }
        return bins_.Allocate(list.View());
    }

    const HiveOptions& options_;
    SubKeyLeaf leaf_;
    Bins bins_;
    std::uint32_t security_ = kNone;
    std::uint32_t keyCount_ = 0;
};

}  // namespace

HiveKey& HiveKey::AddKey(std::string subKeyName) {
    HiveKey& key = subKeys.emplace_back();
    key.name = std::move(subKeyName);
    return key;
}

HiveKey& HiveKey::Key(std::string_view path) {
    const std::size_t end = path.find('\\');
    const std::string_view first = path.substr(0, end);
    const std::u16string wanted = ToUpper(ToUtf16(first));
    const auto found = std::find_if(subKeys.begin(), subKeys.end(),
                                    [&](const HiveKey& key) { return ToUpper(ToUtf16(key.name)) == wanted; });
    HiveKey& key = found != subKeys.end() ? *found : AddKey(std::string(first));
    return end == std::string_view::npos ? key : key.Key(path.substr(end + 1));
}

void HiveKey::Add(std::string valueName, std::uint32_t type, std::vector<std::byte> data) {
    values.push_back({std::move(valueName), type, std::move(data)});
}

void HiveKey::Set(std::string_view valueName, std::uint32_t type, std::vector<std::byte> data) {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&](const HiveValue& value) { return value.name == valueName; });
    if (found == values.end()) {
        Add(std::string(valueName), type, std::move(data));
    } else {
        found->type = type;
        found->data = std::move(data);
    }
}

void HiveKey::SetString(std::string_view valueName, std::string_view utf8, std::uint32_t type) {
    Set(valueName, type, TextData(utf8));
}

void HiveKey::SetMultiString(std::string_view valueName, std::span<const std::string> texts) {
    ByteBuffer data;
    for (const std::string& text : texts) {
        data.Utf16Z(ToUtf16(text));
    }
    data.U16(0);
    Set(valueName, 7, data.Take());
}

void HiveKey::SetDword(std::string_view valueName, std::uint32_t value) {
    ByteBuffer data;
    data.U32(value);
    Set(valueName, 4, data.Take());
}

void HiveKey::SetBinary(std::string_view valueName, std::vector<std::byte> data) {
    Set(valueName, 3, std::move(data));
}

std::vector<std::byte> TextData(std::string_view utf8) {
    ByteBuffer data;
    data.Utf16Z(ToUtf16(utf8));
    return data.Take();
}

std::uint32_t BaseBlockChecksum(std::span<const std::byte> baseBlock) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < 508; i += 4) {
        sum ^= U32At(baseBlock, i);
    }
    // These two are never stored.
    if (sum == 0) {
        return 1;
    }
    return sum == 0xFFFFFFFF ? 0xFFFFFFFE : sum;
}

std::vector<std::byte> WriteHive(const HiveKey& root, const HiveOptions& options) {
    return Writer(options).Write(root);
}

}  // namespace ostrevin::samples
