// SPDX-License-Identifier: MIT
// Pictures to draw on and a naive model of raster operations, for the tests of graphics.
#pragma once

#include <windows.h>

#include <random>
#include <vector>

#include "framework/handles.h"

namespace test {

class Random {
public:
    int Below(int end) { return static_cast<int>(m_engine() % static_cast<unsigned>(end)); }
    COLORREF Color() { return static_cast<COLORREF>(m_engine() & 0xFFFFFF); }

private:
    std::mt19937 m_engine{20240501};
};

// The result of a raster operation on a pattern, a source and a target pixel, computed bit by bit.
inline COLORREF Combine(BYTE code, COLORREF pattern, COLORREF source, COLORREF target) {
    COLORREF result = 0;
    for (int bit = 0; bit < 24; ++bit) {
        const unsigned index = ((pattern >> bit) & 1) * 4 + ((source >> bit) & 1) * 2 + ((target >> bit) & 1);
        result |= static_cast<COLORREF>((code >> index) & 1) << bit;
    }
    return result;
}

// A device-independent section. With a negative height, rows are from the top.
inline HBITMAP MakeSection(WORD bits, int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = bits;
    info.bmiHeader.biCompression = BI_RGB;
    void* memory = nullptr;
    return CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
}

// A bitmap in its own memory context.
class Picture {
public:
    explicit Picture(HBITMAP bitmap) : m_dc(CreateCompatibleDC(nullptr)), m_bitmap(bitmap) {
        Select();
        BITMAP record{};
        GetObjectW(bitmap, sizeof record, &record);
        m_width = record.bmWidth;
        m_height = record.bmHeight;
        m_bits = static_cast<BYTE*>(record.bmBits);
    }
    Picture(HBITMAP bitmap, const std::vector<COLORREF>& pixels) : Picture(bitmap) { SetPixels(pixels); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() { Release(); }

    // A bitmap is in one context at a time: between these two calls others can select it.
    void Release() { SelectObject(*this, m_original); }
    void Select() { m_original = SelectObject(*this, Bitmap()); }

    operator HDC() const { return m_dc.Get(); }
    HBITMAP Bitmap() const { return m_bitmap.Get(); }
    SIZE Size() const { return {m_width, m_height}; }
    BYTE* Bits() const { return m_bits; }  // of a section

    // Every pixel, in rows from the top.
    std::vector<COLORREF> Pixels() const {
        std::vector<COLORREF> pixels;
        for (int i = 0; i < m_width * m_height; ++i)
            pixels.push_back(GetPixel(*this, i % m_width, i / m_width));
        return pixels;
    }

    void SetPixels(const std::vector<COLORREF>& pixels) {
        for (int i = 0; i < m_width * m_height; ++i)
            SetPixel(*this, i % m_width, i / m_width, pixels[static_cast<std::size_t>(i)]);
    }

    void Scatter(Random& random) {
        for (int i = 0; i < m_width * m_height; ++i) {
            // Black or white in half of the cases, so that monochrome pictures get both.
            const COLORREF color = random.Below(2)   ? random.Color()
                                   : random.Below(2) ? RGB(255, 255, 255)
                                                     : 0;
            SetPixel(*this, i % m_width, i / m_width, color);
        }
    }

    void Fill(COLORREF color) {
        const RECT all{0, 0, m_width, m_height};
        const CBrushOwner brush(CreateSolidBrush(color));
        FillRect(*this, &all, brush.Get());
    }

    // The rectangle around all pixels that are not of this colour; empty when there is none.
    RECT InkOn(COLORREF paper) const {
        RECT ink{m_width, m_height, 0, 0};
        for (int y = 0; y < m_height; ++y) {
            for (int x = 0; x < m_width; ++x) {
                if (GetPixel(*this, x, y) == paper) continue;
                if (x < ink.left) ink.left = x;
                if (y < ink.top) ink.top = y;
                if (x >= ink.right) ink.right = x + 1;
                if (y >= ink.bottom) ink.bottom = y + 1;
            }
        }
        return ink;
    }

private:
    CMemoryDC m_dc;
    CBitmapOwner m_bitmap;
    HGDIOBJ m_original;
    int m_width;
    int m_height;
    BYTE* m_bits;
};

}  // namespace test
