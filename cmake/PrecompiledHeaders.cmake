# SPDX-License-Identifier: MIT
# precompile(TARGET HEADER...): compiles headers once for all sources of the target. A build with TOLKA_PRECOMPILE off
# shows whether each source includes the headers that it needs.
function(precompile target)
    if(TOLKA_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# The standard headers that most sources include.
set(TOLKA_STANDARD_HEADERS <algorithm> <functional> <map> <memory> <optional> <span> <string> <string_view> <vector>)
# The same for tests.
set(TOLKA_TEST_HEADERS ${TOLKA_STANDARD_HEADERS} <filesystem> <fstream> <sstream> <gtest/gtest.h>)
