#include "sources/OpenSaveList.h"

#include <string_view>

#include "platform/RegistryAccess.h"
#include "platform/Text.h"
#include "sources/CombSort.h"

namespace ostrevin {
namespace {

/// Reads a value into text; a failure leaves the text as it was.
void ReadInto(std::string& text, RegistryAccess& registry, const std::string& path) {
    try {
        text = ToText(registry.ReadRegistryValue(path));
    } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch): what stood there stays, on purpose
    }
}

}  // namespace

std::string OpenSaveList::Document(std::int32_t index) const {
    return index >= 0 && index < Count() ? entries_[static_cast<std::size_t>(index)].document : std::string();
}

bool OpenSaveList::LoadOpenSaveList(const std::string& sid) {
    const std::string base =
        "HKEY_USERS\\" + sid +
        "\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\ComDlg32\\OpenSaveMRU";
    RegistryAccess registry(platform_);
    std::vector<std::string> kinds;
    try {
        kinds = registry.EnumerateRegistryKey(base, RegistryAccess::kSubKeys);
    } catch (const RuntimeError&) {
        return false;
    }
    std::string letters;
    std::string document;
    for (const std::string& kind : kinds) {
        if (kind.starts_with('*')) {
            continue;
        }
        const std::string key = std::string(base).append("\\").append(kind);
        ReadInto(letters, registry, key + "MRUList");
        for (std::string_view rest = letters; !rest.empty();) {
            std::string value = key;
            AppendCharacter(value, TakeCharacter(rest));
            ReadInto(document, registry, value);
            entries_.push_back({document});
        }
    }
    return true;
}

void OpenSaveList::Sort() {
    CombSort(entries_, &Entry::document);
}

}  // namespace ostrevin
