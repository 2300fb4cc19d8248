# SPDX-License-Identifier: MIT
# What the toolchain files of this folder share; they set TOLKA_TRIPLE.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${TOLKA_TRIPLE}-g++-posix)
set(CMAKE_C_COMPILER ${TOLKA_TRIPLE}-gcc-posix)
set(CMAKE_FIND_ROOT_PATH /usr/${TOLKA_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Nothing of the compiler's own has to lie beside what is built.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
