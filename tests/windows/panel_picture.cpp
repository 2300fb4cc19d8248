// SPDX-License-Identifier: MIT
#include "panel_picture.h"

#include <fstream>

namespace {

// A bitmap in a memory context, 32 bits per pixel, rows from the top.
class Canvas {
public:
    Canvas(int width, int height) : m_size{width, height} {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        m_bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        m_bits = static_cast<const DWORD*>(bits);
        m_former = SelectObject(m_dc, m_bitmap);
    }
    ~Canvas() {
        SelectObject(m_dc, m_former);
        DeleteObject(m_bitmap);
        DeleteDC(m_dc);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    PanelPicture CopyFrom(HDC source) const {
        BitBlt(m_dc, 0, 0, m_size.cx, m_size.cy, source, 0, 0, SRCCOPY);
        GdiFlush();
        PanelPicture picture{static_cast<int>(m_size.cx), static_cast<int>(m_size.cy), {}};
        for (int i = 0; i < picture.width * picture.height; ++i)
            picture.pixels.push_back(m_bits[i] & 0xFFFFFF);
        return picture;
    }

private:
    SIZE m_size;
    HDC m_dc = CreateCompatibleDC(nullptr);
    HBITMAP m_bitmap = nullptr;
    const DWORD* m_bits = nullptr;
    HGDIOBJ m_former = nullptr;
};

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
    const PanelPicture picture =
        Canvas(static_cast<int>(area.right), static_cast<int>(area.bottom)).CopyFrom(dc);
    ReleaseDC(window, dc);
    return picture;
}

PanelPicture PictureOf(HBITMAP bitmap) {
    BITMAP record{};
    GetObjectW(bitmap, sizeof record, &record);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(dc, bitmap);
    const PanelPicture picture =
        Canvas(static_cast<int>(record.bmWidth), static_cast<int>(record.bmHeight)).CopyFrom(dc);
    SelectObject(dc, former);
    DeleteDC(dc);
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
    for (const DWORD pixel : picture.pixels) {
        for (const int shift : {16, 8, 0})
            file.put(static_cast<char>(pixel >> shift & 0xFF));
    }
}
