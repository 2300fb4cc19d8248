// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <filesystem>
#include <vector>

// Pixels in rows from the top, each 0xRRGGBB.
struct PanelPicture {
    LONG width = 0;
    LONG height = 0;
    std::vector<DWORD> pixels;
};

// The number of different pixels; -1 if the sizes differ.
int CountDifferences(const PanelPicture& first, const PanelPicture& second);

// The picture of the window's client area, after all waiting paint messages.
PanelPicture PictureOf(HWND window);

// Binary PPM files with 8 bits per colour. Reading returns an empty picture for any other file.
PanelPicture ReadPicture(const std::filesystem::path& path);
void WritePicture(const PanelPicture& picture, const std::filesystem::path& path);
