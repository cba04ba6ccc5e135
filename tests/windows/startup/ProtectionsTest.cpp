// What the Windows programs do against libraries that somebody planted, and against overwritten stacks.
#include <windows.h>
#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "startup/WindowsLibraries.h"

extern "C" std::uintptr_t __stack_chk_guard;

namespace ostrevin {
namespace {

std::wstring FileOf(HMODULE library) {
    std::array<wchar_t, MAX_PATH> file{};
    GetModuleFileNameW(library, file.data(), MAX_PATH);
    CharLowerW(file.data());
    return file.data();
}

std::wstring ProgramFolder() {
    const std::wstring file = FileOf(nullptr);
    return file.substr(0, file.rfind(L'\\'));
}

/// Where a library comes from that is asked for by its name alone; "" when there is none.
std::wstring LoadedFrom(const wchar_t* name) {
    const HMODULE library = LoadLibraryW(name);
    if (library == nullptr) {
        return {};
    }
    const std::wstring file = FileOf(library);
    FreeLibrary(library);
    return file.substr(0, file.rfind(L'\\'));
}

TEST(WindowsLibrariesTest, ComeFromTheSystemsFolderAlone) {
    // As Windows does it, for a start.
    EXPECT_EQ(LoadedFrom(L"planted.dll"), ProgramFolder());
    EXPECT_EQ(LoadedFrom(L"oleacc.dll"), ProgramFolder());
    std::array<wchar_t, MAX_PATH> temporary{};
    GetTempPathW(MAX_PATH, temporary.data());
    const std::wstring current = temporary.data();
    ASSERT_TRUE(
        CopyFileW((ProgramFolder() + L"\\planted.dll").c_str(), (current + L"incurrent.dll").c_str(), FALSE));
    ASSERT_TRUE(SetCurrentDirectoryW(current.c_str()));
    EXPECT_NE(LoadedFrom(L"incurrent.dll"), L"");
    // What can be done on any Windows.
    LoadFromSystem(L"oleacc.dll");
    EXPECT_EQ(LoadedFrom(L"oleacc.dll"), L"c:\\windows\\system32");
    LoadFromSystem(L"there is none.dll");

    LoadLibrariesFromSystem();
    EXPECT_EQ(LoadedFrom(L"planted.dll"), L"");
    EXPECT_EQ(LoadedFrom(L"incurrent.dll"), L"");
    EXPECT_EQ(LoadedFrom(L"wininet.dll"), L"c:\\windows\\system32");
    // What is named with its folder is still there for who wants it.
    EXPECT_EQ(LoadedFrom((ProgramFolder() + L"\\planted.dll").c_str()), ProgramFolder());
    DeleteFileW((current + L"incurrent.dll").c_str());
}

/// The code that this program ends with when it is started anew with an argument.
DWORD CodeOf(const wchar_t* argument) {
    std::wstring command = L"\"" + FileOf(nullptr) + L"\" " + argument;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                       &process) == FALSE) {
        return 0;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

/// Writes behind its own buffer.
[[gnu::noinline]] int Overwrite(std::size_t count) {
    std::array<volatile char, 16> buffer{};
    volatile char* place = buffer.data();
    for (std::size_t i = 0; i < count; ++i) {
        place[i] = 'x';
    }
    return buffer[1];
}

TEST(StackGuardTest, AnOverwrittenStackEndsTheProgram) {
    const char* beyond = std::getenv("OSTREVIN_BEYOND");
    if (beyond != nullptr) {
        std::_Exit(Overwrite(static_cast<std::size_t>(std::atoi(beyond))) == 'x' ? 3 : 4);
    }
    const wchar_t* const itself = L"--gtest_filter=StackGuardTest.AnOver*";
    SetEnvironmentVariableA("OSTREVIN_BEYOND", "16");
    EXPECT_EQ(CodeOf(itself), 3U);
    SetEnvironmentVariableA("OSTREVIN_BEYOND", "48");
    EXPECT_EQ(CodeOf(itself), static_cast<DWORD>(STATUS_STACK_BUFFER_OVERRUN));
    SetEnvironmentVariableA("OSTREVIN_BEYOND", nullptr);
}

TEST(StackGuardTest, TheGuardIsAnotherOneAtEachStart) {
    if (std::getenv("OSTREVIN_TELL") != nullptr) {
        std::_Exit(static_cast<int>(__stack_chk_guard & 0x7FFFFFFFU));
    }
    SetEnvironmentVariableA("OSTREVIN_TELL", "1");
    std::set<DWORD> guards;
    for (int start = 0; start < 3; ++start) {
        guards.insert(CodeOf(L"--gtest_filter=StackGuardTest.TheGuard*"));
    }
    SetEnvironmentVariableA("OSTREVIN_TELL", nullptr);
    EXPECT_EQ(guards.size(), 3U);
    EXPECT_FALSE(guards.contains(0));
}

}  // namespace
}  // namespace ostrevin
