#include "accounts/AccountList.h"

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/TextIntake.h"

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

template <typename Source, typename Make, typename Load>
Source* AccountList::Loaded(std::int32_t index, std::unique_ptr<Source> Account::*place, const Make& make,
                            const Load& load) {
    Account* account = At(index);
    if (account == nullptr) {
        return nullptr;
    }
    std::unique_ptr<Source>& source = account->*place;
    if (source == nullptr) {
        source = make();
        try {
            load(*account, *source);
        } catch (const std::bad_alloc&) {
            source = make();
            NoteShortage(*account);
        } catch (const std::length_error&) {  // of what no memory could hold
            source = make();
            NoteShortage(*account);
        }
    }
    return source.get();
}

UserAssistList* AccountList::UserAssist(std::int32_t index) {
    return Loaded(
        index, &Account::userAssist, [this] { return std::make_unique<UserAssistList>(platform_); },
        [this](Account& account, UserAssistList& source) {
            LoadHive(account);
            try {
                source.LoadUserAssist(account.sid);
            } catch (const RuntimeError& error) {
                setup_.noteFailure("UserAssist of " + account.sid +
                                   " is not read to its end: " + error.what());
            }
            NoteLoss("UserAssist", account, source.Loss());
            source.Sort();
        });
}

RecentDocumentList* AccountList::RecentDocument(std::int32_t index) {
    return Loaded(
        index, &Account::recentDocument, [this] { return std::make_unique<RecentDocumentList>(platform_); },
        [this](Account& account, RecentDocumentList& source) {
            source.LoadRecentDocuments(ReplaceAll(GetSpecialFolderPath(platform_, kFolderRecent),
                                                  setup_.getLoggedOnUserName(), account.name));
            source.Sort();
        });
}

OpenSaveList* AccountList::OpenSave(std::int32_t index) {
    return Loaded(
        index, &Account::openSave, [this] { return std::make_unique<OpenSaveList>(platform_); },
        [this](Account& account, OpenSaveList& source) {
            LoadHive(account);
            source.LoadOpenSaveList(account.sid);
            NoteLoss("OpenSave", account, source.Loss());
            source.Sort();
        });
}

IEHistoryList* AccountList::IEHistory(std::int32_t index) {
    return Loaded(
        index, &Account::ieHistory,
        [this] { return std::make_unique<IEHistoryList>(platform_, setup_.loggedOnUserName); },
        [this](Account& account, IEHistoryList& source) {
            source.LoadIEHistory(account.name);
            NoteLoss("IEHistory", account, source.Loss());
            source.Sort();
        });
}

TypedURLList* AccountList::TypedURL(std::int32_t index) {
    return Loaded(
        index, &Account::typedURL, [this] { return std::make_unique<TypedURLList>(platform_); },
        [this](Account& account, TypedURLList& source) {
            source.LoadTypedURL(account.sid);
            NoteLoss("TypedURL", account, source.Loss());
        });
}

void AccountList::NoteLoss(const char* source, const Account& account, const std::string& loss) {
    if (!loss.empty()) {
        setup_.noteFailure(std::string(source) + " of " + account.sid + ": " + loss);
    }
}

void AccountList::NoteShortage(Account& account) {
    if (!std::exchange(account.hadShortage, true) && setup_.noteShortage) {
        setup_.noteShortage(account.sid + ", " + account.profilePath +
                            ": There is not enough memory for all traces of this account. Some are missing.");
    }
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
    TextIntake paths;
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
        if (!paths.Take(account.profilePath)) {
            account.profilePath.clear();
        }
    }
    platform_.RegCloseKey(list);
    if (const std::string loss = paths.Loss(); !loss.empty()) {
        setup_.noteFailure("ProfileList: " + loss);
    }
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
