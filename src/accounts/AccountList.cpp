#include "accounts/AccountList.h"

#include <algorithm>
#include <array>

#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace ostrevin {
namespace {

constexpr char kProfileList[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
// The two fall-backs are spelled differently, the list with an "s" and the path without it.
constexpr char kFallbackList[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\ProfilesList";
constexpr char kFallbackProfile[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\ProfileList";

}  // namespace

AccountList::AccountList(Platform& platform, AccountListSetup setup)
    : platform_(platform), setup_(std::move(setup)) {}

const AccountList::Account* AccountList::At(std::int32_t index) const {
    return index >= 0 && index < Count() ? &accounts_[static_cast<std::size_t>(index)] : nullptr;
}

AccountList::Account* AccountList::At(std::int32_t index) {
    return index >= 0 && index < Count() ? &accounts_[static_cast<std::size_t>(index)] : nullptr;
}

std::string AccountList::AccountSID(std::int32_t index) const {
    const Account* account = At(index);
    return account == nullptr ? std::string() : account->sid;
}

std::string AccountList::AccountName(std::int32_t index) const {
    const Account* account = At(index);
    return account == nullptr ? std::string() : account->name;
}

std::string AccountList::AccountDocumentSettingsPath(std::int32_t index) const {
    const Account* account = At(index);
    return account == nullptr ? std::string() : account->profilePath;
}

UserAssistList* AccountList::UserAssist(std::int32_t index) {
    Account* account = At(index);
    if (account == nullptr) {
        return nullptr;
    }
    if (account->userAssist == nullptr) {
        LoadHive(*account);
        account->userAssist = std::make_unique<UserAssistList>(platform_);
        try {
            account->userAssist->LoadUserAssist(account->sid);
        } catch (const RuntimeError& error) {
            setup_.noteFailure("UserAssist of " + account->sid + " is not read to its end: " + error.what());
        }
        account->userAssist->Sort();
    }
    return account->userAssist.get();
}

RecentDocumentList* AccountList::RecentDocument(std::int32_t index) {
    Account* account = At(index);
    if (account == nullptr) {
        return nullptr;
    }
    if (account->recentDocument == nullptr) {
        account->recentDocument = std::make_unique<RecentDocumentList>(platform_);
        account->recentDocument->LoadRecentDocuments(ReplaceAll(
            GetSpecialFolderPath(platform_, kFolderRecent), setup_.getLoggedOnUserName(), account->name));
        account->recentDocument->Sort();
    }
    return account->recentDocument.get();
}

OpenSaveList* AccountList::OpenSave(std::int32_t index) {
    Account* account = At(index);
    if (account == nullptr) {
        return nullptr;
    }
    if (account->openSave == nullptr) {
        LoadHive(*account);
        account->openSave = std::make_unique<OpenSaveList>(platform_);
        account->openSave->LoadOpenSaveList(account->sid);
        account->openSave->Sort();
    }
    return account->openSave.get();
}

IEHistoryList* AccountList::IEHistory(std::int32_t index) {
    Account* account = At(index);
    if (account == nullptr) {
        return nullptr;
    }
    if (account->ieHistory == nullptr) {
        account->ieHistory = std::make_unique<IEHistoryList>(platform_, setup_.loggedOnUserName);
        account->ieHistory->LoadIEHistory(account->name);
        account->ieHistory->Sort();
    }
    return account->ieHistory.get();
}

TypedURLList* AccountList::TypedURL(std::int32_t index) {
    Account* account = At(index);
    if (account == nullptr) {
        return nullptr;
    }
    if (account->typedURL == nullptr) {
        account->typedURL = std::make_unique<TypedURLList>(platform_);
        account->typedURL->LoadTypedURL(account->sid);
    }
    return account->typedURL.get();
}

std::int32_t AccountList::GetAccountIndex(const std::string& name) const {
    std::int32_t found = -1;
    for (std::int32_t i = 0; i < Count(); ++i) {
        if (AccountName(i) == name) {
            found = i;
        }
    }
    return found;
}

void AccountList::LoadAccountNamesFromSID() {
    std::vector<std::string> sids;
    for (const Account& account : accounts_) {
        sids.push_back(account.sid);
    }
    const std::vector<std::vector<std::string>> found = platform_.UserAccountNames(sids);
    // Not cleared between accounts: an identifier that is not known gets the name before it.
    std::string name;
    for (std::size_t i = 0; i < accounts_.size(); ++i) {
        if (!found[i].empty()) {
            name = found[i].back();
        }
        accounts_[i].name = name;
    }
}

bool AccountList::LoadAccountSIDSFromRegistry() {
    constexpr std::uint32_t kAccess = 0x3F;
    constexpr std::uint32_t kBufferSize = 256;
    KeyHandle list = 0;
    if (platform_.RegOpenKeyExA(kLocalMachine, kProfileList, kAccess, list) != kSuccess &&
        platform_.RegOpenKeyExA(kLocalMachine, kFallbackList, kAccess, list) != kSuccess) {
        return false;
    }
    TextBuffer name{kBufferSize, {}};
    TextBuffer keyClass{kBufferSize, {}};
    for (std::uint32_t index = 0;; ++index) {
        const std::int32_t code = platform_.RegEnumKeyExA(list, index, name, &keyClass);
        if (code != kSuccess && code != kMoreData) {
            break;
        }
        accounts_.resize(index + 1);
        Account& account = accounts_.back();
        account.sid = name.text;
        account.profilePath =
            ReplaceAll(ReadProfilePath(account.sid), "%SystemDrive%", GetSystemDrive(platform_));
    }
    platform_.RegCloseKey(list);
    return true;
}

std::string AccountList::ReadProfilePath(const std::string& sid) {
    const std::string path = ReadText(std::string(kProfileList) + "\\" + sid, "ProfileImagePath");
    return path.empty() ? ReadText(std::string(kFallbackProfile) + "\\" + sid, "ProfileImagePath") : path;
}

std::string AccountList::ReadText(const std::string& keyPath, const std::string& valueName) {
    constexpr std::uint32_t kAccessQueryValue = 0x1;
    KeyHandle key = 0;
    if (platform_.RegOpenKeyExA(kLocalMachine, keyPath, kAccessQueryValue, key) != kSuccess) {
        return {};
    }
    std::string text;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (platform_.RegQueryValueExA(key, valueName, type, nullptr, size) == kSuccess) {
        text.resize(size);
        if (platform_.RegQueryValueExA(key, valueName, type, reinterpret_cast<std::byte*>(text.data()),
                                       size) != kSuccess) {
            text.clear();
        }
    }
    platform_.RegCloseKey(key);
    text.resize(std::min(text.find('\0'), text.size()));
    // The type is not looked at, but bytes that are no text are not UTF-8 either.
    const bool isText = type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
    return isText ? text : platform_.DecodeAnsi(text);
}

void AccountList::LoadHive(const Account& account) {
    static const std::array<std::string, 2> kPrivileges = {"SeRestorePrivilege", "SeBackupPrivilege"};
    platform_.EnablePrivileges(kPrivileges);
    // Fails for a hive that is loaded already, whose data is then there all the same.
    platform_.RegLoadKeyA(kUsers, account.sid, account.profilePath + "\\NTUSER.DAT");
}

}  // namespace ostrevin
