#include "platform/windows/Automation.h"

#include <array>
#include <cstdio>
#include <ole2.h>
#include <vector>

#include "platform/windows/AnsiText.h"

namespace ostrevin::windows {
namespace {

void Check(HRESULT result) {
    if (FAILED(result)) {
        throw AutomationError(result);
    }
}

std::string Message(HRESULT result, const std::string& description) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "Automation error 0x%08lX", static_cast<unsigned long>(result));
    return text.data() + (description.empty() ? std::string() : ": " + description);
}

std::string TakeText(BSTR text) {
    std::string utf8 = Utf8({text, SysStringLen(text)});
    SysFreeString(text);
    return utf8;
}

/// What a called object told about its failure, as an error.
AutomationError Told(EXCEPINFO& failure) {
    if (failure.pfnDeferredFillIn != nullptr) {
        failure.pfnDeferredFillIn(&failure);
    }
    SysFreeString(failure.bstrSource);
    SysFreeString(failure.bstrHelpFile);
    return AutomationError(failure.scode != 0 ? failure.scode : DISP_E_EXCEPTION,
                           TakeText(failure.bstrDescription));
}

}  // namespace

AutomationError::AutomationError(HRESULT result, const std::string& description)
    : std::runtime_error(Message(result, description)) {}

Variant::Variant() {
    VariantInit(&value_);
}

Variant::Variant(const std::wstring& text) : Variant() {
    V_VT(&value_) = VT_BSTR;
    V_BSTR(&value_) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

Variant::Variant(Variant&& other) noexcept : value_(other.value_) {
    VariantInit(&other.value_);
}

Variant::~Variant() {
    VariantClear(&value_);
}

std::string Variant::Text() {
    Variant text;
    if (FAILED(VariantChangeType(text.Get(), &value_, 0, VT_BSTR)) || V_BSTR(text.Get()) == nullptr) {
        return {};
    }
    return Utf8({V_BSTR(text.Get()), SysStringLen(V_BSTR(text.Get()))});
}

std::int32_t Variant::Number() {
    Variant number;
    Check(VariantChangeType(number.Get(), &value_, 0, VT_I4));
    return V_I4(number.Get());
}

AutomationObject::AutomationObject(const std::wstring& moniker) {
    Check(CoGetObject(moniker.c_str(), nullptr, IID_IDispatch, object_.PutVoid()));
}

AutomationObject::AutomationObject(Variant& value) {
    Variant object;
    Check(VariantChangeType(object.Get(), value.Get(), 0, VT_DISPATCH));
    if (V_DISPATCH(object.Get()) == nullptr) {
        throw AutomationError(E_POINTER);
    }
    V_DISPATCH(object.Get())->AddRef();
    *object_.Put() = V_DISPATCH(object.Get());
}

Variant AutomationObject::Get(const wchar_t* member, std::span<const VARIANT> arguments) const {
    std::wstring text = member;
    LPOLESTR names = text.data();
    DISPID number = DISPID_UNKNOWN;
    Check(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &number));
    return Invoke(number, arguments);
}

void AutomationObject::ForEach(const std::function<void(const AutomationObject&)>& take) const {
    Variant enumerator = Invoke(DISPID_NEWENUM, {});
    Variant unknown;
    Check(VariantChangeType(unknown.Get(), enumerator.Get(), 0, VT_UNKNOWN));
    if (V_UNKNOWN(unknown.Get()) == nullptr) {
        throw AutomationError(E_POINTER);
    }
    ComPointer<IEnumVARIANT> items;
    Check(V_UNKNOWN(unknown.Get())->QueryInterface(IID_IEnumVARIANT, items.PutVoid()));
    for (;;) {
        Variant item;
        const HRESULT result = items->Next(1, item.Get(), nullptr);
        Check(result);
        if (result != S_OK) {
            return;
        }
        take(AutomationObject(item));
    }
}

Variant AutomationObject::Invoke(DISPID member, std::span<const VARIANT> arguments) const {
    std::vector<VARIANT> lastFirst(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters{lastFirst.data(), nullptr, static_cast<UINT>(lastFirst.size()), 0};
    Variant result;
    EXCEPINFO failure{};
    const HRESULT code =
        object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, result.Get(), &failure, nullptr);
    if (code == DISP_E_EXCEPTION) {
        throw Told(failure);
    }
    Check(code);
    return result;
}

}  // namespace ostrevin::windows
