# SPDX-License-Identifier: MIT
# Warnings are errors in every build. TOLKA_SANITIZE adds ASan and UBSan to every target. -Wnon-virtual-dtor is not used,
# as COM interfaces have no destructor.
add_compile_options(
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wcast-qual
    -Woverloaded-virtual -Wimplicit-fallthrough)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wduplicated-cond -Wlogical-op)
    # GCC's flow analysis reports these in its own libstdc++, above all with sanitizers.
    add_compile_options(-Wno-error=stringop-overflow -Wno-error=array-bounds -Wno-error=maybe-uninitialized)
endif()
if(TOLKA_SANITIZE)
    # The vptr check needs run-time type information, which the product does without.
    add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(TOLKA_TRAP)
    add_compile_options(-fsanitize=undefined -fno-sanitize=vptr -fsanitize-undefined-trap-on-error)
endif()
if(MINGW)
    # The type of functions from GetProcAddress is unknown.
    add_compile_options(-Wno-cast-function-type)
endif()
