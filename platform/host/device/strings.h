// SPDX-License-Identifier: MIT
// Text as the platform compares it and as the host writes it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace host {

// What is malformed becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view text);
// None when the text is malformed.
std::optional<std::string> ToStrictUtf8(std::u16string_view text);
std::optional<std::u16string> FromStrictUtf8(std::string_view text);
// Upper case, one code unit for one; the order and equality of everything that ignores case.
WCHAR FoldCase(WCHAR unit);
std::u16string FoldCase(std::u16string_view text);
bool EqualIgnoringCase(std::u16string_view first, std::u16string_view second);

}  // namespace host
