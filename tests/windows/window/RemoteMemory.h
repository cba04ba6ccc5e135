// What a window tells another process: messages that point to memory point to memory of the window's process.
#pragma once

#include <windows.h>
#include <cstddef>
#include <string>

namespace ostrevin {

/// Sends a message. Raises std::runtime_error when the window is gone or does not answer for a while.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

/// A piece of memory in the process of a window. All of it raises std::runtime_error when Windows refuses.
class RemoteMemory {
  public:
    explicit RemoteMemory(HWND window);
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;
    ~RemoteMemory();

    /// Sends a message whose lParam points to a structure, and takes over what the window writes there.
    template <typename Structure>
    LRESULT Exchange(UINT message, WPARAM wParam, Structure& structure) const {
        static_assert(sizeof(Structure) <= kTextPlace);
        Write(&structure, sizeof(structure));
        const LRESULT result = Send(window_, message, wParam, reinterpret_cast<LPARAM>(start_));
        Read(start_, &structure, sizeof(structure));
        return result;
    }
    /// Where the window is to write a text, for a member of such a structure.
    [[nodiscard]] wchar_t* TextPlace() const { return reinterpret_cast<wchar_t*>(start_ + kTextPlace); }
    static constexpr int kTextLength = 2048;
    /// What it has written there, as UTF-8.
    [[nodiscard]] std::string Text() const;

  private:
    static constexpr std::size_t kTextPlace = 256;

    void Write(const void* bytes, std::size_t size) const;
    void Read(const std::byte* place, void* bytes, std::size_t size) const;

    HWND window_;
    HANDLE process_ = nullptr;
    std::byte* start_ = nullptr;
};

}  // namespace ostrevin
