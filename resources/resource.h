// SPDX-License-Identifier: MIT
// Identifiers of the library's resources, for the resource compiler and the sources.
#pragma once

#define IDR_KEYBINPUT 101

#define IDS_PROJECT_NAME 100
#define IDS_TITLE 102
#define IDS_SKINS_NOT_FOUND 103
#define IDS_CONFIRM_DELETE 104
#define IDS_LAST_SKIN 105
#define IDS_WRONG_RESOLUTION 106
#define IDS_ABOUT_FORMAT 107

#define IDD_OPTIONS 201

#define IDB_BUTTON_NARROW 202
#define IDB_BUTTON_WIDE 203

#define IDC_SKIN_COMBO 202
#define IDC_EXTSYM 211
#define IDC_SWIPE 212
#define IDC_LINE 213
#define IDC_SET_DEFAULT 214
#define IDC_SKIN_LABEL 215
#define IDC_ABOUT 217
#define IDC_ADD_SKIN 219
#define IDC_DELETE_SKIN 221
