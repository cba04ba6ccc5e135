// Writes the inputs from which the index's fuzz target starts. The first byte of each tells how far the file
// is moved towards the edge of the reader's window (see the target).
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "fuzz/seeds/Seeds.h"
#include "tools/writers/ByteBuffer.h"
#include "tools/writers/IndexWriter.h"
#include "tools/writers/Times.h"

namespace {

using ostrevin::fuzz::WriteSeed;
using namespace ostrevin::samples;

IndexRecord Record(const std::string& address, IndexRecord::Kind kind = IndexRecord::Kind::Url) {
    IndexRecord record;
    record.kind = kind;
    record.address = address;
    record.accessed = FileTimeOf({2009, 8, 4, 15, 22, 18});
    return record;
}

/// An index with the hash tables taken out, so that inputs are small: its records follow the header's block.
std::vector<std::byte> SmallIndex(const std::vector<IndexRecord>& records) {
    constexpr std::size_t kScanStart = 32;
    IndexOptions options;
    options.cutBytes = 1;
    const std::vector<std::byte> whole = WriteIndex(records, options);
    const std::span<const std::byte> bytes = whole;
    ByteBuffer small;
    small.Bytes(bytes.first(kScanStart));
    small.U32(kIndexBlock);
    small.Align(kIndexBlock);
    small.Bytes(bytes.subspan(kIndexBlocksStart));
    return small.Take();
}

void Write(const std::string& folder, const std::string& name, std::uint8_t before,
           std::span<const std::byte> index) {
    ByteBuffer input;
    input.U8(before);
    input.Bytes(index);
    WriteSeed(folder, name, input.View());
}

void WriteSeeds(const std::string& folder) {
    const auto usual =
        SmallIndex({Record("Visited: anna@http://a/"), Record("http://leak/", IndexRecord::Kind::Leak),
                    Record("http://redirect/", IndexRecord::Kind::Redirect), Record("cookie:anna@a@b")});
    Write(folder, "usual", 0, usual);
    for (const unsigned before : {1U, 4U, 20U, 110U, 255U}) {
        Write(folder, "window-" + std::to_string(before), static_cast<std::uint8_t>(before), usual);
    }
    for (const std::size_t end : {0U, 1U, 126U, 127U}) {
        const auto index = SmallIndex({Record(PadAddress("http://a/", end)), Record("b"), Record("c")});
        Write(folder, "address-end-" + std::to_string(end), 0, index);
    }
    Write(folder, "cut", 0, std::span(usual).first(2 * kIndexBlock + 50));
    Write(folder, "whole", 0, WriteIndex({Record("http://a/")}, {}));
}

}  // namespace

int main(int argumentCount, char** arguments) {
    return ostrevin::fuzz::SeedsMain(argumentCount, arguments, WriteSeeds);
}
