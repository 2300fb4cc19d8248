// SPDX-License-Identifier: MIT
#include "panel_picture.h"

#include <fstream>

#include "picture.h"

int CountDifferences(const PanelPicture& first, const PanelPicture& second) {
    if (first.width != second.width || first.height != second.height) return -1;
    int count = 0;
    for (std::size_t i = 0; i < first.pixels.size(); ++i)
        count += first.pixels[i] != second.pixels[i];
    return count;
}

PanelPicture PictureOf(HWND window) {
    UpdateWindow(window);
    RECT area{};
    GetClientRect(window, &area);
    const test::Picture canvas(test::MakeSection(32, area.right, -area.bottom));
    const HDC dc = GetDC(window);
    BitBlt(canvas, 0, 0, area.right, area.bottom, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    GdiFlush();
    PanelPicture picture{area.right, area.bottom, {}};
    const auto* pixels = reinterpret_cast<const DWORD*>(canvas.Bits());
    for (LONG i = 0; i < area.right * area.bottom; ++i)
        picture.pixels.push_back(pixels[i] & 0xFFFFFF);
    return picture;
}

PanelPicture ReadPicture(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    int greatest = 0;
    PanelPicture picture;
    file >> kind >> picture.width >> picture.height >> greatest;
    file.get();
    if (kind != "P6" || greatest != 255 || picture.width > 4096 || picture.height > 4096) return {};
    for (int i = 0; i < picture.width * picture.height && file; ++i) {
        unsigned char rgb[3];
        file.read(reinterpret_cast<char*>(rgb), 3);
        picture.pixels.push_back(static_cast<DWORD>(rgb[0] << 16 | rgb[1] << 8 | rgb[2]));
    }
    return file ? picture : PanelPicture{};
}

void WritePicture(const PanelPicture& picture, const std::filesystem::path& path) {
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << picture.width << ' ' << picture.height << "\n255\n";
    for (const DWORD pixel : picture.pixels)
        for (const int shift : {16, 8, 0})
            file.put(static_cast<char>(pixel >> shift & 0xFF));
}
