// SPDX-License-Identifier: MIT
#include "system_colors.h"

#include <gtest/gtest.h>

#include <map>

#include "windows/test_system.h"

namespace test {
namespace {

std::map<int, COLORREF> g_former;  // the former values of changed colours

}  // namespace

void ChangeSystemColor(int index, COLORREF color) {
    g_former.emplace(index, GetSysColor(index));
    ASSERT_TRUE(SetSysColors(1, &index, &color));
}

void RestoreSystemColors() {
    for (const auto& [index, color] : g_former)
        SetSysColors(1, &index, &color);
    g_former.clear();
}

}  // namespace test
