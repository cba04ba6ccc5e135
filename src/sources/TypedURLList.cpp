#include "sources/TypedURLList.h"

#include "platform/RegistryAccess.h"

namespace ostrevin {

std::string TypedURLList::URL(std::int32_t index) const {
    return index >= 0 && index < Count() ? urls_[static_cast<std::size_t>(index)] : std::string();
}

bool TypedURLList::LoadTypedURL(const std::string& sid) {
    constexpr int kLast = 25;
    const std::string key = "HKEY_USERS\\" + sid + "\\Software\\Microsoft\\Internet Explorer\\TypedURLs\\url";
    RegistryAccess registry(platform_);
    const std::int32_t before = Count();
    for (int number = 1; number <= kLast; ++number) {
        try {
            std::string url = ToText(registry.ReadRegistryValue(key + std::to_string(number)));
            if (!url.empty() && intake_.Take(url)) {
                urls_.push_back(std::move(url));
            }
        } catch (
            const RuntimeError&) {  // NOLINT(bugprone-empty-catch): a missing number does not end the list
        }
    }
    return Count() > before;
}

}  // namespace ostrevin
