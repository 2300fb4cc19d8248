// SPDX-License-Identifier: MIT
// Strings of UTF-16 code units, as the platform has them.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

using WideString = std::basic_string<WCHAR>;
using WideStringList = std::vector<WideString>;
