// SPDX-License-Identifier: MIT
// A string of the library's string table.
#pragma once

#include <windows.h>

#include "framework/module.h"
#include "framework/wide_string.h"

// Empty when there is none.
inline WideString LoadResourceString(UINT id) {
    WCHAR text[128];
    const int length = LoadStringW(_Module.GetModuleInstance(), id, text, static_cast<int>(std::size(text)));
    return {text, static_cast<std::size_t>(length < 0 ? 0 : length)};
}
