// A bitmap of Windows as points.
#pragma once

#include <windows.h>

#include "platform/ShellFolder.h"

namespace ostrevin::windows {

/// Null when they cannot be read. Every point is opaque: what the fourth bytes of a bitmap mean is nowhere
/// said, and what draws one draws every point. The bitmap stays the caller's.
[[nodiscard]] BitmapHandle PointsOf(HBITMAP bitmap);

}  // namespace ostrevin::windows
