// The machine below Wine: the folder that the test was given, the Linux programs, and the camera.
#pragma once

#include <string>

namespace ostrevin {

/// The path of something in the test's folder, which the environment variable OSTREVIN_WINDOW_TEST names.
[[nodiscard]] std::wstring TestPath(const std::wstring& name);
/// The same as the Linux programs call it.
[[nodiscard]] std::wstring HostPath(const std::wstring& name);
/// The bytes of a file there; empty for none.
[[nodiscard]] std::string ReadTestFile(const std::wstring& name);

/// Writes a file there, in place of what it held.
void WriteTestFile(const std::wstring& name, const std::string& bytes);

/// Makes Wine draw the frames of the program's windows and give them the keyboard itself, with no window
/// manager that would do so in its own time; and hand addresses to the program "browser" in the test's
/// folder.
void SetUpWine();

/// Runs a command of the shell to its end.
void RunOnHost(const std::wstring& command);
/// Takes a picture of the screen, pictures/NAME.png in the test's folder, for people to look at.
void Photograph(const std::wstring& name);

}  // namespace ostrevin
