# SPDX-License-Identifier: MIT
# In every build a real resource compiler compiles the same .rc file.
if(NOT TOLKA_TRIPLE)
    set(TOLKA_TRIPLE x86_64-w64-mingw32)
endif()
find_program(TOLKA_WINDRES ${TOLKA_TRIPLE}-windres REQUIRED)
find_program(TOLKA_PE_LINKER ${TOLKA_TRIPLE}-ld REQUIRED)
find_program(TOLKA_WIDL ${TOLKA_TRIPLE}-widl REQUIRED)

# add_resource_object(SOURCE OBJECT [DEPENDS file...] [INCLUDES folder...])
# Compiles a resource script to an object file. The compiler reports no dependencies, so the files that the
# script includes are named in DEPENDS.
function(add_resource_object source object)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "DEPENDS;INCLUDES")
    get_filename_component(source ${source} ABSOLUTE)
    # Values that the platform's SDK would define.
    set(values ${CMAKE_SOURCE_DIR}/resources)
    list(TRANSFORM arg_INCLUDES PREPEND -I)
    add_custom_command(
        OUTPUT ${object}
        COMMAND ${TOLKA_WINDRES} -I${CMAKE_CURRENT_SOURCE_DIR} -I${values} ${arg_INCLUDES} ${source} ${object}
        DEPENDS ${source} ${values}/resource_values.h ${arg_DEPENDS}
        VERBATIM)
endfunction()

# add_resource_library(TARGET SOURCE OUTPUT [DEPENDS file...] [INCLUDES folder...])
# Makes OUTPUT, a PE file with only resources, from a resource script; arguments as above.
function(add_resource_library target source output)
    get_filename_component(folder ${output} DIRECTORY)
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.o)
    add_resource_object(${source} ${object} ${ARGN})
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
        COMMAND ${TOLKA_PE_LINKER} -shared -e 0 -s -o ${output} ${object}
        DEPENDS ${object}
        VERBATIM)
    add_custom_target(${target} ALL DEPENDS ${output})
endfunction()

# add_type_library(SOURCE OUTPUT [INCLUDES folder...] [DEPENDS file...]): compiles an .idl to a .tlb file.
function(add_type_library source output)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "DEPENDS;INCLUDES")
    get_filename_component(source ${source} ABSOLUTE)
    list(TRANSFORM arg_INCLUDES PREPEND -L)
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${TOLKA_WIDL} -t ${arg_INCLUDES} -o ${output} ${source}
        DEPENDS ${source} ${arg_DEPENDS}
        VERBATIM)
endfunction()
