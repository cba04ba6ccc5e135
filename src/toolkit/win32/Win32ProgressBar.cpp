#include "toolkit/win32/Win32ProgressBar.h"

#include <cmath>

namespace ostrevin::win32 {
namespace {

// The window counts whole steps.
constexpr int kSteps = 10000;

}  // namespace

Win32ProgressBar::Win32ProgressBar(Win32Toolkit& toolkit, ProgressBar& bar, HWND parent)
    : WindowView(toolkit, bar) {
    Create(PROGRESS_CLASSW, 0, 0, parent);
    SendMessageW(Handle(), PBM_SETRANGE32, 0, kSteps);
    Show();
    ValueChanged();
}

void Win32ProgressBar::ValueChanged() {
    const ProgressBar& bar = Control();
    const float range = bar.Max() - bar.Min();
    const float part = range > 0 ? (bar.Value() - bar.Min()) / range : 0;
    SendMessageW(Handle(), PBM_SETPOS, static_cast<WPARAM>(std::lround(part * kSteps)), 0);
}

}  // namespace ostrevin::win32
