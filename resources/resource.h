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
