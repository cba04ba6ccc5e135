#include "settings/AppSettings.h"

#include <utility>

#include "platform/RuntimeError.h"

namespace ostrevin {

AppSettings::~AppSettings() {
    try {
        Save();
    } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
    }
}

void AppSettings::Save() {
    if (ini_ != nullptr && !std::exchange(saved_, true)) {
        ini_->SaveINI();
    }
}

std::string AppSettings::GetINIOption(const std::string& name) const {
    return ini_ == nullptr ? std::string() : ini_->GetVariableValue(name);
}

void AppSettings::SetINIOption(const std::string& name, const std::string& value) {
    if (ini_ == nullptr) {
        return;
    }
    saved_ = false;
    ini_->DeleteVariable(name);
    ini_->AddVariable(name, value);
}

}  // namespace ostrevin
