// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <filesystem>
#include <vector>

#include "picture.h"

// Pixels in rows from the top, each 0xRRGGBB.
struct PanelPicture {
    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;
};

// Pixels that differ; -1 when the sizes do.
int CountDifferences(const PanelPicture& first, const PanelPicture& second);

// What the window's client area shows; messages that are waiting to draw are dealt with before.
PanelPicture PictureOf(HWND window);
PanelPicture PictureOf(const test::Picture& picture);

// A binary PPM file of 8 bits per colour. Reading gives an empty picture for a file that is none.
PanelPicture ReadPicture(const std::filesystem::path& path);
void WritePicture(const PanelPicture& picture, const std::filesystem::path& path);
