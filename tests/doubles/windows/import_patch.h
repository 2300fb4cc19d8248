// SPDX-License-Identifier: MIT
// Puts a function of the test's own in the place of one that a loaded module imports.
#pragma once

#include <windows.h>

namespace test {

// From then on the module, and no other, calls the replacement. Returns the function that it called before;
// null when it imports none of this name. The change ends with the module.
void* ReplaceImport(HMODULE module, const char* name, void* replacement);

template <typename Function>
Function* ReplaceImport(HMODULE module, const char* name, Function* replacement) {
    return reinterpret_cast<Function*>(ReplaceImport(module, name, reinterpret_cast<void*>(replacement)));
}

}  // namespace test
