# cmake -D CHMCMD=... -D PROJECT=FILE.hhp -D HELP_FILE=FILE.chm -P CompileHelp.cmake
# Compiles the help project. The compiler only warns of links that lead nowhere, and leaves an empty file when it
# fails: here both fail, and only a sound file takes its place.
cmake_path(GET HELP_FILE FILENAME name)
cmake_path(GET HELP_FILE PARENT_PATH folder)
set(work ${folder}/CMakeFiles/help)
file(MAKE_DIRECTORY ${work})
execute_process(COMMAND ${CHMCMD} ${PROJECT}
    WORKING_DIRECTORY ${work}
    RESULT_VARIABLE code
    OUTPUT_VARIABLE said
    ERROR_VARIABLE said)
if(NOT code EQUAL 0 OR said MATCHES "Warning|Error")
    message(FATAL_ERROR "The help compiler ended with ${code}:\n${said}")
endif()
file(RENAME ${work}/${name} ${HELP_FILE})
