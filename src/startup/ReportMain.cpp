// Entry point of ostrevin-report.
#include <iostream>

#include "platform/volume/VolumePlatform.h"
#include "startup/ReportCommand.h"

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    const auto open = [](const std::string& volume) -> std::unique_ptr<ostrevin::Platform> {
        return ostrevin::VolumePlatform::Open(
            volume, [](const std::string& line) { ostrevin::TellError(std::cerr, line); });
    };
    return ostrevin::RunReport({arguments + 1, arguments + count}, {open, {}}, std::cout, std::cerr);
}
