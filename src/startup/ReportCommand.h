// The companion for scripts and machines without a display: the accounts or what they did, as text or files.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace ostrevin {

/// Exit codes of ostrevin-report.
enum ReportExit : int { kReportDone = 0, kReportCannot = 1, kReportUsageError = 2 };

/// What a host has to report on. Both throw std::exception when that cannot be opened.
struct ReportHost {
    std::function<std::unique_ptr<Platform>(const std::string& volume)> openVolume;
    /// The machine that the program runs on; empty where a volume must be named.
    std::function<std::unique_ptr<Platform>()> openLiveMachine;
};

/// Writes one line of the program's own, whatever the names of the evidence in it hold.
void TellError(std::ostream& errors, std::string_view line);

/// Does what the command line asks for. An error is one line on errors, after the usage where that is wrong.
/// Returns the exit code.
int RunReport(const std::vector<std::string>& arguments, const ReportHost& host, std::ostream& output,
              std::ostream& errors);

}  // namespace ostrevin
