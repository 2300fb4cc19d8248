// SPDX-License-Identifier: MIT
// Published values of the platform that the resource script names. The resource compiler comes without an
// SDK; sources take these values from their SDK.
#pragma once

#define WS_POPUP 0x80000000L
#define WS_VISIBLE 0x10000000L
#define WS_CLIPCHILDREN 0x02000000L
#define WS_BORDER 0x00800000L
#define WS_VSCROLL 0x00200000L
#define WS_GROUP 0x00020000L
#define WS_TABSTOP 0x00010000L

#define DS_SETFONT 0x40L
#define DS_CENTER 0x0800L

#define CBS_DROPDOWNLIST 0x0003L
#define CBS_SORT 0x0100L
#define CBS_NOINTEGRALHEIGHT 0x0400L

#define BS_PUSHBUTTON 0x0000L
#define BS_AUTOCHECKBOX 0x0003L
#define BS_CENTER 0x0300L
#define BS_VCENTER 0x0C00L

#define SS_LEFT 0x0000L
#define SS_RIGHT 0x0002L

#define VOS__WINDOWS32 0x00000004L
#define VFT_DLL 0x00000002L
