// The headers of Windows and of its common controls, without the macros that are names of ours, too.
#pragma once

#include <windows.h>
#include <commctrl.h>

#undef LoadCursor
