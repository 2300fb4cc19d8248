// SPDX-License-Identifier: MIT
#pragma once

// A block has the strings of 16 numbers: these are on both sides of a boundary.
#define ID_FIRST_STRING 96
#define ID_LAST_OF_BLOCK 111
#define ID_FIRST_OF_BLOCK 112
#define ID_ABSENT_STRING 100
#define ID_NUMBERED 7
#define ID_DIALOG 8
#define ID_ABSENT_DIALOG 9
