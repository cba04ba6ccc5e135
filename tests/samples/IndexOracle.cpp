#include "tests/samples/IndexOracle.h"

#include <string>
#include <utility>

#include "tests/samples/Oracle.h"

namespace ostrevin::samples {
namespace {

std::string KindName(IndexRecord::Kind kind) {
    switch (kind) {
        case IndexRecord::Kind::Url:
            return "URL";
        case IndexRecord::Kind::Leak:
            return "LEAK";
        case IndexRecord::Kind::Redirect:
            return "REDR";
        case IndexRecord::Kind::Raw:
            break;
    }
    return "";
}

std::string TimeLine(std::uint64_t fileTime) {
    return TimeText(fileTime, "%b %d, %Y %H:%M:%S.000000000");
}

/// As a time of two seconds' precision tells it.
std::string EvenSecondLine(std::uint64_t fileTime) {
    constexpr std::uint64_t kTwoSeconds = 20'000'000;
    return TimeText(fileTime / kTwoSeconds * kTwoSeconds, "%b %d, %Y %H:%M:%S");
}

}  // namespace

void ExpectMsiecfexportAgrees(const std::vector<IndexRecord>& records, std::span<const std::byte> bytes) {
    const TestFile file(bytes);
    const std::vector<std::string> said = LinesOf({"msiecfexport", file.Path()});
    std::vector<std::string> kinds;
    std::vector<std::string> addresses;
    std::vector<std::string> accessed;
    std::vector<std::string> modified;
    std::vector<std::string> fileNames;
    std::vector<std::string> expires;
    std::vector<std::string> checked;
    for (const IndexRecord& record : records) {
        if (record.kind == IndexRecord::Kind::Raw) {
            continue;
        }
        kinds.push_back(KindName(record.kind));
        if (record.kind == IndexRecord::Kind::Leak) {
            continue;  // the reader tells no more of these
        }
        addresses.push_back(record.address);
        if (record.kind == IndexRecord::Kind::Url) {
            accessed.push_back(TimeLine(record.accessed));
            modified.push_back(TimeLine(record.modified));
            for (const auto& [time, lines] :
                 {std::pair(record.expires, &expires), {record.accessed, &checked}}) {
                if (time != 0) {
                    lines->push_back(EvenSecondLine(time));
                }
            }
            if (!record.fileName.empty()) {
                fileNames.push_back(record.fileName);
            }
        }
    }
    ExpectSameLines(After(said, "Record type\t\t:"), kinds);
    ExpectSameLines(After(said, "Location\t\t:"), addresses);
    ExpectSameLines(After(said, "Primary time\t\t:"), accessed);
    ExpectSameLines(After(said, "Secondary time\t\t:"), modified);
    ExpectSameLines(After(said, "Filename\t\t:"), fileNames);
    ExpectSameLines(After(said, "Expiration time\t\t:"), expires);
    ExpectSameLines(After(said, "Last checked time\t:"), checked);
}

}  // namespace ostrevin::samples
