#include "startup/ReportCommand.h"

#include <exception>

#include "accounts/AccountList.h"
#include "report/JsonLines.h"
#include "startup/HostProbes.h"

namespace ostrevin {
namespace {

constexpr char kUsage[] =
    "usage: ostrevin-report --accounts VOLUME | ostrevin-report --format jsonl [--account NAME] VOLUME";
constexpr char kProgram[] = "ostrevin-report: ";

/// Writes the entries of every account of the wanted name; false when there is none.
bool WriteEntries(std::ostream& output, AccountList& accounts, const std::optional<std::string>& name) {
    bool found = !name;
    for (std::int32_t i = 0; i < accounts.Count(); ++i) {
        if (!name || accounts.AccountName(i) == *name) {
            found = true;
            WriteEntryLines(output, accounts, i);
        }
    }
    return found;
}

void WriteReport(const ReportRequest& request, Platform& platform, std::ostream& output,
                 std::ostream& errors) {
    AccountList accounts(platform,
                         {GetLoggedOnUserName(platform), [&] { return GetLoggedOnUserName(platform); },
                          [&](const std::string& line) { errors << kProgram << line << '\n'; }});
    if (!accounts.LoadAccountSIDSFromRegistry()) {
        throw std::runtime_error(request.volume + ": its registry has no list of profiles");
    }
    accounts.LoadAccountNamesFromSID();
    if (request.accounts) {
        WriteAccountLines(output, accounts);
    } else if (!WriteEntries(output, accounts, request.account)) {
        throw std::runtime_error(request.volume + ": no account is named " + *request.account);
    }
    if (!output.flush()) {
        throw std::runtime_error("standard output: cannot be written");
    }
}

}  // namespace

std::optional<ReportRequest> ParseReportArguments(const std::vector<std::string>& arguments) {
    ReportRequest request;
    bool entries = false;
    bool haveVolume = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (argument == "--accounts") {
            request.accounts = true;
        } else if (argument == "--format" && hasValue && arguments[i + 1] == "jsonl") {
            entries = true;
            ++i;
        } else if (argument == "--account" && hasValue) {
            request.account = arguments[++i];
        } else if (!argument.starts_with('-') && !argument.empty() && !haveVolume) {
            request.volume = argument;
            haveVolume = true;
        } else {
            return std::nullopt;
        }
    }
    if (!haveVolume || request.accounts == entries || (request.accounts && request.account)) {
        return std::nullopt;
    }
    return request;
}

int RunReport(const std::vector<std::string>& arguments, const OpenPlatform& open, std::ostream& output,
              std::ostream& errors) {
    const std::optional<ReportRequest> request = ParseReportArguments(arguments);
    if (!request) {
        errors << kUsage << '\n';
        return kReportUsage;
    }
    try {
        const std::unique_ptr<Platform> platform = open(request->volume);
        WriteReport(*request, *platform, output, errors);
        return kReportDone;
    } catch (const std::exception& failure) {
        errors << kProgram << failure.what() << '\n';
        return kReportCannot;
    }
}

}  // namespace ostrevin
