#include "tests/samples/LinkOracle.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "tests/samples/Oracle.h"

namespace ostrevin::samples {
namespace {

using Lines = std::vector<std::string>;

// The single-byte forms of these tests hold no other characters.
std::string Utf8OfLatin1(const std::string& bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (code < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0U | code >> 6U);
            text += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
    return text;
}

Lines TimeLine(std::uint64_t fileTime) {
    return {fileTime == 0 ? "Not set (0)" : TimeText(fileTime, "%b %d, %Y %H:%M:%S.000000000 UTC")};
}

Lines OptionalLine(const std::optional<std::string>& text) {
    return text ? Lines{*text} : Lines{};
}

Lines SerialLine(const LinkVolume& volume) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08x", volume.serialNumber);
    return {text.data()};
}

Lines LocalPath(const Link& link) {
    if (!link.info || !link.info->volume) {
        return {};
    }
    const LinkInfo& info = *link.info;
    return {info.unicodeLocalBasePath.value_or(Utf8OfLatin1(info.localBasePath)) +
            info.unicodeSuffix.value_or(Utf8OfLatin1(info.suffix))};
}

Lines NetworkPath(const Link& link) {
    if (!link.info || !link.info->network) {
        return {};
    }
    const LinkInfo& info = *link.info;
    return {info.network->unicodeShare.value_or(Utf8OfLatin1(info.network->share)) + "\\" +
            info.unicodeSuffix.value_or(Utf8OfLatin1(info.suffix))};
}

}  // namespace

void ExpectLnkinfoAgrees(const Link& link, std::span<const std::byte> bytes) {
    const TestFile file(bytes);
    const Lines said = LinesOf({"lnkinfo", file.Path()});
    const auto first = [&](std::string_view prefix) {
        Lines found = After(said, prefix);
        found.resize(std::min<std::size_t>(found.size(), 1));
        return found;
    };
    // The first lines of these names stand before the identifier list, which has such lines of its own.
    EXPECT_EQ(first("\tCreation time\t\t\t:"), TimeLine(link.created));
    EXPECT_EQ(first("\tModification time\t\t:"), TimeLine(link.modified));
    EXPECT_EQ(first("\tAccess time\t\t\t:"), TimeLine(link.accessed));
    EXPECT_EQ(After(said, "\tFile size\t\t\t:"), Lines{std::to_string(link.size) + " bytes"});
    EXPECT_EQ(After(said, "\tIcon index\t\t\t:"), Lines{std::to_string(link.iconIndex)});
    EXPECT_EQ(After(said, "\tDescription\t\t\t:"), OptionalLine(link.description));
    EXPECT_EQ(After(said, "\tRelative path\t\t\t:"), OptionalLine(link.relativePath));
    EXPECT_EQ(After(said, "\tWorking directory\t\t:"), OptionalLine(link.workingFolder));
    EXPECT_EQ(After(said, "\tCommand line arguments\t\t:"), OptionalLine(link.arguments));
    EXPECT_EQ(After(said, "\tIcon location\t\t\t:"),
              OptionalLine(link.iconEnvironmentPath ? link.iconEnvironmentPath : link.iconFile));
    EXPECT_EQ(After(said, "\tEnvironment variables location\t:"), OptionalLine(link.environmentPath));
    EXPECT_EQ(After(said, "\tLocal path\t\t\t:"), LocalPath(link));
    EXPECT_EQ(After(said, "\tNetwork path\t\t\t:"), NetworkPath(link));
    if (link.info && link.info->volume) {
        const LinkVolume& volume = *link.info->volume;
        EXPECT_EQ(After(said, "\tDrive serial number\t\t:"), SerialLine(volume));
        EXPECT_EQ(After(said, "\tVolume label\t\t\t:"), Lines{volume.unicodeLabel.value_or(volume.label)});
    }
    const Lines items = After(said, "\t\tNumber of items\t\t:");
    EXPECT_EQ(items, link.items.empty() ? Lines{} : Lines{std::to_string(link.items.size())});
    EXPECT_EQ(After(said, "\tMachine identifier\t\t:"),
              link.tracker ? Lines{link.tracker->machine} : Lines{});
}

}  // namespace ostrevin::samples
