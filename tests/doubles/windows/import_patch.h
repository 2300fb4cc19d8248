// SPDX-License-Identifier: MIT
// Replaces a function that a loaded module imports.
#pragma once

#include <windows.h>

namespace test {

// Only this module then calls the replacement, as long as it is loaded. Returns the replaced function; null
// if the module does not import this name.
void* ReplaceImport(HMODULE module, const char* name, void* replacement);

template <typename Function>
Function* ReplaceImport(HMODULE module, const char* name, Function* replacement) {
    return reinterpret_cast<Function*>(ReplaceImport(module, name, reinterpret_cast<void*>(replacement)));
}

}  // namespace test
