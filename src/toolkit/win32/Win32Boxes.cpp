#include "toolkit/win32/Win32Boxes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>
#include <windowsx.h>

#include "toolkit/win32/OffScreen.h"
#include "toolkit/win32/Pictures.h"
#include "toolkit/win32/Text.h"

namespace ostrevin::win32 {
namespace {

constexpr int kLeft = 1;
constexpr int kRight = 2;
constexpr int kMiddle = 4;

/// The class of windows on which others stand. It shows no cursor of its own.
const wchar_t* BoxClass() {
    static const wchar_t* const name = [] {
        static constexpr wchar_t kName[] = L"OstrevinBox";
        WNDCLASSEXW description{};
        description.cbSize = sizeof(description);
        description.style = CS_HREDRAW | CS_VREDRAW;  // pictures stand in the middle
        description.lpfnWndProc = DefWindowProcW;
        description.hInstance = GetModuleHandleW(nullptr);
        description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        description.lpszClassName = kName;
        RegisterClassExW(&description);
        return kName;
    }();
    return name;
}

int ButtonBits(WPARAM state) {
    return ((state & MK_LBUTTON) != 0 ? kLeft : 0) | ((state & MK_RBUTTON) != 0 ? kRight : 0) |
           ((state & MK_MBUTTON) != 0 ? kMiddle : 0);
}

int ShiftState(WPARAM state) {
    return ((state & MK_SHIFT) != 0 ? 1 : 0) | ((state & MK_CONTROL) != 0 ? 2 : 0) |
           (GetKeyState(VK_MENU) < 0 ? 4 : 0);
}

/// The points as they look on a background, whose colour is 0xRRGGBB as theirs are.
std::vector<std::uint32_t> Blend(const Picture& picture, std::uint32_t background) {
    std::vector<std::uint32_t> points(picture.pixels.size());
    std::transform(picture.pixels.begin(), picture.pixels.end(), points.begin(), [&](std::uint32_t point) {
        const std::uint32_t alpha = point >> 24U;
        std::uint32_t blended = 0;
        for (const unsigned shift : {0U, 8U, 16U}) {
            const std::uint32_t over = point >> shift & 0xFFU;
            const std::uint32_t under = background >> shift & 0xFFU;
            blended |= (over * alpha + under * (255 - alpha) + 127) / 255 << shift;
        }
        return blended;
    });
    return points;
}

std::uint32_t SystemColor(int index) {
    const COLORREF color = GetSysColor(index);
    return static_cast<std::uint32_t>(GetRValue(color)) << 16U |
           static_cast<std::uint32_t>(GetGValue(color)) << 8U | GetBValue(color);
}

void Draw(HDC canvas, const Picture& picture, const PixelRect& place, std::uint32_t background) {
    const std::vector<std::uint32_t> points = Blend(picture, background);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = picture.width;
    info.bmiHeader.biHeight = -picture.height;  // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    SetStretchBltMode(canvas, HALFTONE);
    SetBrushOrgEx(canvas, 0, 0, nullptr);
    StretchDIBits(canvas, place.left, place.top, place.width, place.height, 0, 0, picture.width,
                  picture.height, points.data(), &info, DIB_RGB_COLORS, SRCCOPY);
}

/// One point of the picture to one of the screen, in the middle of the box; smaller where the box has become
/// too small for it.
PixelRect MiddlePlace(const Picture& picture, int width, int height) {
    const double scale = std::min(
        {1.0, static_cast<double>(width) / picture.width, static_cast<double>(height) / picture.height});
    const auto scaledWidth = static_cast<int>(std::lround(picture.width * scale));
    const auto scaledHeight = static_cast<int>(std::lround(picture.height * scale));
    return {(width - scaledWidth) / 2, (height - scaledHeight) / 2, scaledWidth, scaledHeight};
}

/// Without children to clip: the border, which is one, leaves it to the frame to paint what is inside it.
DWORD StyleOf(const Frame& frame) {
    return frame.Caption().empty() ? WS_CLIPCHILDREN : 0;
}

}  // namespace

Win32Frame::Win32Frame(Win32Toolkit& toolkit, Frame& frame, HWND parent) : WindowView(toolkit, frame) {
    Create(BoxClass(), StyleOf(frame), WS_EX_CONTROLPARENT, parent);
    if (!frame.Caption().empty()) {
        border_ = CreateWindowExW(0, L"BUTTON", WideShown(frame.Caption()).c_str(),
                                  WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | BS_GROUPBOX, 0, 0, 0, 0, Handle(),
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
        SendMessageW(border_, WM_SETFONT, reinterpret_cast<WPARAM>(toolkit.FontOf(frame)), FALSE);
    }
    Show();
}

LRESULT Win32Frame::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> answer = HandToChild(message, wParam, lParam)) {
        return *answer;
    }
    if (message == WM_SIZE && border_ != nullptr) {
        SetWindowPos(border_, HWND_BOTTOM, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOACTIVATE);
    }
    return WindowView::OnMessage(message, wParam, lParam);
}

Win32PictureBox::Win32PictureBox(Win32Toolkit& toolkit, PictureBox& box, HWND parent)
    : WindowView(toolkit, box) {
    Create(BoxClass(), WS_CLIPCHILDREN, WS_EX_CONTROLPARENT | (box.Bordered() ? WS_EX_STATICEDGE : 0),
           parent);
    Show();
    PictureChanged();
}

void Win32PictureBox::PictureChanged() {
    const std::string& name = Control().PictureName();
    RECT inside{};
    GetClientRect(Handle(), &inside);
    ownPicture_ = name.empty() ? Picture() : ReadPicture(name, inside.right);
    InvalidateRect(Handle(), nullptr, FALSE);
}

PixelRect Win32PictureBox::WindowRect() const {
    RECT rect{};
    GetWindowRect(Handle(), &rect);
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

LRESULT Win32PictureBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> answer = HandToChild(message, wParam, lParam)) {
        return *answer;
    }
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            Press(kLeft, wParam, lParam);
            return 0;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
            Press(kRight, wParam, lParam);
            return 0;
        case WM_MBUTTONDOWN:
        case WM_MBUTTONDBLCLK:
            Press(kMiddle, wParam, lParam);
            return 0;
        case WM_LBUTTONUP:
            Release(kLeft, wParam, lParam);
            return 0;
        case WM_RBUTTONUP:
            Release(kRight, wParam, lParam);
            return 0;
        case WM_MBUTTONUP:
            Release(kMiddle, wParam, lParam);
            return 0;
        case WM_MOUSEMOVE: {
            Win32Toolkit& toolkit = Owner();
            toolkit.ForgetCursor();
            Raise(Control().MouseMove, ButtonBits(wParam), wParam, lParam);
            if (!toolkit.CursorOfMove()) {
                ::SetCursor(LoadCursorW(nullptr, IDC_ARROW));
            }
            return 0;
        }
        case WM_SETCURSOR:
            // The move that follows sets the cursor, so that it does not flicker between two shapes.
            if (reinterpret_cast<HWND>(wParam) == Handle() && LOWORD(lParam) == HTCLIENT) {
                return TRUE;
            }
            break;
        case WM_CAPTURECHANGED:
            // Something else took the mouse: it will not tell when the buttons are released.
            if (const int pressed = std::exchange(pressed_, 0)) {
                Raise(Control().MouseUp, pressed, lastState_, lastPlace_);
            }
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
            Paint();
            return 0;
        default:
            break;
    }
    return WindowView::OnMessage(message, wParam, lParam);
}

void Win32PictureBox::Press(int button, WPARAM state, LPARAM place) {
    pressed_ |= button;
    SetCapture(Handle());
    Raise(Control().MouseDown, button, state, place);
}

void Win32PictureBox::Release(int button, WPARAM state, LPARAM place) {
    pressed_ &= ~button;
    if (pressed_ == 0) {
        ReleaseCapture();
    }
    Raise(Control().MouseUp, button, state, place);
}

void Win32PictureBox::Raise(const MouseEvent& event, int buttons, WPARAM state, LPARAM place) {
    lastState_ = state;
    lastPlace_ = place;
    PictureBox& box = Control();
    const double x = box.ScaleX(GET_X_LPARAM(place), ScaleMode::Pixel, box.ScaleMode());
    const double y = box.ScaleY(GET_Y_LPARAM(place), ScaleMode::Pixel, box.ScaleMode());
    Owner().Deliver([&, shift = ShiftState(state)] { event.Raise(buttons, shift, x, y); });
}

void Win32PictureBox::Paint() {
    PaintOffScreen(Handle(), [this](HDC canvas) {
        const int color = Control().Bordered() ? COLOR_WINDOW : COLOR_BTNFACE;
        RECT inside{};
        GetClientRect(Handle(), &inside);
        FillRect(canvas, &inside, GetSysColorBrush(color));
        if (ownPicture_.width > 0) {
            Draw(canvas, ownPicture_, {0, 0, inside.right, inside.bottom}, SystemColor(color));
        }
        if (const PicturePtr& picture = Control().Picture();
            picture != nullptr && picture->width > 0 && picture->height > 0) {
            Draw(canvas, *picture, MiddlePlace(*picture, inside.right, inside.bottom), SystemColor(color));
        }
    });
}

}  // namespace ostrevin::win32
