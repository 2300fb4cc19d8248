# SPDX-License-Identifier: MIT
# add_device_tests(TARGET): registers a test program that runs on a device. On the host each case is a test. On Windows
# starting a program takes long, so the whole program is one test; these run one after the other, as they share one
# registry and one drive.
if(WIN32)
    # The cross compiler has no GoogleTest; Debian packages its sources.
    find_path(TOLKA_GOOGLETEST src/gtest-all.cc REQUIRED PATHS /usr/src/googletest/googletest
              NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    add_library(gtest STATIC ${TOLKA_GOOGLETEST}/src/gtest-all.cc)
    target_include_directories(gtest SYSTEM PUBLIC ${TOLKA_GOOGLETEST}/include PRIVATE ${TOLKA_GOOGLETEST})
    target_compile_options(gtest PRIVATE -w -fno-sanitize=all)
    add_library(GTest::gtest ALIAS gtest)
else()
    find_package(GTest REQUIRED)
endif()

function(add_device_tests target)
    if(WIN32)
        add_test(NAME ${target} COMMAND ${target})
        set_tests_properties(${target} PROPERTIES RUN_SERIAL TRUE TIMEOUT 600)
    else()
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60)
    endif()
endfunction()

# define_paths(TARGET [NAME PATH]...): defines each NAME as the path at which the target's tests find a file. On
# Windows the project is drive R:, so that paths need no letters that the code page lacks.
function(define_paths target)
    while(ARGN)
        list(POP_FRONT ARGN name path)
        if(WIN32)
            set(path "R:/$<PATH:RELATIVE_PATH,${path},${CMAKE_SOURCE_DIR}>")
        endif()
        target_compile_definitions(${target} PRIVATE "${name}=\"${path}\"")
    endwhile()
endfunction()
