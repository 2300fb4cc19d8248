// SPDX-License-Identifier: MIT
// The system colours of the device.
#pragma once

#include <windef.h>

#include <array>

namespace host {

// By system colour index, without the handheld's flag. The look of a handheld: a white page under a dark blue
// title bar, inactive parts grey. The active caption's colour is legible on the inactive one's and on the
// page.
inline constexpr std::array<COLORREF, 25> kColorScheme = {
    0xC8C8C8,  // scroll bar
    0xFFFFFF,  // desktop
    0x8C3A08,  // active caption
    0xD2CDC8,  // inactive caption
    0xFFFFFF,  // menu
    0xFFFFFF,  // window
    0x000000,  // window frame
    0x000000,  // menu text
    0x000000,  // window text
    0xFFFFFF,  // caption text
    0x808080,  // active border
    0xC0C0C0,  // inactive border
    0xB4B4B4,  // application workspace
    0xA0500A,  // highlight
    0xFFFFFF,  // highlighted text
    0xDCDCDC,  // button face
    0x828282,  // button shadow
    0x787878,  // grey text
    0x000000,  // button text
    0x505050,  // inactive caption text
    0xFFFFFF,  // button highlight
    0x000000,  // dark three-dimensional shadow
    0xE6E6E6,  // three-dimensional light
    0x000000,  // information text
    0xE1FFFF,  // information background
};

void ResetSystemColors();

}  // namespace host
