#include "toolkit/win32/OffScreen.h"

namespace ostrevin::win32 {

void PaintOffScreen(HWND window, const std::function<void(HDC)>& paint) {
    PAINTSTRUCT shown = {};
    const HDC screen = BeginPaint(window, &shown);
    RECT area = {};
    GetClientRect(window, &area);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, area.right, area.bottom);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    const RECT& dirty = shown.rcPaint;
    IntersectClipRect(memory, dirty.left, dirty.top, dirty.right, dirty.bottom);
    paint(memory);
    BitBlt(screen, dirty.left, dirty.top, dirty.right - dirty.left, dirty.bottom - dirty.top, memory,
           dirty.left, dirty.top, SRCCOPY);
    SelectObject(memory, former);
    DeleteObject(bitmap);
    DeleteDC(memory);
    EndPaint(window, &shown);
}

}  // namespace ostrevin::win32
