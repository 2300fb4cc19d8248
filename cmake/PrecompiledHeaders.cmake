# SPDX-License-Identifier: MIT
# precompile(TARGET HEADER...): compiles headers that many of the target's sources include once for all of them. A
# build with TOLKA_PRECOMPILE off shows whether each source includes what it names.
function(precompile target)
    if(TOLKA_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# Of the standard library, what most sources take.
set(TOLKA_STANDARD_HEADERS <algorithm> <functional> <map> <memory> <optional> <span> <string> <string_view> <vector>)
# What most tests take besides.
set(TOLKA_TEST_HEADERS ${TOLKA_STANDARD_HEADERS} <filesystem> <fstream> <sstream> <gtest/gtest.h>)
