// SPDX-License-Identifier: MIT
#include "system_colors.h"

#include <host_control.h>

#include <gtest/gtest.h>

namespace test {

void ChangeSystemColor(int index, COLORREF color) { ASSERT_TRUE(host::SetSystemColor(index, color)); }

}  // namespace test
