// The companion for scripts and machines without a display: the accounts or their entries as text.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

/// What the command line asks for.
struct ReportRequest {
    bool accounts = false;               ///< the accounts, else the entries
    std::optional<std::string> account;  ///< only the entries of accounts of this name
    std::string volume;
};

/// Exit codes of ostrevin-report.
enum ReportExit : int { kReportDone = 0, kReportCannot = 1, kReportUsage = 2 };

/// Opens the volume to report on; throws std::exception when it cannot.
using OpenPlatform = std::function<std::unique_ptr<Platform>(const std::string& volume)>;

/// None for a command line that is no use of the program.
[[nodiscard]] std::optional<ReportRequest> ParseReportArguments(const std::vector<std::string>& arguments);

/// Does what the command line asks for. An error is one line on errors. Returns the exit code.
int RunReport(const std::vector<std::string>& arguments, const OpenPlatform& open, std::ostream& output,
              std::ostream& errors);

}  // namespace ostrevin
