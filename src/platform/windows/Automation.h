// Objects called by the names of their members, as a script calls them.
#pragma once

#include <windows.h>
#include <cstdint>
#include <functional>
#include <oaidl.h>
#include <span>
#include <stdexcept>
#include <string>

#include "platform/windows/ComPointer.h"

namespace ostrevin::windows {

/// A call that failed.
class AutomationError : public std::runtime_error {
  public:
    /// What the called object says about the failure may be empty.
    explicit AutomationError(HRESULT result, const std::string& description = {});
};

/// A value of any type, freed at the end of its life.
class Variant {
  public:
    Variant();
    explicit Variant(const std::wstring& text);
    Variant(Variant&& other) noexcept;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    Variant& operator=(Variant&&) = delete;
    ~Variant();

    [[nodiscard]] VARIANT* Get() { return &value_; }
    /// As text; empty for what has none.
    [[nodiscard]] std::string Text();
    /// As a whole number. Throws AutomationError for what is none.
    [[nodiscard]] std::int32_t Number();

  private:
    VARIANT value_;
};

/// Every member throws AutomationError when a call fails.
class AutomationObject {
  public:
    /// The object that a moniker names.
    explicit AutomationObject(const std::wstring& moniker);
    /// The object that a value refers to.
    explicit AutomationObject(Variant& value);

    /// A method or a property, between which a script does not tell. The arguments stand in the method's
    /// order.
    Variant Get(const wchar_t* member, std::span<const VARIANT> arguments = {}) const;
    /// Takes what a collection holds, one by one as it comes.
    void ForEach(const std::function<void(const AutomationObject&)>& take) const;

  private:
    Variant Invoke(DISPID member, std::span<const VARIANT> arguments) const;

    ComPointer<IDispatch> object_;
};

}  // namespace ostrevin::windows
