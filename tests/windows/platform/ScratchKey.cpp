#include "tests/windows/platform/ScratchKey.h"

#include <shlwapi.h>
#include <stdexcept>

namespace ostrevin {
namespace {

std::string FreshPath() {
    static int count = 0;
    return "Software\\Ostrevin-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
}

}  // namespace

ScratchKey::ScratchKey() : ScratchKey(HKEY_CURRENT_USER, FreshPath()) {}

ScratchKey::ScratchKey(HKEY root, std::string path) : root_(root), path_(std::move(path)) {
    DWORD made = 0;
    if (RegCreateKeyExA(root_, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, &made) != 0 ||
        made != REG_CREATED_NEW_KEY) {
        throw std::runtime_error("cannot make " + path_);
    }
}

ScratchKey::~ScratchKey() {
    RegCloseKey(key_);
    SHDeleteKeyA(root_, path_.c_str());
}

void ScratchKey::MakeSubKey(const std::wstring& name) const {
    HKEY made = nullptr;
    RegCreateKeyExW(key_, name.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &made, nullptr);
    RegCloseKey(made);
}

void ScratchKey::Set(const std::string& subKey, const std::wstring& name, DWORD type, const void* data,
                     std::size_t size) const {
    HKEY made = nullptr;
    RegCreateKeyExA(key_, subKey.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &made, nullptr);
    RegSetValueExW(made, name.c_str(), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size));
    RegCloseKey(made);
}

void ScratchKey::SetText(const std::string& subKey, const std::wstring& name, const std::wstring& text,
                         DWORD type) const {
    Set(subKey, name, type, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

}  // namespace ostrevin
