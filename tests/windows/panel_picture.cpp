// SPDX-License-Identifier: MIT
#include "panel_picture.h"

#include <fstream>

namespace {

PanelPicture Copy(HDC source, SIZE size) {
    const int width = static_cast<int>(size.cx);
    const int height = static_cast<int>(size.cy);
    const test::Picture canvas(test::MakeSection(32, width, -height));
    BitBlt(canvas, 0, 0, width, height, source, 0, 0, SRCCOPY);
    GdiFlush();
    PanelPicture picture{width, height, {}};
    const auto* pixels = reinterpret_cast<const DWORD*>(canvas.Bits());
    for (int i = 0; i < width * height; ++i)
        picture.pixels.push_back(pixels[i] & 0xFFFFFF);
    return picture;
}

}  // namespace

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
    const HDC dc = GetDC(window);
    const PanelPicture picture = Copy(dc, {area.right, area.bottom});
    ReleaseDC(window, dc);
    return picture;
}

PanelPicture PictureOf(const test::Picture& picture) { return Copy(picture, picture.Size()); }

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
    for (const DWORD pixel : picture.pixels) {
        for (const int shift : {16, 8, 0})
            file.put(static_cast<char>(pixel >> shift & 0xFF));
    }
}
