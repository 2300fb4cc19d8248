// SPDX-License-Identifier: MIT
// What a device gets along with the registered library. The keyboard takes these settings as on while they
// are absent, the options dialog shows them as off and its OK would then switch them off: so whatever sets a
// device up, an installer too, writes them. Values that are there stay as they are.
#pragma once

// Under HKEY_LOCAL_MACHINE.
inline constexpr char16_t kInitialSettingsKey[] = u"Software\\Tolka\\7.0";

struct InitialSetting {
    const char16_t* name;
    unsigned value;  // a REG_DWORD
};
inline constexpr InitialSetting kInitialSettings[] = {
    {u"Swipe", 1},   // strokes, on any key
    {u"ExtSym", 1},  // the planes of accented letters
};
