#include "tests/support/PlainIndexScan.h"

namespace ostrevin {

std::vector<PlainIndexRecord> PlainIndexScan::Records() {
    std::vector<PlainIndexRecord> records;
    Text();
    Integer();
    const auto start = static_cast<std::int32_t>(Integer());
    if (start < 0) {
        return records;
    }
    next_ = static_cast<std::uint64_t>(start);
    do {
        const std::string signature = Characters(4);
        if (signature == "URL " || signature == "LEAK") {
            records.push_back(Record());
            const std::uint64_t position = next_ + 1;
            const std::uint64_t nextPosition = position + (128 - position % 128) + 1;
            next_ = nextPosition - 1;
        }
    } while (lastRead_ < bytes_.size());
    return records;
}

PlainIndexRecord PlainIndexScan::Record() {
    PlainIndexRecord record;
    Characters(4 + 8);
    record.accessed.low = Integer();
    record.accessed.high = Integer();
    Characters(80);
    const std::string address = Text();
    record.address = address.substr(address.find('@') + 1);
    return record;
}

/// The next byte; 0 behind the end of the file.
std::byte PlainIndexScan::Take() {
    const std::byte byte = next_ < bytes_.size() ? bytes_[static_cast<std::size_t>(next_)] : std::byte{0};
    lastRead_ = ++next_;
    return byte;
}

std::string PlainIndexScan::Characters(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_integer<char>(Take());
    }
    return text;
}

std::uint32_t PlainIndexScan::Integer() {
    std::uint32_t number = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        number |= std::to_integer<std::uint32_t>(Take()) << shift;
    }
    return number;
}

/// The characters up to a zero byte or the end of the file.
std::string PlainIndexScan::Text() {
    std::string text;
    while (next_ < bytes_.size()) {
        const std::byte byte = Take();
        if (byte == std::byte{0}) {
            break;
        }
        text += std::to_integer<char>(byte);
    }
    return text;
}

}  // namespace ostrevin
