// SPDX-License-Identifier: MIT
// Reads dialog templates of the standard form from a resource, whose bytes are not trusted.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace host {

struct Placement {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

struct ControlTemplate {
    DWORD style = 0;
    DWORD extendedStyle = 0;
    Placement place;
    WORD id = 0;
    ATOM classAtom = 0;        // 0: the class has a name
    std::u16string className;  // empty for an atom
    std::u16string text;

    LPCWSTR ClassArgument() const { return classAtom ? MAKEINTRESOURCEW(classAtom) : className.c_str(); }
};

// Places are in dialog units as read; Scale turns them into pixels.
struct DialogTemplate {
    DWORD style = 0;
    DWORD extendedStyle = 0;
    Placement place;
    std::u16string title;
    int pointSize = 0;  // 0: the system font
    std::u16string faceName;
    std::vector<ControlTemplate> controls;

    // By the average width and the height of the dialog font's characters in pixels.
    void Scale(SIZE baseUnits);
};

// None, and the last error, for a template that is damaged or has the extended form, a menu or its own class.
std::optional<DialogTemplate> ReadDialogTemplate(std::span<const BYTE> bytes);

}  // namespace host
