#include "tests/windows/window/Person.h"

#include <stdexcept>

#include "tests/windows/window/Host.h"

namespace ostrevin {
namespace {

void Do(std::vector<INPUT> inputs) {
    if (SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) != inputs.size()) {
        throw std::runtime_error("there is no input");
    }
}

/// The command that takes the screen's own pointer to a place in a window. (By a movement that is told late,
/// a click could go where the one before it went.)
std::wstring PointerAt(HWND window, POINT place) {
    ClientToScreen(window, &place);
    return L" mousemove " + std::to_wstring(place.x) + L" " + std::to_wstring(place.y);
}

INPUT KeyInput(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, 0));
    input.ki.dwFlags = flags;
    return input;
}

INPUT CharacterInput(wchar_t character, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
    return input;
}

}  // namespace

POINT MiddleOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

void Click(HWND window, POINT place) {
    RunOnHost(L"xdotool" + PointerAt(window, place) + L" click 1");
}

void DoubleClick(HWND window, POINT place) {
    RunOnHost(L"xdotool" + PointerAt(window, place) + L" click --repeat 2 --delay 20 1");
}

void Drag(HWND window, const std::vector<POINT>& places) {
    std::wstring command = L"xdotool";
    for (std::size_t i = 0; i < places.size(); ++i) {
        command += PointerAt(window, places[i]) + L" sleep 0.05";
        command += i == 0 ? L" mousedown 1" : L"";
    }
    RunOnHost(command + L" mouseup 1");
}

void Press(WORD key, const std::vector<WORD>& held) {
    std::vector<INPUT> inputs;
    for (const WORD other : held) {
        inputs.push_back(KeyInput(other, 0));
    }
    inputs.push_back(KeyInput(key, 0));
    inputs.push_back(KeyInput(key, KEYEVENTF_KEYUP));
    for (const WORD other : held) {
        inputs.push_back(KeyInput(other, KEYEVENTF_KEYUP));
    }
    Do(inputs);
}

void Type(const std::wstring& text) {
    for (const wchar_t character : text) {
        Do({CharacterInput(character, 0), CharacterInput(character, KEYEVENTF_KEYUP)});
    }
}

}  // namespace ostrevin
