// SPDX-License-Identifier: MIT
// Every key and value of the registry that the keyboard reads or writes, and what a device begins with.
#pragma once

#include <windows.h>

// The settings key, under HKEY_LOCAL_MACHINE, and its values.
inline constexpr WCHAR kSettingsKey[] = TEXT("Software\\Tolka\\7.0");
inline constexpr WCHAR kSkinValue[] = TEXT("Skin");                    // REG_SZ, path of the chosen skin
inline constexpr WCHAR kSwipeValue[] = TEXT("Swipe");                  // REG_DWORD, see CKeyboard::m_dwSwipe
inline constexpr WCHAR kSwipeOnlySkinValue[] = TEXT("SwipeOnlySkin");  // REG_DWORD, zero or not
inline constexpr WCHAR kExtSymValue[] = TEXT("ExtSym");                // REG_DWORD, extended symbols on
inline constexpr WCHAR kUserSkinsValue[] = TEXT("UserSkins");  // REG_MULTI_SZ, skins outside "\windows"

// The platform's key of its input methods, under HKEY_CURRENT_USER. Both values are class identifiers as
// text.
inline constexpr WCHAR kSipKey[] = TEXT("ControlPanel\\Sip");
inline constexpr WCHAR kDefaultImValue[] = TEXT("DefaultIm");     // REG_SZ, what the platform starts with
inline constexpr WCHAR kPreviousImValue[] = TEXT("PrevIMClsid");  // REG_SZ, what it started with before

// What a device gets along with the registered library, in the settings key. The keyboard takes these
// settings as on while they are absent, the options dialog shows them as off, and its OK would then switch
// them off: so whatever sets a device up writes them. Values that are there stay as they are.
struct InitialSetting {
    LPCWSTR name;
    DWORD value;  // a REG_DWORD
};
inline constexpr InitialSetting kInitialSettings[] = {
    {kSwipeValue, 1},   // strokes, on any key
    {kExtSymValue, 1},  // the planes of accented letters
};
