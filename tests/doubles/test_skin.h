// SPDX-License-Identifier: MIT
// The skin for tests that draw and type. Every pixel of its pictures differs from its neighbours, and every
// mask from the others. Its keys are squares of 20 pixels:
//
//      characters                                      digits
//    0   1    2    -    =    Backspace  Escape         7   8   9
//   20   Tab  q    w    [    ;          ,              -   -   -
//   40   Shift  Control  a  c  Enter    umlaut         -   -   -
//   60   language  digits  Space  Left  no action      language  digits
//
// In landscape the only key is q, in the place of 1.
#pragma once

#include "skin_builder.h"

namespace test {

inline constexpr int kKeySide = 20;
inline constexpr int kSkinHeight = 80;
// Added to the colours of the pictures, to tell them apart.
enum class PictureKind { Portrait = 0x10, Landscape = 0x20, Digit = 0x30 };

// Key indices of the skin.
enum Key : WORD {
    KeyDigit7 = 4,
    KeyDigit8 = 5,
    KeyDigit9 = 6,
    KeyShift = 48,
    KeyControl = 49,
    KeyCaps = 50,  // only if a test adds it
    KeyLanguage = 51,
    KeyDigits = 52,
    KeyUmlaut = 53,
    KeyEscape = 54,
    KeyBackspace = 55,
    KeyEnter = 56,
    KeySpace = 57,
    KeyTab = 58,
    KeyLeft = 59,
    KeyNoAction = 63,
    Key1 = 70,
    Key2 = 71,
    KeyHyphen = 80,
    KeyEquals = 81,
    KeyQ = 82,
    KeyW = 83,
    KeyBracket = 92,
    KeyA = 94,
    KeySemicolon = 103,
    KeyC = 107,
    KeyComma = 112,
};

COLORREF PictureColor(PictureKind kind, int x, int y);
// Planes in the order of the slots of a CharsetEntry; 8 is the digit keyboard.
bool MaskBit(int plane, int x, int y);

std::vector<LayoutRecord> CharacterLayout();
std::vector<LayoutRecord> DigitLayout();
// The middle of the key in the first of these layouts that has it.
POINT KeyCenter(WORD key);

// Fits the device's screen in both orientations. The CAPS rectangle is the digit row; language 2 has the
// characters U+0400 + 4 x group + position for the first 50 groups.
SkinBuilder TestSkin();
// The shorter and the longer side of the screen.
SIZE ScreenSides();

}  // namespace test
