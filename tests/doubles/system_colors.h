// SPDX-License-Identifier: MIT
// Changes system colours for the rest of the test.
#pragma once

#include <windows.h>

namespace test {

void ChangeSystemColor(int index, COLORREF color);

}  // namespace test
