# Cross-compiles for 32-bit Windows, from Windows 2000.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(OLDEST_WINDOWS_MAJOR 5)
set(OLDEST_WINDOWS_MINOR 0)
# All the addresses that Windows gives: on one of 64 bits 4 GB, for the hives of many accounts.
set(MORE_ADDRESSES ",--large-address-aware")
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
