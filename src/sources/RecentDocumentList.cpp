#include "sources/RecentDocumentList.h"

#include "sources/CombSort.h"
#include "sources/cShellLinkA.h"

namespace ostrevin {
namespace {

constexpr std::uint32_t kNotOrdinary = kAttributeHidden | kAttributeSystem | kAttributeDirectory;

}  // namespace

std::string RecentDocumentList::RecentDocument(std::int32_t index) const {
    return index >= 0 && index < Count() ? entries_[static_cast<std::size_t>(index)].file : std::string();
}

std::string RecentDocumentList::RecentDocumentPath(std::int32_t index) const {
    return index >= 0 && index < Count() ? entries_[static_cast<std::size_t>(index)].path : std::string();
}

bool RecentDocumentList::LoadRecentDocuments(const std::string& folder) {
    // One object for all files: what it read last is what a file that is no shortcut gets.
    cShellLinkA link(platform_);
    const std::int32_t before = Count();
    for (const DirectoryEntry& entry : platform_.ListDirectory(folder)) {
        if ((entry.attributes & kNotOrdinary) == 0) {
            link.GetLinkInfo(folder + "\\" + entry.name);
            entries_.push_back({entry.name, link.ExeName()});
        }
    }
    return Count() > before;
}

void RecentDocumentList::Sort() {
    CombSort(entries_, &Entry::path);
}

}  // namespace ostrevin
