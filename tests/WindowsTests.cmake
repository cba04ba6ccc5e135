# Test programs for Windows: GoogleTest compiled with the programs' own compiler, from the sources of Debian's package
# googletest, and Wine to run them.
set(GOOGLETEST_DIR /usr/src/googletest CACHE PATH "The sources of GoogleTest")

# ostrevin_googletest(NAME FOLDER LINK): a library of one folder of it, without POSIX threads.
function(ostrevin_googletest name folder link)
    set(place ${GOOGLETEST_DIR}/${folder})
    add_library(${name} STATIC EXCLUDE_FROM_ALL
        ${place}/src/${name}-all.cc)
    target_include_directories(${name} SYSTEM PUBLIC ${place}/include PRIVATE ${place})
    target_compile_definitions(${name} PUBLIC GTEST_HAS_PTHREAD=0 GTEST_HAS_NOTIFICATION_=1)
    target_compile_options(${name} PUBLIC -include ${PROJECT_SOURCE_DIR}/tests/support/WindowsNotification.h)
    target_link_libraries(${name} PUBLIC ${link})
    add_library(GTest::${name} ALIAS ${name})
endfunction()

ostrevin_googletest(gtest googletest "")
ostrevin_googletest(gmock googlemock gtest)
add_library(gtest_main STATIC EXCLUDE_FROM_ALL ${GOOGLETEST_DIR}/googletest/src/gtest_main.cc)
target_link_libraries(gtest_main PUBLIC gtest)
add_library(GTest::gtest_main ALIAS gtest_main)

# Whether the Wine of this machine runs these programs, which tools/wine tells; it runs those of 64 bits always.
execute_process(COMMAND ${PROJECT_SOURCE_DIR}/tools/wine --runs ${CMAKE_SYSTEM_PROCESSOR}
    RESULT_VARIABLE wineRefuses OUTPUT_QUIET ERROR_QUIET)

# ostrevin_add_wine_command(NAME COMMAND...): a test of a script that runs programs under Wine. It is skipped where Wine
# does not run them, and where the script ends with 77.
function(ostrevin_add_wine_command name)
    cmake_path(GET PROJECT_BINARY_DIR FILENAME build)
    add_test(NAME ${build}/${name} COMMAND ${ARGN})
    set_tests_properties(${build}/${name} PROPERTIES TIMEOUT 300 SKIP_RETURN_CODE 77)
    if(wineRefuses)
        set_tests_properties(${build}/${name} PROPERTIES DISABLED TRUE)
    endif()
endfunction()

# ostrevin_one_by_one(NAME): a test that has the screen to itself. Such tests take longest and begin first, beside others.
function(ostrevin_one_by_one name)
    cmake_path(GET PROJECT_BINARY_DIR FILENAME build)
    set_tests_properties(${build}/${name} PROPERTIES RESOURCE_LOCK screen COST 100)
endfunction()

# ostrevin_add_windows_test(NAME TARGET [DISPLAY] [ARGUMENTS...]): runs a program under Wine, on a display of its own
# where it shows windows.
function(ostrevin_add_windows_test name target)
    cmake_parse_arguments(arg "DISPLAY" "" "" ${ARGN})
    set(wine ${PROJECT_SOURCE_DIR}/tools/wine)
    if(arg_DISPLAY)
        list(APPEND wine --display)
    endif()
    ostrevin_add_wine_command(${name} ${wine} $<TARGET_FILE:${target}> ${arg_UNPARSED_ARGUMENTS})
    if(arg_DISPLAY)
        ostrevin_one_by_one(${name})
    endif()
endfunction()
