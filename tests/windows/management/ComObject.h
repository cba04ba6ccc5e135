// What the objects of the tests have in common.
#pragma once

#include <windows.h>
#include <initializer_list>

namespace ostrevin {

// Interfaces have no virtual destructor: their objects are not deleted through them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Counts the references to an object, which begins with one and deletes itself with the last.
template <typename... Interfaces>
class ComObject : public Interfaces... {
  public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;
    virtual ~ComObject() = default;

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = Find(id);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

  protected:
    /// The interface of this identifier, null for none.
    virtual void* Find(REFIID id) = 0;

  private:
    ULONG references_ = 1;
};

#pragma GCC diagnostic pop

}  // namespace ostrevin
