// What a person does at the machine: moves the mouse, presses buttons and keys. It goes the way of real
// input, to whatever window is there.
#pragma once

#include <windows.h>
#include <string>
#include <vector>

namespace ostrevin {

/// The middle of an area.
[[nodiscard]] POINT MiddleOf(const RECT& area);

// Places are in the client area of a window. The screen's own pointer goes there: movements that programs
// make are told of twice, the second time late.

void Click(HWND window, POINT place);
void DoubleClick(HWND window, POINT place);
/// Presses the button at the first place and lets it go at the last.
void Drag(HWND window, const std::vector<POINT>& places);

/// Presses a key, while the others are held.
void Press(WORD key, const std::vector<WORD>& held = {});
void Type(const std::wstring& text);

}  // namespace ostrevin
