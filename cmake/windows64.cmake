# Cross-compiles for 64-bit Windows, from Windows XP x64.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(OLDEST_WINDOWS_MAJOR 5)
set(OLDEST_WINDOWS_MINOR 2)
set(MORE_ADDRESSES ",--high-entropy-va")
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
