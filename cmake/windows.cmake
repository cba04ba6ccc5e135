# Cross-compiles for Windows 2000 and later with Debian's MinGW-w64, whose threads are Windows' own: one static
# executable, nothing to install beside it. CMAKE_SYSTEM_PROCESSOR names the processor, and OLDEST_WINDOWS_MAJOR and
# OLDEST_WINDOWS_MINOR the first Windows that is to load the programs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-gcc-win32)
set(CMAKE_CXX_COMPILER ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-g++-win32)
set(CMAKE_RC_COMPILER ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# (-fipa-ra would count on the registers that a function leaves alone, also where the linker then takes another copy of
# it, from a file that was compiled with other options or from the runtime.)
set(CMAKE_CXX_FLAGS_INIT "-D_WIN32_WINNT=0x0501 -DUNICODE -D_UNICODE -DNOMINMAX -ffunction-sections -fdata-sections -fno-ipa-ra -fstack-protector-strong")
# No data is run as code, and Windows that can (Vista and later) puts the program anywhere; to older ones both bits mean
# nothing.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s -Wl,--gc-sections,--nxcompat,--dynamicbase${MORE_ADDRESSES}")
foreach(what os subsystem)
    string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT
        ",--major-${what}-version=${OLDEST_WINDOWS_MAJOR},--minor-${what}-version=${OLDEST_WINDOWS_MINOR}")
endforeach()
