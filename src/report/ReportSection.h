// The sections of what is written about an account: one for each source.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace ostrevin {

enum class ReportSection { Programs, RecentDocuments, OpenSave, IEHistory, TypedURLs };

/// All of them, in their order. It decides what the later ones find: typed addresses are there only once a
/// hive is loaded.
inline constexpr std::array<ReportSection, 5> kReportSections = {
    ReportSection::Programs, ReportSection::RecentDocuments, ReportSection::OpenSave,
    ReportSection::IEHistory, ReportSection::TypedURLs};

/// What a section is called on a command line, and as the name of a file.
[[nodiscard]] constexpr std::string_view NameOf(ReportSection section) {
    constexpr std::array<std::string_view, kReportSections.size()> kNames = {"programs", "recent", "opensave",
                                                                             "iehistory", "typedurls"};
    return kNames.at(static_cast<std::size_t>(section));
}

}  // namespace ostrevin
