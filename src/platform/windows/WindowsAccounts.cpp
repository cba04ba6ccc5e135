#include <array>
#include <functional>
#include <stdexcept>
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
constexpr const char* kName = "Windows Management Instrumentation";

AutomationObject Bind(const wchar_t* moniker) {
    try {
        return AutomationObject(moniker);
    } catch (const AutomationError& error) {
        throw std::runtime_error(std::string(kName) + " cannot be reached: " + error.what());
    }
}

/// The management service, bound once. Failures are std::runtime_error and name it.
class ManagementService {
  public:
    explicit ManagementService(const wchar_t* moniker) : service_(Bind(moniker)) {}

    /// Takes the records of a query's answer, one by one as they come.
    void Query(const std::wstring& query, const std::function<void(const AutomationObject&)>& take) const {
        try {
            Variant text(query);
            Variant records = service_.Get(L"ExecQuery", {text.Get(), 1});
            AutomationObject(records).ForEach(take);
        } catch (const AutomationError& error) {
            throw std::runtime_error(std::string(kName) + " does not answer \"" + windows::Utf8(query) +
                                     "\": " + error.what());
        }
    }

  private:
    AutomationObject service_;
};

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
    const ManagementService service(kThisComputer);
    std::vector<ProcessOwner> owners;
    try {
        service.Query(L"Select name from Win32_Process Where Name = 'explorer.exe' AND SessionId = 0",
                      [&](const AutomationObject& process) {
                          try {
                              owners.push_back(OwnerOf(process));
                          } catch (const AutomationError&) {
                              // It may have ended since; the others can still be asked.
                          }
                      });
    } catch (const std::runtime_error&) {
        // Whoever was told before the answer broke off counts.
    }
    return owners;
}

std::vector<GroupUser> WindowsPlatform::GroupUsers() {
    std::vector<GroupUser> records;
    ManagementService(kThisComputer)
        .Query(L"Select GroupComponent, PartComponent from Win32_GroupUser", [&](const AutomationObject&
                                                                                     record) {
            records.push_back({record.Get(L"groupcomponent").Text(), record.Get(L"PartComponent").Text()});
        });
    return records;
}

std::vector<std::vector<std::string>> WindowsPlatform::UserAccountNames(std::span<const std::string> sids) {
    const ManagementService service(kNamespace);
    std::vector<std::vector<std::string>> names(sids.size());
    for (std::size_t i = 0; i < sids.size(); ++i) {
        service.Query(
            L"Select Name from Win32_UserAccount Where SID='" + windows::Wide(sids[i]) + L"'",
            [&](const AutomationObject& account) { names[i].push_back(account.Get(L"Name").Text()); });
    }
    return names;
}

}  // namespace ostrevin
