#include "tests/windows/management/StandIn.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <memory>
#include <oaidl.h>
#include <oleauto.h>
#include <utility>
#include <vector>

#include "tests/windows/management/ComObject.h"

namespace ostrevin {
namespace {

// What the service itself answers to what it does not know.
constexpr auto kInvalidNamespace = static_cast<HRESULT>(0x8004100E);
constexpr auto kInvalidQuery = static_cast<HRESULT>(0x80041017);

using Parts = std::vector<std::wstring>;

struct Process {
    HRESULT result = S_OK;
    LONG returned = 0;
    std::wstring user;
};

struct Record {
    std::map<std::wstring, std::wstring> properties;
    Process process;
};

struct Answer {
    HRESULT begin = S_OK;
    std::vector<Record> records;
    HRESULT end = S_FALSE;
};

struct Answers {
    std::map<std::wstring, HRESULT> monikers;
    std::map<std::wstring, Answer> queries;
    ManagementNote note;
};

Parts Split(const std::wstring& text, wchar_t separator) {
    Parts parts;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find(separator, start)) != std::wstring::npos; start = end + 1) {
        parts.push_back(text.substr(start, end - start));
    }
    parts.push_back(text.substr(start));
    return parts;
}

HRESULT ResultIn(const std::wstring& text) {
    return static_cast<HRESULT>(std::wcstoul(text.c_str(), nullptr, 16));
}

std::map<std::wstring, std::wstring> PropertiesIn(const Parts& parts) {
    std::map<std::wstring, std::wstring> properties;
    for (std::size_t i = 1; i + 1 < parts.size(); i += 2) {
        properties[parts[i]] = parts[i + 1];
    }
    return properties;
}

Answers Read(const std::wstring& script) {
    Answers answers;
    Answer* answer = nullptr;
    for (const std::wstring& line : Split(script, L'\n')) {
        const Parts parts = Split(line, L'\t');
        const std::wstring& kind = parts.at(0);
        if (kind == L"moniker") {
            answers.monikers[parts.at(2)] = ResultIn(parts.at(1));
        } else if (kind == L"query") {
            answer = &answers.queries[parts.at(2)];
            answer->begin = ResultIn(parts.at(1));
        } else if (kind == L"process") {
            answer->records.push_back({{}, {ResultIn(parts.at(1)), std::stol(parts.at(2)), parts.at(3)}});
        } else if (kind == L"record") {
            answer->records.push_back({PropertiesIn(parts), {}});
        } else if (kind == L"breaks") {
            answer->end = ResultIn(parts.at(1));
        }
    }
    return answers;
}

void StoreText(VARIANT& value, const std::wstring& text) {
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

void StoreObject(VARIANT& value, IDispatch* object) {
    V_VT(&value) = VT_DISPATCH;
    V_DISPATCH(&value) = object;
}

/// How the service tells a failure of a method.
HRESULT Fail(HRESULT result, EXCEPINFO* failure) {
    failure->scode = result;
    return DISP_E_EXCEPTION;
}

/// An object with named members, which are numbered from 1 in the order of their names here.
class Scriptable : public ComObject<IDispatch> {
  public:
    explicit Scriptable(Parts members) : members_(std::move(members)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        // The service does not tell capital letters from small ones.
        const auto found = std::find_if(members_.begin(), members_.end(), [&](const std::wstring& member) {
            return _wcsicmp(member.c_str(), *names) == 0;
        });
        *ids = found == members_.end() ? DISPID_UNKNOWN : static_cast<DISPID>(found - members_.begin()) + 1;
        return *ids == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }

  protected:
    void* Find(REFIID id) override {
        const bool known = IsEqualIID(id, IID_IDispatch) || IsEqualIID(id, IID_IUnknown);
        return known ? static_cast<IDispatch*>(this) : nullptr;
    }
    [[nodiscard]] const std::wstring& Member(DISPID id) const {
        return members_.at(static_cast<std::size_t>(id) - 1);
    }

  private:
    Parts members_;
};

Parts NamesOf(const Record& record) {
    Parts names = {L"GetOwner"};
    for (const auto& [name, text] : record.properties) {
        names.push_back(name);
    }
    return names;
}

class RecordObject final : public Scriptable {
  public:
    RecordObject(const Record& record, ManagementNote note)
        : Scriptable(NamesOf(record)), record_(record), note_(std::move(note)) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* failure, UINT*) override {
        if (Member(id) != L"GetOwner") {
            StoreText(*result, record_.properties.at(Member(id)));
            return S_OK;
        }
        note_(L"GetOwner");
        // User and domain, the last argument first.
        if (parameters->cArgs != 2 || V_VT(&parameters->rgvarg[1]) != (VT_BYREF | VT_VARIANT)) {
            return DISP_E_BADPARAMCOUNT;
        }
        if (FAILED(record_.process.result)) {
            return Fail(record_.process.result, failure);
        }
        V_VT(result) = VT_I4;
        V_I4(result) = record_.process.returned;
        if (record_.process.returned == 0) {
            StoreText(*V_VARIANTREF(&parameters->rgvarg[1]), record_.process.user);
            StoreText(*V_VARIANTREF(&parameters->rgvarg[0]), L"DOMAIN");
        }
        return S_OK;
    }

  private:
    Record record_;
    ManagementNote note_;
};

class Enumerator final : public ComObject<IEnumVARIANT> {
  public:
    Enumerator(Answer answer, ManagementNote note) : answer_(std::move(answer)), note_(std::move(note)) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
        if (count != 1) {
            return E_INVALIDARG;
        }
        const bool another = next_ < answer_.records.size();
        if (fetched != nullptr) {
            *fetched = another ? 1 : 0;
        }
        if (!another) {
            return answer_.end;
        }
        StoreObject(*items, new RecordObject(answer_.records[next_++], note_));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

  protected:
    void* Find(REFIID id) override {
        const bool known = IsEqualIID(id, IID_IEnumVARIANT) || IsEqualIID(id, IID_IUnknown);
        return known ? static_cast<IEnumVARIANT*>(this) : nullptr;
    }

  private:
    Answer answer_;
    ManagementNote note_;
    std::size_t next_ = 0;
};

/// What a query gives.
class RecordSet final : public Scriptable {
  public:
    RecordSet(Answer answer, ManagementNote note)
        : Scriptable({}), answer_(std::move(answer)), note_(std::move(note)) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (id != DISPID_NEWENUM) {
            return DISP_E_MEMBERNOTFOUND;
        }
        V_VT(result) = VT_UNKNOWN;
        V_UNKNOWN(result) = new Enumerator(answer_, note_);
        return S_OK;
    }

  private:
    Answer answer_;
    ManagementNote note_;
};

class Service final : public Scriptable {
  public:
    explicit Service(Answers answers) : Scriptable({L"ExecQuery"}), answers_(std::move(answers)) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* failure, UINT*) override {
        // The query alone, so that the language and the flags are the usual ones.
        if (parameters->cArgs != 1 || V_VT(parameters->rgvarg) != VT_BSTR) {
            return DISP_E_BADPARAMCOUNT;
        }
        const std::wstring text = V_BSTR(parameters->rgvarg);
        answers_.note(L"query " + text);
        const auto found = answers_.queries.find(text);
        if (found == answers_.queries.end()) {
            return Fail(kInvalidQuery, failure);
        }
        if (FAILED(found->second.begin)) {
            return Fail(found->second.begin, failure);
        }
        StoreObject(*result, new RecordSet(found->second, answers_.note));
        return S_OK;
    }

  private:
    Answers answers_;
};

class ManagementClass final : public ComObject<IParseDisplayName> {
  public:
    ManagementClass(ManagementScript script, ManagementNote note)
        : script_(std::move(script)), note_(std::move(note)) {}

    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR name, ULONG* eaten,
                                               IMoniker** moniker) override {
        *eaten = static_cast<ULONG>(std::wcslen(name));
        *moniker = nullptr;
        note_(std::wstring(L"bind ") + name);
        Answers answers = Read(script_());
        answers.note = note_;
        const auto found = answers.monikers.find(name);
        const HRESULT result = found == answers.monikers.end() ? kInvalidNamespace : found->second;
        if (FAILED(result)) {
            return result;
        }
        auto* const service = new Service(std::move(answers));
        const HRESULT made = CreatePointerMoniker(static_cast<IDispatch*>(service), moniker);
        service->Release();
        return made;
    }

  protected:
    void* Find(REFIID id) override {
        const bool known = IsEqualIID(id, IID_IParseDisplayName) || IsEqualIID(id, IID_IUnknown);
        return known ? static_cast<IParseDisplayName*>(this) : nullptr;
    }

  private:
    ManagementScript script_;
    ManagementNote note_;
};

}  // namespace

IParseDisplayName* MakeManagementClass(ManagementScript script, ManagementNote note) {
    return new ManagementClass(std::move(script), std::move(note));
}

}  // namespace ostrevin
