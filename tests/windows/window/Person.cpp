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

INPUT MouseInput(DWORD flags, POINT place = {}) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = place.x;
    input.mi.dy = place.y;
    input.mi.dwFlags = flags;
    return input;
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

void MoveMouse(HWND window, POINT place) {
    ClientToScreen(window, &place);
    // Of the 65536 places across the screen, the one in the middle of the point.
    const auto share = [](LONG point, int size) { return (point * 65536 + 32768) / size; };
    Do({MouseInput(
        MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE,
        {share(place.x, GetSystemMetrics(SM_CXSCREEN)), share(place.y, GetSystemMetrics(SM_CYSCREEN))})});
}

void Click(HWND window, POINT place) {
    MoveMouse(window, place);
    Do({MouseInput(MOUSEEVENTF_LEFTDOWN), MouseInput(MOUSEEVENTF_LEFTUP)});
}

void DoubleClick(HWND window, POINT place) {
    Click(window, place);
    Click(window, place);
}

void Drag(HWND window, const std::vector<POINT>& places) {
    std::wstring command = L"xdotool";
    for (std::size_t i = 0; i < places.size(); ++i) {
        POINT place = places[i];
        ClientToScreen(window, &place);
        command +=
            L" mousemove " + std::to_wstring(place.x) + L" " + std::to_wstring(place.y) + L" sleep 0.05";
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
