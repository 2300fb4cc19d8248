// SPDX-License-Identifier: MIT
// Every registry key and value that the keyboard reads or writes, and the settings of a new device.
#pragma once

#include <windows.h>

// The settings key, under HKEY_LOCAL_MACHINE, and its values.
inline constexpr WCHAR kSettingsKey[] = TEXT("Software\\Tolka\\7.0");
inline constexpr WCHAR kSkinValue[] = TEXT("Skin");                    // REG_SZ, path of the chosen skin
inline constexpr WCHAR kSwipeValue[] = TEXT("Swipe");                  // REG_DWORD, see CKeyboard::m_dwSwipe
inline constexpr WCHAR kSwipeOnlySkinValue[] = TEXT("SwipeOnlySkin");  // REG_DWORD, zero or not
inline constexpr WCHAR kExtSymValue[] = TEXT("ExtSym");                // REG_DWORD, extended symbols on
inline constexpr WCHAR kUserSkinsValue[] = TEXT("UserSkins");  // REG_MULTI_SZ, skins outside "\windows"

// The platform's key for input methods, under HKEY_CURRENT_USER. Both values are class identifiers as text.
inline constexpr WCHAR kSipKey[] = TEXT("ControlPanel\\Sip");
inline constexpr WCHAR kDefaultImValue[] = TEXT("DefaultIm");     // REG_SZ, the platform starts with this one
inline constexpr WCHAR kPreviousImValue[] = TEXT("PrevIMClsid");  // REG_SZ, the default before

// The settings that an installer writes beside registering the library; existing values stay. While they are
// absent, the keyboard treats them as on, but the options dialog shows them as off and its OK stores that.
struct InitialSetting {
    LPCWSTR name;
    DWORD value;  // a REG_DWORD
};
inline constexpr InitialSetting kInitialSettings[] = {
    {kSwipeValue, 1},
    {kExtSymValue, 1},
};
