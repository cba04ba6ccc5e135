// The command line of ostrevin-report.
#pragma once

#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "report/ReportSection.h"

namespace ostrevin {

enum class ReportFormat {
    Accounts,   ///< the list of accounts
    JsonLines,  ///< the entries, one object a line
    Csv,        ///< the entries, one file for each section
    Html,       ///< the report, one file for each account
};

/// What the command line asks for.
struct ReportRequest {
    ReportFormat format = ReportFormat::Accounts;
    std::optional<std::string> account;  ///< only accounts of this name
    std::set<ReportSection> sections;    ///< of Html; never empty
    std::string output;                  ///< of Csv a folder, of Html a folder or, with an account, a file
    std::string volume;                  ///< empty for the live machine
};

/// Whether the command line must name a volume: on a host with a live machine to report on it need not.
enum class VolumeArgument { Needed, Optional };

/// A command line that is no use of the program; its text tells why, in one line.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

extern const char* const kReportUsage;

/// Throws UsageError.
[[nodiscard]] ReportRequest ParseReportArguments(const std::vector<std::string>& arguments,
                                                 VolumeArgument volume);

}  // namespace ostrevin
