// Calls by name, on an object made for the tests.

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "platform/windows/AnsiText.h"
#include "platform/windows/Automation.h"

namespace ostrevin::windows {
namespace {

// Interfaces have no virtual destructor: their objects are not deleted through them.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Knows one method, "getowner", with the two outputs that a process's method of that name has, and a
/// property "Name". It lives on the stack: its references are only counted.
class Process final : public IDispatch {
  public:
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!IsEqualIID(id, IID_IDispatch) && !IsEqualIID(id, IID_IUnknown)) {
            return E_NOINTERFACE;
        }
        AddRef();
        *object = this;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const std::wstring name = *names;
        *ids = name == L"getowner" ? 1 : name == L"Name" ? 2 : name == L"fails" ? 3 : DISPID_UNKNOWN;
        return *ids == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* failure, UINT*) override {
        kinds.push_back(kind);
        if (id == 3) {
            failure->scode = E_ACCESSDENIED;
            failure->bstrDescription = SysAllocString(L"Access is denied");
            return DISP_E_EXCEPTION;
        }
        if (id == 2) {
            V_VT(result) = VT_BSTR;
            V_BSTR(result) = SysAllocString(L"caf\u00E9.exe");
            return S_OK;
        }
        if (parameters->cArgs != 2) {
            return DISP_E_BADPARAMCOUNT;
        }
        // The last argument stands first.
        Store(parameters->rgvarg[1], L"anna");
        Store(parameters->rgvarg[0], L"DOMAIN");
        V_VT(result) = VT_I4;
        V_I4(result) = 0;
        return S_OK;
    }

    ULONG references = 1;
    std::vector<WORD> kinds;

  private:
    static void Store(VARIANT& output, const wchar_t* text) {
        ASSERT_EQ(V_VT(&output), VT_BYREF | VT_VARIANT);
        V_VT(V_VARIANTREF(&output)) = VT_BSTR;
        V_BSTR(V_VARIANTREF(&output)) = SysAllocString(text);
    }
};

class AutomationTest : public testing::Test {
  protected:
    AutomationTest() {
        V_VT(value.Get()) = VT_DISPATCH;
        V_DISPATCH(value.Get()) = &process;
        process.AddRef();
    }

    Process process;
    Variant value;
};

TEST_F(AutomationTest, AMethodStoresIntoTheArgumentsInTheirOrder) {
    Variant user;
    Variant domain;
    std::array<VARIANT, 2> outputs{};
    for (auto [output, text] : {std::pair{&outputs[0], &user}, std::pair{&outputs[1], &domain}}) {
        V_VT(output) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(output) = text->Get();
    }
    EXPECT_EQ(AutomationObject(value).Get(L"getowner", outputs).Number(), 0);
    EXPECT_EQ(user.Text(), "anna");
    EXPECT_EQ(domain.Text(), "DOMAIN");
    EXPECT_EQ(process.kinds, std::vector<WORD>{DISPATCH_METHOD | DISPATCH_PROPERTYGET});
}

TEST_F(AutomationTest, APropertyIsText) {
    EXPECT_EQ(AutomationObject(value).Get(L"Name").Text(), "caf\u00E9.exe");
}

TEST_F(AutomationTest, AFailureTellsWhatTheObjectSays) {
    try {
        AutomationObject(value).Get(L"fails");
        FAIL();
    } catch (const AutomationError& error) {
        EXPECT_STREQ(error.what(), "Automation error 0x80070005: Access is denied");
    }
    EXPECT_THROW(AutomationObject(value).Get(L"none"), AutomationError);
    EXPECT_THROW(AutomationObject(value).Get(L"getowner"), AutomationError) << "without its arguments";
}

TEST_F(AutomationTest, EveryReferenceIsGivenBack) {
    {
        const AutomationObject object(value);
        const AutomationObject copy = object;  // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(process.references, 4U);
    }
    EXPECT_EQ(process.references, 2U);
}

TEST_F(AutomationTest, WhatIsNoObjectIsRefused) {
    Variant text(L"x");
    EXPECT_THROW(AutomationObject{text}, AutomationError);
    EXPECT_THROW(static_cast<void>(text.Number()), AutomationError);
    Variant nothing;
    EXPECT_EQ(nothing.Text(), "");
    V_VT(nothing.Get()) = VT_NULL;
    EXPECT_EQ(nothing.Text(), "");
    EXPECT_THROW(AutomationObject(L"ostrevin-no-such-moniker:"), AutomationError);
}

}  // namespace
}  // namespace ostrevin::windows
