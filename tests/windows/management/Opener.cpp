#include "tests/windows/management/Opener.h"

#include <shlobj.h>
#include <utility>

#include "tests/windows/management/ComObject.h"

namespace ostrevin {
namespace {

using Opened = std::function<void(HWND)>;

/// The shell asks it for the items of a document's menu and chooses "open".
class Opener final : public ComObject<IShellExtInit, IContextMenu, IObjectWithSite> {
  public:
    explicit Opener(Opened opened) : opened_(std::move(opened)) {}

    HRESULT STDMETHODCALLTYPE Initialize(LPCITEMIDLIST, IDataObject*, HKEY) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetSite(IUnknown*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetSite(REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryContextMenu(HMENU menu, UINT index, UINT firstId, UINT, UINT) override {
        constexpr HRESULT kOneItem = 1;
        return InsertMenuW(menu, index, MF_BYPOSITION, firstId, L"open") != FALSE ? kOneItem : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE InvokeCommand(CMINVOKECOMMANDINFO* command) override {
        opened_(command->hwnd);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetCommandString(UINT_PTR, UINT, UINT*, LPSTR, UINT) override {
        return E_NOTIMPL;
    }

  protected:
    void* Find(REFIID id) override {
        if (IsEqualIID(id, IID_IContextMenu)) {
            return static_cast<IContextMenu*>(this);
        }
        if (IsEqualIID(id, IID_IObjectWithSite)) {
            return static_cast<IObjectWithSite*>(this);
        }
        const bool known = IsEqualIID(id, IID_IShellExtInit) || IsEqualIID(id, IID_IUnknown);
        return known ? static_cast<IShellExtInit*>(this) : nullptr;
    }

  private:
    Opened opened_;
};

class OpenerClass final : public ComObject<IClassFactory> {
  public:
    explicit OpenerClass(Opened opened) : opened_(std::move(opened)) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        if (outer != nullptr) {
            return CLASS_E_NOAGGREGATION;
        }
        auto* const opener = new Opener(opened_);
        const HRESULT result = opener->QueryInterface(id, object);
        opener->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  protected:
    void* Find(REFIID id) override {
        const bool known = IsEqualIID(id, IID_IClassFactory) || IsEqualIID(id, IID_IUnknown);
        return known ? static_cast<IClassFactory*>(this) : nullptr;
    }

  private:
    Opened opened_;
};

}  // namespace

IClassFactory* MakeOpenerClass(Opened opened) {
    return new OpenerClass(std::move(opened));
}

}  // namespace ostrevin
