#include "sources/OpenSaveList.h"

#include <map>
#include <string_view>

#include "platform/RegistryAccess.h"
#include "platform/Text.h"
#include "sources/CombSort.h"

namespace ostrevin {
namespace {

/// Reads a value into text; a failure, which gives false, leaves the text as it was.
bool ReadInto(std::string& text, RegistryAccess& registry, const std::string& path) {
    try {
        text = ToText(registry.ReadRegistryValue(path));
        return true;
    } catch (const RuntimeError&) {
        return false;
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
        if (!intake_.Take(letters)) {
            break;
        }
        // The entries of the letters read so far: a letter that is named again is not read again.
        std::map<char32_t, std::size_t> read;
        for (std::string_view rest = letters; !rest.empty();) {
            const char32_t letter = TakeCharacter(rest);
            std::string value = key;
            AppendCharacter(value, letter);
            if (const auto known = read.find(letter); known != read.end()) {
                document = entries_[known->second].document;
            } else if (ReadInto(document, registry, value)) {
                read.emplace(letter, entries_.size());
            }
            if (!intake_.Take(document)) {
                return true;
            }
            entries_.push_back({document});
        }
    }
    return true;
}

void OpenSaveList::Sort() {
    CombSort(entries_, &Entry::document);
}

}  // namespace ostrevin
