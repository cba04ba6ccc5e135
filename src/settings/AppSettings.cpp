#include "settings/AppSettings.h"

#include "platform/RuntimeError.h"

namespace ostrevin {

AppSettings::~AppSettings() {
    if (ini_ == nullptr) {
        return;
    }
    try {
        ini_->SaveINI();
    } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
    }
}

std::string AppSettings::GetINIOption(const std::string& name) const {
    return ini_ == nullptr ? std::string() : ini_->GetVariableValue(name);
}

void AppSettings::SetINIOption(const std::string& name, const std::string& value) {
    if (ini_ == nullptr) {
        return;
    }
    ini_->DeleteVariable(name);
    ini_->AddVariable(name, value);
}

}  // namespace ostrevin
