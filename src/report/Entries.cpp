#include "report/Entries.h"

#include <array>
#include <vector>

#include "platform/Dates.h"

namespace ostrevin {
namespace {

using Values = std::vector<EntryValue>;

std::string IsoDate(double date) {
    const SystemTime civil = CivilFromDate(date);
    return IsoDay(civil) + "T" + IsoTime(civil);
}

constexpr std::array<std::string_view, 8> kUserAssist = {"sid",  "account", "source",   "name",
                                                         "type", "value",   "runCount", "lastRun"};
constexpr std::array<std::string_view, 5> kRecentDocument = {"sid", "account", "source", "file", "path"};
constexpr std::array<std::string_view, 4> kOpenSave = {"sid", "account", "source", "document"};
constexpr std::array<std::string_view, 5> kIEHistory = {"sid", "account", "source", "url", "dateAccessed"};
constexpr std::array<std::string_view, 4> kTypedURL = {"sid", "account", "source", "url"};

void AddMembers(Values& values, const UserAssistList& source, std::int32_t i) {
    values.emplace_back(source.UserAssistName(i));
    values.emplace_back(source.UserAssistType(i));
    values.emplace_back(source.UserAssistValue(i));
    values.emplace_back(source.UserAssistRunCount(i));
    values.emplace_back(IsoDate(source.UserAssistLastRun(i)));
}

void AddMembers(Values& values, const RecentDocumentList& source, std::int32_t i) {
    values.emplace_back(source.RecentDocument(i));
    values.emplace_back(source.RecentDocumentPath(i));
}

void AddMembers(Values& values, const OpenSaveList& source, std::int32_t i) {
    values.emplace_back(source.Document(i));
}

void AddMembers(Values& values, const IEHistoryList& source, std::int32_t i) {
    values.emplace_back(source.URL(i));
    values.emplace_back(IsoDate(source.DateAccessed(i)));
}

void AddMembers(Values& values, const TypedURLList& source, std::int32_t i) {
    values.emplace_back(source.URL(i));
}

}  // namespace

std::span<const std::string_view> EntryMembers(ReportSection section) {
    switch (section) {
        case ReportSection::Programs:
            return kUserAssist;
        case ReportSection::RecentDocuments:
            return kRecentDocument;
        case ReportSection::OpenSave:
            return kOpenSave;
        case ReportSection::IEHistory:
            return kIEHistory;
        case ReportSection::TypedURLs:
            return kTypedURL;
    }
    return {};
}

void ForEachEntry(AccountList& accounts, std::int32_t index, ReportSection section, const TakeEntry& take) {
    const auto visit = [&](const char* name, const auto* source) {
        const std::int32_t count = source == nullptr ? 0 : source->Count();
        const Values common = {accounts.AccountSID(index), accounts.AccountName(index), std::string(name)};
        for (std::int32_t i = 0; i < count; ++i) {
            Values values = common;
            AddMembers(values, *source, i);
            take(values);
        }
    };
    switch (section) {
        case ReportSection::Programs:
            return visit("UserAssist", accounts.UserAssist(index));
        case ReportSection::RecentDocuments:
            return visit("RecentDocument", accounts.RecentDocument(index));
        case ReportSection::OpenSave:
            return visit("OpenSave", accounts.OpenSave(index));
        case ReportSection::IEHistory:
            return visit("IEHistory", accounts.IEHistory(index));
        case ReportSection::TypedURLs:
            return visit("TypedURL", accounts.TypedURL(index));
    }
}

}  // namespace ostrevin
