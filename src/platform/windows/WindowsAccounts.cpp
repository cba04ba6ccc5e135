#include <array>
#include <string>

#include "platform/windows/AnsiText.h"
#include "platform/windows/Automation.h"
#include "platform/windows/WindowsPlatform.h"

namespace ostrevin {
namespace {

using windows::AutomationError;
using windows::AutomationObject;
using windows::Variant;

constexpr const wchar_t* kThisComputer = L"winmgmts:{impersonationLevel=impersonate}!\\\\.\\Root\\CIMV2";
constexpr const wchar_t* kNamespace = L"winmgmts:{impersonationLevel=impersonate}!root\\CIMV2";

std::vector<AutomationObject> Query(const AutomationObject& service, const std::wstring& query) {
    Variant text(query);
    Variant records = service.Get(L"ExecQuery", {text.Get(), 1});
    return AutomationObject(records).Items();
}

/// An argument into which the called method stores a value.
VARIANT Output(Variant& value) {
    VARIANT argument;
    VariantInit(&argument);
    V_VT(&argument) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(&argument) = value.Get();
    return argument;
}

ProcessOwner OwnerOf(const AutomationObject& process) {
    Variant user;
    Variant domain;
    const std::array<VARIANT, 2> outputs = {Output(user), Output(domain)};
    Variant result = process.Get(L"getowner", outputs);
    return {static_cast<std::uint32_t>(result.Number()), user.Text()};
}

}  // namespace

std::vector<ProcessOwner> WindowsPlatform::ShellProcessOwners() {
    const AutomationObject service(kThisComputer);
    std::vector<ProcessOwner> owners;
    try {
        for (const AutomationObject& process : Query(
                 service, L"Select name from Win32_Process Where Name = 'explorer.exe' AND SessionId = 0")) {
            try {
                owners.push_back(OwnerOf(process));
            } catch (const AutomationError&) {
                // It may have ended since; the others can still be asked.
            }
        }
    } catch (const AutomationError&) {
        // Without an answer nobody is known to own the shell.
    }
    return owners;
}

std::vector<GroupUser> WindowsPlatform::GroupUsers() {
    const AutomationObject service(kThisComputer);
    std::vector<GroupUser> records;
    for (const AutomationObject& record :
         Query(service, L"Select GroupComponent, PartComponent from Win32_GroupUser")) {
        records.push_back({record.Get(L"groupcomponent").Text(), record.Get(L"PartComponent").Text()});
    }
    return records;
}

std::vector<std::string> WindowsPlatform::UserAccountNames(const std::string& sid) {
    const AutomationObject service(kNamespace);
    std::vector<std::string> names;
    for (const AutomationObject& account :
         Query(service, L"Select Name from Win32_UserAccount Where SID='" + windows::Wide(sid) + L"'")) {
        names.push_back(account.Get(L"Name").Text());
    }
    return names;
}

}  // namespace ostrevin
