#include "startup/ReportCommand.h"

#include <exception>
#include <new>
#include <set>

#include "accounts/AccountList.h"
#include "controls/FailureText.h"
#include "platform/Text.h"
#include "report/CsvFile.h"
#include "report/HtmlReport.h"
#include "report/JsonLines.h"
#include "startup/HostProbes.h"
#include "startup/ReportArguments.h"
#include "startup/ReportFileNames.h"

namespace ostrevin {
namespace {

constexpr char kLiveUsage[] = "Without VOLUME it reports on this machine.\n";

/// What a report is on, as messages name it.
std::string SubjectOf(const ReportRequest& request) {
    return request.volume.empty() ? "this machine" : request.volume;
}

/// Wants what the command line wants, and tells nobody how far it is.
class SilentClient : public ReportClient {
  public:
    explicit SilentClient(const std::set<ReportSection>& sections) : sections_(sections) {}
    bool Includes(ReportSection section) override { return sections_.contains(section); }
    void Opened() override {}
    void Progress(float /*percent*/, bool /*handleMessages*/) override {}

  private:
    const std::set<ReportSection>& sections_;
};

/// One run on an open volume.
class Reporter {
  public:
    Reporter(const ReportRequest& request, Platform& platform, AccountList& accounts, std::ostream& errors)
        : request_(request), platform_(platform), accounts_(accounts), errors_(errors) {}

    /// Whether everything could be written that was asked for; what could not is told then.
    [[nodiscard]] bool Complete() const { return complete_; }
    void Write(std::ostream& output) {
        switch (request_.format) {
            case ReportFormat::Accounts:
                return WriteAccountLines(output, accounts_);
            case ReportFormat::JsonLines:
                return WriteJsonLines(output);
            case ReportFormat::Csv:
                return WriteCsvFiles();
            case ReportFormat::Html:
                return request_.account ? WriteOneHtml() : WriteAllHtml();
        }
    }

  private:
    void WriteJsonLines(std::ostream& output) {
        for (const std::int32_t index : WantedAccounts()) {
            WriteEntryLines(output, accounts_, index);
        }
    }
    void WriteCsvFiles() {
        const std::vector<std::int32_t> wanted = WantedAccounts();
        platform_.CreateOutputFolder(request_.output);
        for (const ReportSection section : kReportSections) {
            WriteCsvFile(platform_, accounts_, wanted, section,
                         InOutput(std::string(NameOf(section)) + ".csv"));
        }
    }
    /// The last account of the name, as the window's dialog has it.
    void WriteOneHtml() { WriteHtml(WantedAccounts().back(), request_.output, Existing::Replace); }
    void WriteAllHtml() {
        std::vector<std::int32_t> named;
        for (const std::int32_t index : WantedAccounts()) {
            if (!accounts_.AccountName(index).empty()) {
                named.push_back(index);
            }
        }
        if (named.empty()) {
            throw std::runtime_error(SubjectOf(request_) + ": no account has a name");
        }
        platform_.CreateOutputFolder(request_.output);
        ReportFileNames names;
        for (const std::int32_t index : named) {
            const std::string name = names.For(accounts_.AccountName(index), accounts_.AccountSID(index));
            try {
                // A name that comes from the evidence costs no file that is there.
                WriteHtml(index, InOutput(name), Existing::Keep);
            } catch (const std::bad_alloc& failure) {
                Miss(InOutput(name) + ": " + FailureText(failure));
            } catch (const std::exception& failure) {
                Miss(failure.what());
            }
        }
    }
    /// Goes on without one of several reports.
    void Miss(const std::string& why) {
        TellError(errors_, why);
        complete_ = false;
    }
    void WriteHtml(std::int32_t index, const std::string& file, Existing existing) {
        SilentClient client(request_.sections);
        HtmlReport(platform_, accounts_, client).Create(index, file, existing);
    }

    /// The accounts of the wanted name, or all.
    [[nodiscard]] std::vector<std::int32_t> WantedAccounts() const {
        std::vector<std::int32_t> wanted;
        for (std::int32_t i = 0; i < accounts_.Count(); ++i) {
            if (!request_.account || accounts_.AccountName(i) == *request_.account) {
                wanted.push_back(i);
            }
        }
        if (request_.account && wanted.empty()) {
            throw std::runtime_error(SubjectOf(request_) + ": no account is named " + *request_.account);
        }
        return wanted;
    }
    [[nodiscard]] std::string InOutput(const std::string& name) const {
        const bool separated = request_.output.ends_with('/') || request_.output.ends_with('\\');
        return request_.output + (separated ? "" : "/") + name;
    }

    const ReportRequest& request_;
    Platform& platform_;
    AccountList& accounts_;
    std::ostream& errors_;
    bool complete_ = true;
};

/// Whether all of it could be read and written.
bool WriteReport(const ReportRequest& request, Platform& platform, std::ostream& output,
                 std::ostream& errors) {
    const auto tell = [&](const std::string& line) { TellError(errors, line); };
    bool complete = true;
    const auto tellShortage = [&](const std::string& line) {
        tell(line);
        complete = false;
    };
    AccountList accounts(platform, {GetLoggedOnUserName(platform),
                                    [&] { return GetLoggedOnUserName(platform); }, tell, tellShortage});
    if (!accounts.LoadAccountSIDSFromRegistry()) {
        throw std::runtime_error(SubjectOf(request) + ": its registry has no list of profiles");
    }
    accounts.LoadAccountNamesFromSID();
    Reporter reporter(request, platform, accounts, errors);
    reporter.Write(output);
    if (!output.flush()) {
        throw std::runtime_error("standard output: cannot be written");
    }
    return complete && reporter.Complete();
}

}  // namespace

void TellError(std::ostream& errors, std::string_view line) {
    errors << "ostrevin-report: " << PlainLine(line) << '\n';
}

int RunReport(const std::vector<std::string>& arguments, const ReportHost& host, std::ostream& output,
              std::ostream& errors) {
    const auto need = host.openLiveMachine ? VolumeArgument::Optional : VolumeArgument::Needed;
    try {
        const ReportRequest request = ParseReportArguments(arguments, need);
        const std::unique_ptr<Platform> platform =
            request.volume.empty() ? host.openLiveMachine() : host.openVolume(request.volume);
        return WriteReport(request, *platform, output, errors) ? kReportDone : kReportCannot;
    } catch (const UsageError& error) {
        errors << kReportUsage << (need == VolumeArgument::Optional ? kLiveUsage : "");
        TellError(errors, error.what());
        return kReportUsageError;
    } catch (const std::exception& failure) {
        TellError(errors, FailureText(failure));
        return kReportCannot;
    }
}

}  // namespace ostrevin
