// A registry key for tests, gone with all below it at the end of its scope.
#pragma once

#include <windows.h>
#include <cstdint>
#include <string>
#include <string_view>

namespace ostrevin {

class ScratchKey {
  public:
    /// One under HKEY_CURRENT_USER that nothing else uses.
    ScratchKey();
    /// One that does not exist yet. Raises std::runtime_error when it cannot be made.
    ScratchKey(HKEY root, std::string path);
    ~ScratchKey();
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;

    [[nodiscard]] HKEY Handle() const { return key_; }
    /// Below HKEY_CURRENT_USER or the given root.
    [[nodiscard]] const std::string& Path() const { return path_; }
    void MakeSubKey(const std::wstring& name) const;
    /// Stores a value by its bytes, in a sub-key or in the key itself.
    void Set(const std::string& subKey, const std::wstring& name, DWORD type, const void* data,
             std::size_t size) const;
    /// Stores text with its NUL.
    void SetText(const std::string& subKey, const std::wstring& name, const std::wstring& text,
                 DWORD type = REG_SZ) const;

  private:
    HKEY root_;
    std::string path_;
    HKEY key_ = nullptr;
};

}  // namespace ostrevin
