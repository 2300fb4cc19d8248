# SPDX-License-Identifier: MIT
# Rules that the sources and the built library keep, checked like everything else; and the checks themselves.
set(checks ${CMAKE_SOURCE_DIR}/tools)
add_test(NAME Layers.SourcesKeepTheirOrder
    COMMAND ${CMAKE_COMMAND} -D ROOT=${CMAKE_SOURCE_DIR} -P ${checks}/check_layers.cmake)
add_test(NAME Layers.CheckNoticesEveryKindOfFault
    COMMAND ${CMAKE_COMMAND} -D FOLDER=${CMAKE_CURRENT_BINARY_DIR}/layers -P ${checks}/check_layers_test.cmake)
if(TARGET host)
    add_test(NAME Exports.LibraryDefinesItsEntryPointsAlone
        COMMAND ${CMAKE_COMMAND} -D NM=${CMAKE_NM} -D LIBRARY=$<TARGET_FILE:tolka> -P ${checks}/check_exports.cmake)
    add_test(NAME Exports.CheckNoticesOtherSymbols
        COMMAND ${CMAKE_COMMAND} -D NM=${CMAKE_NM} -D LIBRARY=$<TARGET_FILE:sip> -P ${checks}/check_exports.cmake)
    set_tests_properties(Exports.CheckNoticesOtherSymbols PROPERTIES PASS_REGULAR_EXPRESSION "instead of")
endif()
