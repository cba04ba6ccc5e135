// make-sample-volume [--profiles N] [--user-assist-values N] [--index-records N] FOLDER
//
// Writes the sample volume below FOLDER. The same options always give the same bytes.
#include <charconv>
#include <exception>
#include <iostream>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "tools/sample-volume/SampleVolume.h"

namespace {

using ostrevin::samples::SampleOptions;

constexpr unsigned kMost = 1'000'000;

bool ParseNumber(std::string_view text, unsigned& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number <= kMost;
}

bool ParseArguments(std::span<char*> arguments, SampleOptions& options, std::string& folder) {
    const std::map<std::string_view, unsigned SampleOptions::*> known = {
        {"--profiles", &SampleOptions::extraProfiles},
        {"--user-assist-values", &SampleOptions::extraUserAssistValues},
        {"--index-records", &SampleOptions::extraIndexRecords},
    };
    while (arguments.size() > 1) {
        const auto option = known.find(arguments[0]);
        if (option == known.end() || !ParseNumber(arguments[1], options.*option->second)) {
            return false;
        }
        arguments = arguments.subspan(2);
    }
    if (arguments.size() != 1 || std::string_view(arguments[0]).starts_with("-")) {
        return false;
    }
    folder = arguments[0];
    return true;
}

}  // namespace

int main(int count, char** arguments) {
    try {
        SampleOptions options;
        std::string folder;
        if (!ParseArguments(std::span(arguments, static_cast<std::size_t>(count)).subspan(1), options,
                            folder)) {
            std::cerr
                << "usage: make-sample-volume [--profiles N] [--user-assist-values N] [--index-records N] "
                   "FOLDER\n";
            return 2;
        }
        WriteVolume(MakeSampleVolume(options), folder);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "make-sample-volume: " << error.what() << '\n';
        return 1;
    }
}
