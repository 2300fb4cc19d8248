# SPDX-License-Identifier: MIT
# Checks that the library for Windows is named "Tolka.DLL", exports its four functions at ordinals 1 to 4 and nothing
# else, and needs only libraries of Windows and of the handheld's shell. Run as a test:
#   cmake -D OBJDUMP=<objdump> -D LIBRARY=<library> -P check_library.cmake
cmake_minimum_required(VERSION 3.25)

set(expected_exports "1 DllCanUnloadNow" "2 DllGetClassObject" "3 DllRegisterServer" "4 DllUnregisterServer")
set(known_libraries advapi32 aygshell comctl32 comdlg32 gdi32 kernel32 msvcrt ole32 oleaut32 user32 version)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "cannot read ${LIBRARY}")
endif()
# Brackets and semicolons have a meaning in lists.
string(REGEX REPLACE "[][;]" "|" output "${output}")
string(REPLACE "\n" ";" lines "${output}")

set(name "")
set(base "")
set(addresses 0)
set(exports "")
set(strangers "")
foreach(line IN LISTS lines)
    if(line MATCHES "^Name[ \t]+[0-9a-f]+ (.*)$")
        set(name "${CMAKE_MATCH_1}")
    elseif(line MATCHES "^Ordinal Base[ \t]+([0-9]+)")
        set(base ${CMAKE_MATCH_1})
    elseif(line MATCHES "\\+base\\|")
        math(EXPR addresses "${addresses} + 1")
    elseif(line MATCHES "^[ \t]+\\| *([0-9]+)\\|( \\+base\\| *[0-9]+\\| [0-9a-f]+)? ([A-Za-z_].*)$")
        math(EXPR ordinal "${base} + ${CMAKE_MATCH_1}")
        list(APPEND exports "${ordinal} ${CMAKE_MATCH_3}")
    elseif(line MATCHES "DLL Name: (.*)$")
        string(TOLOWER "${CMAKE_MATCH_1}" library)
        string(REGEX REPLACE "[.]dll$" "" library "${library}")
        if(NOT library IN_LIST known_libraries)
            list(APPEND strangers "${CMAKE_MATCH_1}")
        endif()
    endif()
endforeach()

if(NOT name STREQUAL "Tolka.DLL")
    message(FATAL_ERROR " ${LIBRARY} calls itself \"${name}\"")
elseif(NOT exports STREQUAL expected_exports OR NOT addresses EQUAL 4)
    message(FATAL_ERROR " ${LIBRARY} exports ${exports} (${addresses} addresses)\n instead of ${expected_exports}")
elseif(strangers)
    message(FATAL_ERROR " ${LIBRARY} needs ${strangers}")
endif()
