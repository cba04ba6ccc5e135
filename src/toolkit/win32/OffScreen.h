// Painting without flicker.
#pragma once

#include <functional>

#include "toolkit/win32/Windows.h"

namespace ostrevin::win32 {

/// Answers WM_PAINT: paints all of the window's inside off the screen, then shows at once what has to be
/// shown anew.
void PaintOffScreen(HWND window, const std::function<void(HDC)>& paint);

}  // namespace ostrevin::win32
