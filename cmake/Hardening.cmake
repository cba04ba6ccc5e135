# What compiler and linker can do on Linux against a fault in a reader of hostile bytes, for all targets of the folder that
# includes this. tools/check-linux-program looks whether the programs have it. cmake/windows.cmake has Windows' own.
if(WIN32 OR OSTREVIN_SANITIZE)
    return()
endif()
add_compile_options(-fPIE -fstack-protector-strong -fstack-clash-protection)
add_link_options(-pie LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
# The checked forms of the C library's functions need sizes that only optimization finds out.
add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    # The linker marks a program for shadow stacks by itself only where the C library's start-up code is marked as well.
    add_compile_options(-fcf-protection=full)
    add_link_options(LINKER:-z,shstk)
endif()
