# SPDX-License-Identifier: MIT
# Checks that the library exports its entry point and its four functions, and nothing else. Run as a test:
#   cmake -D NM=<nm> -D LIBRARY=<shared object> -P check_exports.cmake
cmake_minimum_required(VERSION 3.25)

set(expected DllCanUnloadNow DllGetClassObject DllMain DllRegisterServer DllUnregisterServer)

execute_process(
    COMMAND ${NM} --dynamic --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE output
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cannot read the symbols of ${LIBRARY}")
endif()
string(REGEX MATCHALL "[^\n]+" symbols "${output}")
list(TRANSFORM symbols REPLACE " .*" "")
list(SORT symbols)
if(NOT symbols STREQUAL expected)
    message(FATAL_ERROR " ${LIBRARY} exports ${symbols}\n instead of ${expected}")
endif()
