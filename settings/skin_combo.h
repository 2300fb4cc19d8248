// SPDX-License-Identifier: MIT
// A combo box, by the texts of its items.
#pragma once

#include <windows.h>

#include "framework/wide_string.h"

inline void AddItem(HWND combo, const WideString& text) {
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

inline int ItemCount(HWND combo) { return static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0)); }

// -1 when nothing is selected.
inline int SelectedItem(HWND combo) { return static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0)); }

// Sends no notification.
inline void SelectItem(HWND combo, int index) {
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

// Empty for an index without an item.
inline WideString ItemText(HWND combo, int index) {
    const auto item = static_cast<WPARAM>(index);
    const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, item, 0);
    if (length <= 0) return {};
    WideString text(static_cast<std::size_t>(length) + 1, WCHAR{0});  // with room for the null
    SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}
