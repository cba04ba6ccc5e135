# Short runs of programs that are no tests by themselves, so that a broken one shows.

# ostrevin_programs(FOLDER LIST): the targets of the programs that the folder's CMakeLists.txt builds.
function(ostrevin_programs folder list)
    set(programs "")
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type STREQUAL EXECUTABLE)
            list(APPEND programs ${target})
        endif()
    endforeach()
    set(${list} ${programs} PARENT_SCOPE)
endfunction()

# Each fuzz target fuzz_NAME runs for some seconds from the seeds in corpus/NAME. What it finds worth keeping goes
# to found/NAME, where the next run goes on; an input that breaks the target goes to broken-NAME-....
function(ostrevin_fuzz_briefly folder)
    ostrevin_programs(${folder} targets)
    foreach(target IN LISTS targets)
        string(REGEX REPLACE "^fuzz_" "" name ${target})
        file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/${folder}/found/${name})
        add_test(NAME ${target}
            COMMAND ${target} -max_total_time=10 -timeout=10 -malloc_limit_mb=512 -artifact_prefix=broken-${name}-
                found/${name} corpus/${name}
            WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/${folder})
    endforeach()
endfunction()

# Each benchmark runs one short round; no time is asserted.
function(ostrevin_bench_briefly folder)
    ostrevin_programs(${folder} targets)
    foreach(target IN LISTS targets)
        add_test(NAME ${target} COMMAND ${target} --benchmark_min_time=0.01)
    endforeach()
endfunction()
