// Cache indexes: any bytes are read without harm, and as a plain scan of them reads them.
//
// The first byte of an input tells how far the rest is moved: 0 leaves it as it is, and any other number puts
// what stands behind the usual header so many bytes before the end of the reader's first window, and moves
// the offset at which the scan starts by as much.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "sources/FileTimeToLocalDate.h"
#include "sources/IEHistoryList.h"
#include "tests/support/MemoryPlatform.h"
#include "tests/support/PlainIndexScan.h"

using namespace ostrevin;

namespace {

constexpr char kPath[] = "C:\\Documents and Settings\\anna\\Cookies\\index.dat";
constexpr std::size_t kWindow = 256 * std::size_t{1024};
constexpr std::size_t kHeader = 36;

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::vector<std::byte> FileOf(std::span<const std::byte> input) {
    if (input.empty()) {
        return {};
    }
    const auto before = std::to_integer<std::size_t>(input.front());
    std::vector<std::byte> file(input.begin() + 1, input.end());
    if (before == 0 || file.size() < kHeader) {
        return file;
    }
    const std::size_t filling = kWindow - kHeader - before;
    file.insert(file.begin() + kHeader, filling, std::byte{'x'});
    std::size_t carry = filling;
    for (std::size_t i = kHeader - 4; i < kHeader; ++i) {
        carry += std::to_integer<std::size_t>(file[i]);
        file[i] = static_cast<std::byte>(carry);
        carry >>= 8U;
    }
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::byte> file = FileOf(std::as_bytes(std::span(data, size)));
    MemoryPlatform platform;
    platform.AddFile(kPath, file);
    IEHistoryList list(platform, "");
    Require(list.LoadIEHistory("anna"));

    const std::vector<PlainIndexRecord> records = PlainIndexScan(file).Records();
    Require(list.Count() == static_cast<std::int32_t>(records.size()));
    for (std::int32_t i = 0; i < list.Count(); ++i) {
        const PlainIndexRecord& record = records[static_cast<std::size_t>(i)];
        Require(list.URL(i) == platform.DecodeAnsi(record.address));
        Require(list.DateAccessed(i) == FileTimeToLocalDate(platform, record.accessed));
    }
    list.Sort();
    for (std::int32_t i = 1; i < list.Count(); ++i) {
        Require(list.URL(i - 1) <= list.URL(i));
    }
    return 0;
}
