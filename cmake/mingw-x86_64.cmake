# SPDX-License-Identifier: MIT
# Windows, 64 bits, by Debian's cross compiler. The -posix variant: the standard library's locks need it.
set(TOLKA_TRIPLE x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
# Runs the programs; scripts/test-windows sets up the environment.
find_program(TOLKA_WINE wine64 PATHS /usr/lib/wine)
if(TOLKA_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${TOLKA_WINE})
endif()
