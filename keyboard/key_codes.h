// SPDX-License-Identifier: MIT
// Slot 0 of a CharsetEntry classifies its key. The function codes lie in the private-use area of Unicode.
#pragma once

#include <windows.h>

// Status keys change m_stKbStatus.
inline constexpr WCHAR kShiftCode = 0xF000;
inline constexpr WCHAR kControlCode = 0xF001;
inline constexpr WCHAR kCapsCode = 0xF002;
inline constexpr WCHAR kLanguageCode = 0xF003;
inline constexpr WCHAR kDigitCode = 0xF004;
inline constexpr WCHAR kUmlautCode = 0xF005;

// Function keys with an action; the block's remaining codes have none.
inline constexpr WCHAR kEscapeCode = 0xF010;
inline constexpr WCHAR kBackspaceCode = 0xF011;
inline constexpr WCHAR kEnterCode = 0xF012;
inline constexpr WCHAR kSpaceCode = 0xF013;
inline constexpr WCHAR kTabCode = 0xF014;
inline constexpr WCHAR kLeftCode = 0xF015;
inline constexpr WCHAR kUpCode = 0xF016;
inline constexpr WCHAR kRightCode = 0xF017;
inline constexpr WCHAR kDownCode = 0xF018;

// Key indices with a meaning of their own.
inline constexpr LONG kNoKey = -1;
inline constexpr DWORD kCapsKeyIndex = 50;
