// SPDX-License-Identifier: MIT
// Strings of the platform's UTF-16 code units.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

using WideString = std::basic_string<WCHAR>;
using WideStringList = std::vector<WideString>;
