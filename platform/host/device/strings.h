// SPDX-License-Identifier: MIT
// Compares text as the platform does.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace host {

// Upper case, one code unit for one; the order and equality of everything that ignores case.
WCHAR FoldCase(WCHAR unit);
std::u16string FoldCase(std::u16string_view text);
bool EqualIgnoringCase(std::u16string_view first, std::u16string_view second);

// A null text counts as an empty one.
inline std::u16string_view View(LPCWSTR text) { return text ? text : u""; }
// Splits the text at any of the separators and omits empty parts. The views are into the text.
std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view separators);

}  // namespace host
