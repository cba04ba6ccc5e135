// The local accounts and, for each, its five sources of traces, made and loaded on the first request.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "sources/IEHistoryList.h"
#include "sources/OpenSaveList.h"
#include "sources/RecentDocumentList.h"
#include "sources/TypedURLList.h"
#include "sources/UserAssistList.h"

namespace ostrevin {

/// What the account list is told by start-up.
struct AccountListSetup {
    /// The logged-on user's name as found at start-up.
    std::string loggedOnUserName;
    /// Asks for that name anew.
    std::function<std::string()> getLoggedOnUserName;
    /// Takes a line about a source that could not be read to its end, or of which something was cut off.
    std::function<void(const std::string&)> noteFailure;
    /// Takes a line about an account for whose traces there is not enough memory, once for each; what is read
    /// of other accounts is not touched. May be empty.
    std::function<void(const std::string&)> noteShortage = {};
};

/// Accounts are told apart by an index from 0 to Count - 1. An index out of range gives "" or no object.
class AccountList {
  public:
    AccountList(Platform& platform, AccountListSetup setup);

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(accounts_.size()); }
    [[nodiscard]] std::string AccountSID(std::int32_t index) const;
    [[nodiscard]] std::string AccountName(std::int32_t index) const;
    [[nodiscard]] std::string AccountDocumentSettingsPath(std::int32_t index) const;

    /// Loads the account's hive first, as OpenSave does.
    UserAssistList* UserAssist(std::int32_t index);
    RecentDocumentList* RecentDocument(std::int32_t index);
    OpenSaveList* OpenSave(std::int32_t index);
    IEHistoryList* IEHistory(std::int32_t index);
    /// Loads no hive: unless it is there already, the source stays empty for good.
    TypedURLList* TypedURL(std::int32_t index);

    /// The last account of exactly this name, or -1.
    [[nodiscard]] std::int32_t GetAccountIndex(const std::string& name) const;
    /// Fills the names. A security identifier that is not known gets the name of the account before it. Lets
    /// the platform's failure through when the accounts cannot be asked for.
    void LoadAccountNamesFromSID();
    /// Fills identifiers and profile paths from the profile list; false when there is none.
    bool LoadAccountSIDSFromRegistry();

  private:
    struct Account {
        std::string sid;
        std::string name;
        std::string profilePath;
        std::unique_ptr<UserAssistList> userAssist;
        std::unique_ptr<RecentDocumentList> recentDocument;
        std::unique_ptr<OpenSaveList> openSave;
        std::unique_ptr<IEHistoryList> ieHistory;
        std::unique_ptr<TypedURLList> typedURL;
        bool hadShortage = false;
    };

    [[nodiscard]] const Account* At(std::int32_t index) const;
    [[nodiscard]] Account* At(std::int32_t index);
    /// A source, made and loaded on the first request; an empty one where memory does not suffice.
    template <typename Source, typename Make, typename Load>
    Source* Loaded(std::int32_t index, std::unique_ptr<Source> Account::*place, const Make& make,
                   const Load& load);
    void NoteLoss(const char* source, const Account& account, const std::string& loss);
    void NoteShortage(Account& account);
    [[nodiscard]] std::string ReadProfilePath(const std::string& sid);
    [[nodiscard]] std::string ReadText(const std::string& keyPath, const std::string& valueName);
    void LoadHive(const Account& account);

    Platform& platform_;
    AccountListSetup setup_;
    std::vector<Account> accounts_;
};

}  // namespace ostrevin
