#include "platform/ErrorLog.h"

#include "platform/HostFiles.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

namespace ostrevin {

ErrorLog::ErrorLog(Platform& platform) : platform_(platform), fileName_(GetKeptFile(platform, "error.log")) {}

void ErrorLog::WriteLog(const std::string& text) {
    if (fileName_.empty()) {
        return;
    }
    std::string line = text + "\r\n";
    if (addDate_) {
        line.insert(0, platform_.DateToText(platform_.Now(), DateForm::General) + ", ");
    }
    if (!AppendToHostFile(fileName_, line)) {
        throw PathFileAccessError(fileName_);
    }
}

}  // namespace ostrevin
