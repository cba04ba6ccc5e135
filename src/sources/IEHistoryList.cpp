#include "sources/IEHistoryList.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string_view>

#include "platform/Paths.h"
#include "platform/Text.h"
#include "sources/CombSort.h"
#include "sources/FileTimeToLocalDate.h"

namespace ostrevin {
namespace {

constexpr std::uint64_t kBlock = 128;
/// Offsets within an index have 31 bits; a file that goes on behind them is none that the browser wrote.
constexpr std::uint64_t kLargestIndex = 0x7FFFFFFF;

/// Reads a file through a window of fixed size, so that a file of any length takes little memory.
class FileWindow {
  public:
    explicit FileWindow(InputFile& file)
        : file_(file), size_(std::min(file.Size(), kLargestIndex)), buffer_(kCapacity) {}

    [[nodiscard]] std::uint64_t Size() const { return size_; }

    /// The bytes from an offset on: at least one unless the file ends there, and at least wanted of them
    /// where the file has so many.
    std::span<const std::byte> From(std::uint64_t offset, std::size_t wanted) {
        const bool inside = offset >= start_ && offset + wanted <= start_ + length_;
        if (!inside && !(offset >= start_ && offset < start_ + length_ && start_ + length_ >= size_)) {
            start_ = offset;
            const std::uint64_t left = size_ - std::min(offset, size_);
            const auto fitting = static_cast<std::size_t>(std::min<std::uint64_t>(left, kCapacity));
            length_ = file_.Read(offset, std::span(buffer_).first(fitting));
            if (length_ == 0) {
                size_ = std::min(size_, offset);
            }
        }
        const std::size_t skip = std::min<std::size_t>(static_cast<std::size_t>(offset - start_), length_);
        return std::span(buffer_).subspan(skip, length_ - skip);
    }

    /// A little-endian integer; bytes behind the end of the file count as zeros.
    std::uint32_t UInt32(std::uint64_t offset) {
        const std::span<const std::byte> bytes = From(offset, 4);
        std::uint32_t number = 0;
        for (std::size_t i = std::min<std::size_t>(bytes.size(), 4); i-- > 0;) {
            number |= std::to_integer<std::uint32_t>(bytes[i]) << (8U * i);
        }
        return number;
    }

    /// The text up to a zero byte or the end of the file, of its bytes at most so many; isCut becomes true
    /// when there are more. The offset moves behind the zero byte.
    std::string Text(std::uint64_t& offset, std::size_t most, bool& isCut) {
        std::string text;
        for (;;) {
            const std::span<const std::byte> bytes = From(offset, 1);
            const auto zero = std::find(bytes.begin(), bytes.end(), std::byte{0});
            const auto length = static_cast<std::size_t>(zero - bytes.begin());
            const std::size_t kept = std::min(length, most - text.size());
            isCut = isCut || kept < length;
            text.append(reinterpret_cast<const char*>(bytes.data()), kept);
            offset += length;
            if (zero != bytes.end()) {
                ++offset;
                return text;
            }
            if (bytes.empty()) {
                return text;
            }
        }
    }

  private:
    static constexpr std::size_t kCapacity = 256 * std::size_t{1024};

    InputFile& file_;
    std::uint64_t size_;
    std::vector<std::byte> buffer_;
    std::uint64_t start_ = 0;
    std::size_t length_ = 0;
};

bool IsRecord(const std::byte* signature) {
    return std::memcmp(signature, "URL ", 4) == 0 || std::memcmp(signature, "LEAK", 4) == 0;
}

/// The offset of the next record's signature, looked for every 4 bytes; the file's size when there is none.
std::uint64_t NextRecord(FileWindow& window, std::uint64_t offset) {
    while (offset + 4 <= window.Size()) {
        const std::span<const std::byte> bytes = window.From(offset, 4);
        std::size_t at = 0;
        for (; at + 4 <= bytes.size(); at += 4) {
            if (IsRecord(bytes.data() + at)) {
                return offset + at;
            }
        }
        if (at == 0) {
            break;
        }
        offset += at;
    }
    return window.Size();
}

/// Where the scan goes on after a record whose last byte read stands before offset: at the next block, or at
/// the one behind it when offset is the last byte of a block.
std::uint64_t Realign(std::uint64_t offset) {
    return kBlock * ((offset + 1) / kBlock + 1);
}

}  // namespace

std::string IEHistoryList::URL(std::int32_t index) const {
    return index >= 0 && index < Count() ? entries_[static_cast<std::size_t>(index)].url : std::string();
}

double IEHistoryList::DateAccessed(std::int32_t index) const {
    return index >= 0 && index < Count() ? entries_[static_cast<std::size_t>(index)].dateAccessed
                                         : kDateOfNoTime;
}

std::optional<std::string> IEHistoryList::IndexFile(const std::string& accountName) const {
    const std::string profile = GetSystemDrive(platform_) + "\\Documents and Settings\\" + accountName;
    const std::array<std::string, 4> candidates = {
        ReplaceAll(GetSpecialFolderPath(platform_, kFolderHistory) + "\\index.dat", loggedOnUserName_,
                   accountName),
        profile + "\\Local Settings\\History\\History.IE5\\index.dat",
        profile + "\\Local Settings\\Temporary Internet Files\\Content.IE5\\index.dat",
        profile + "\\Cookies\\index.dat",
    };
    for (const std::string& candidate : candidates) {
        const std::optional<DirectoryEntry> entry = platform_.FindEntry(candidate);
        if (entry && (entry->attributes & kAttributeDirectory) == 0) {
            return candidate;
        }
    }
    return std::nullopt;
}

bool IEHistoryList::LoadIEHistory(const std::string& accountName) {
    const std::optional<std::string> path = IndexFile(accountName);
    if (!path) {
        return false;
    }
    const std::unique_ptr<InputFile> file = platform_.OpenFile(*path);
    if (file == nullptr) {
        return false;
    }
    Scan(*file);
    return true;
}

void IEHistoryList::Scan(InputFile& file) {
    constexpr std::uint64_t kDateOffset = 16;
    constexpr std::uint64_t kAddressOffset = 104;
    constexpr std::size_t kMostBytes = std::size_t{2} * kLongestAddress;  // of it and what stands before it
    FileWindow window(file);
    std::uint64_t offset = 0;
    bool isCut = false;
    window.Text(offset, 0, isCut);  // the signature, which is not looked at
    const auto scanStart = static_cast<std::int32_t>(window.UInt32(offset + 4));
    if (scanStart < 0) {
        return;
    }
    offset = static_cast<std::uint64_t>(scanStart);
    for (;;) {
        const std::uint64_t record = NextRecord(window, offset);
        if (record >= window.Size()) {
            return;
        }
        const FileTime accessed{window.UInt32(record + kDateOffset), window.UInt32(record + kDateOffset + 4)};
        offset = record + kAddressOffset;
        isCut = false;
        std::string address = platform_.DecodeAnsi(window.Text(offset, kMostBytes, isCut));
        // "@" ends the name of the user in an address such as Visited: name@http://...
        const std::size_t at = address.find('@');
        if (at != std::string::npos) {
            address.erase(0, at + 1);
        }
        if (isCut) {
            intake_.NoteCut();
        }
        if (!intake_.Take(address)) {
            return;
        }
        entries_.push_back({std::move(address), FileTimeToLocalDate(platform_, accessed)});
        offset = Realign(offset);
    }
}

void IEHistoryList::Sort() {
    CombSort(entries_, &Entry::url);
}

}  // namespace ostrevin
