# SPDX-License-Identifier: MIT
# Windows, 32 bits, by Debian's cross compiler.
set(TOLKA_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
