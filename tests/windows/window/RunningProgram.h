// A program that runs, seen from another process: its windows as they come and go.
#pragma once

#include <windows.h>
#include <functional>
#include <string>
#include <vector>

namespace ostrevin {

/// Waits until something is so. Returns false when that takes longer than any machine should need.
bool Await(const std::function<bool()>& isSo);

class RunningProgram {
  public:
    /// Starts a program on the machine itself and waits for nothing. There is no main window yet.
    explicit RunningProgram(const std::wstring& program);
    /// Starts a program on a volume and waits for its main window, as AwaitStart does.
    RunningProgram(const std::wstring& program, const std::wstring& volume);
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    /// Ends the program, if it still runs.
    ~RunningProgram();

    /// Waits for the main window. Raises std::runtime_error when the program shows another one, or ends.
    void AwaitStart();
    [[nodiscard]] HWND MainWindow() const { return mainWindow_; }
    /// The windows with a caption that are in sight besides the main window.
    [[nodiscard]] std::vector<HWND> Dialogs() const;
    /// Waits for a dialog, which is to be the only one, and to have the keyboard. Raises std::runtime_error
    /// when none comes.
    HWND AwaitDialog(const std::string& caption) const;
    /// Waits until the main window has the keyboard, with no dialog before it. Raises std::runtime_error when
    /// it does not get it.
    void AwaitMainWindow() const;
    /// The window within the program that gets what is typed; null for none.
    [[nodiscard]] HWND Focus() const;
    /// Waits for the program's end. Raises std::runtime_error when it goes on.
    [[nodiscard]] DWORD AwaitEnd() const;

  private:
    void Start(const std::wstring& program, std::wstring command);
    [[nodiscard]] bool HasEnded() const;
    [[nodiscard]] std::vector<HWND> Windows() const;

    PROCESS_INFORMATION process_{};
    HWND mainWindow_ = nullptr;
};

}  // namespace ostrevin
