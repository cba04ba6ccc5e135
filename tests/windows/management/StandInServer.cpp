// The stand-ins as a library that Windows loads into the program under test. The environment variable
// OSTREVIN_STAND_IN names a folder: its file "answers" is the script of the management service, and each
// thing that is asked adds a line to "asked". Both hold ASCII alone.

#include <windows.h>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/windows/management/Opener.h"
#include "tests/windows/management/StandIn.h"

namespace ostrevin {
namespace {

std::string PathOf(const std::string& name) {
    const char* const folder = std::getenv("OSTREVIN_STAND_IN");
    return (folder == nullptr ? std::string() : std::string(folder)) + "\\" + name;
}

std::wstring ReadScript() {
    std::ifstream file(PathOf("answers"), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return {text.begin(), text.end()};
}

void Append(const std::string& line) {
    std::ofstream(PathOf("asked"), std::ios::binary | std::ios::app) << line << '\n';
}

void NoteQuestion(const std::wstring& line) {
    std::string ascii;
    for (const wchar_t character : line) {
        ascii += static_cast<char>(character);
    }
    Append(ascii);
}

void NoteOwner(HWND owner) {
    Append("open for " + std::to_string(reinterpret_cast<ULONG_PTR>(owner)));
}

IUnknown* MakeClass(REFCLSID id) {
    if (IsEqualCLSID(id, kManagementClass)) {
        return MakeManagementClass(ReadScript, NoteQuestion);
    }
    return IsEqualCLSID(id, kOpenerClass) ? MakeOpenerClass(NoteOwner) : nullptr;
}

}  // namespace
}  // namespace ostrevin

extern "C" __declspec(dllexport) HRESULT WINAPI
    DllGetClassObject(REFCLSID id, REFIID interfaceId, void** object) {
    *object = nullptr;
    IUnknown* const made = ostrevin::MakeClass(id);
    if (made == nullptr) {
        return CLASS_E_CLASSNOTAVAILABLE;
    }
    const HRESULT result = made->QueryInterface(interfaceId, object);
    made->Release();
    return result;
}
