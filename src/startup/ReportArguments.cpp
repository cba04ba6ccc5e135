#include "startup/ReportArguments.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace ostrevin {

const char* const kReportUsage =
    "usage: ostrevin-report --accounts VOLUME\n"
    "       ostrevin-report --format jsonl [--account NAME] VOLUME\n"
    "       ostrevin-report --format csv [--account NAME] --output FOLDER VOLUME\n"
    "       ostrevin-report --format html --account NAME [--sections LIST] --output FILE VOLUME\n"
    "       ostrevin-report --format html [--sections LIST] --output FOLDER VOLUME\n"
    "LIST is one or more of programs,recent,opensave,iehistory,typedurls\n";

namespace {

using Options = std::map<std::string, std::string, std::less<>>;

struct FormatRule {
    ReportFormat format;
    std::set<std::string_view> options;  ///< that it takes besides
    bool hasOutput;                      ///< and then needs one
};

const std::map<std::string_view, FormatRule>& FormatRules() {
    static const std::map<std::string_view, FormatRule> rules = {
        {"", {ReportFormat::Accounts, {"--accounts"}, false}},
        {"jsonl", {ReportFormat::JsonLines, {"--format", "--account"}, false}},
        {"csv", {ReportFormat::Csv, {"--format", "--account", "--output"}, true}},
        {"html", {ReportFormat::Html, {"--format", "--account", "--output", "--sections"}, true}}};
    return rules;
}

bool TakesValue(const std::string& option) {
    return option == "--format" || option == "--account" || option == "--output" || option == "--sections";
}

/// Takes the options with their values, and the volume, each at most once.
Options SplitArguments(const std::vector<std::string>& arguments, VolumeArgument need, std::string& volume) {
    const std::string howMany = need == VolumeArgument::Needed ? "exactly" : "at most";
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!argument.starts_with('-')) {
            if (argument.empty() || !volume.empty()) {
                throw UsageError("there must be " + howMany + " one volume");
            }
            volume = argument;
            continue;
        }
        std::string value;
        if (TakesValue(argument)) {
            if (++i == arguments.size()) {
                throw UsageError(argument + " needs a value");
            }
            value = arguments[i];
        } else if (argument != "--accounts") {
            throw UsageError("there is no option " + argument);
        }
        if (!options.emplace(argument, value).second) {
            throw UsageError(argument + " is given twice");
        }
    }
    if (volume.empty() && need == VolumeArgument::Needed) {
        throw UsageError("there must be " + howMany + " one volume");
    }
    return options;
}

const FormatRule& RuleOf(const Options& options) {
    const auto format = options.find("--format");
    if (format == options.end() && !options.contains("--accounts")) {
        throw UsageError("either --accounts or --format is needed");
    }
    const auto rule = FormatRules().find(format == options.end() ? "" : format->second);
    if (rule == FormatRules().end() || (format != options.end() && format->second.empty())) {
        throw UsageError("there is no format " + format->second);
    }
    return rule->second;
}

/// Reads names that are separated by commas.
std::set<ReportSection> SectionsIn(std::string_view list) {
    std::set<ReportSection> sections;
    for (bool more = true; more;) {
        const std::size_t end = std::min(list.find(','), list.size());
        const std::string_view name = list.substr(0, end);
        const auto* section = std::find_if(kReportSections.begin(), kReportSections.end(),
                                           [&](ReportSection each) { return NameOf(each) == name; });
        if (section == kReportSections.end()) {
            throw UsageError("--sections: there is no section \"" + std::string(name) + "\"");
        }
        if (!sections.insert(*section).second) {
            throw UsageError("--sections: " + std::string(name) + " is named twice");
        }
        more = end < list.size();
        list.remove_prefix(more ? end + 1 : end);
    }
    return sections;
}

}  // namespace

ReportRequest ParseReportArguments(const std::vector<std::string>& arguments, VolumeArgument volume) {
    ReportRequest request;
    const Options options = SplitArguments(arguments, volume, request.volume);
    const FormatRule& rule = RuleOf(options);
    for (const auto& [option, value] : options) {
        if (!rule.options.contains(option)) {
            throw UsageError(option + " does not go with the rest");
        }
    }
    request.format = rule.format;
    request.sections = {kReportSections.begin(), kReportSections.end()};
    if (const auto sections = options.find("--sections"); sections != options.end()) {
        request.sections = SectionsIn(sections->second);
    }
    if (const auto account = options.find("--account"); account != options.end()) {
        request.account = account->second;
    }
    if (const auto output = options.find("--output"); output != options.end()) {
        request.output = output->second;
    }
    if (rule.hasOutput && request.output.empty()) {
        throw UsageError("--output must name where to write");
    }
    return request;
}

}  // namespace ostrevin
