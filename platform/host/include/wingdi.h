// SPDX-License-Identifier: MIT
// Graphics: bitmaps, device contexts, block transfers, brushes, fonts and text.
#pragma once

#include <windef.h>

#define RGB(red, green, blue)                                                                             \
    (static_cast<COLORREF>(static_cast<BYTE>(red) | (static_cast<DWORD>(static_cast<BYTE>(green)) << 8) | \
                           (static_cast<DWORD>(static_cast<BYTE>(blue)) << 16)))
#define CLR_INVALID 0xFFFFFFFFu

#define OBJ_BRUSH 2
#define OBJ_FONT 6
#define OBJ_BITMAP 7

#define SRCCOPY 0x00CC0020u
#define NOTSRCCOPY 0x00330008u
#define BLACKNESS 0x00000042u
#define WHITENESS 0x00FF0062u
#define MAKEROP4(fore, back) (static_cast<DWORD>(((static_cast<DWORD>(back) << 8) & 0xFF000000u) | (fore)))

#define BI_RGB 0
#define BI_BITFIELDS 3
#define DIB_RGB_COLORS 0

#define WHITE_BRUSH 0
#define BLACK_BRUSH 4
#define SYSTEM_FONT 13

#define TRANSPARENT 1
#define OPAQUE 2

#define TA_LEFT 0
#define TA_CENTER 6
#define TA_TOP 0
#define TA_BASELINE 24
#define ETO_CLIPPED 4

#define FW_NORMAL 400
#define FW_BOLD 700
#define LF_FACESIZE 32

struct BITMAP {
    LONG bmType;
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes;
    WORD bmPlanes;
    WORD bmBitsPixel;
    void* bmBits;
};

struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

struct BITMAPINFOHEADER {
    DWORD biSize;
    LONG biWidth;
    LONG biHeight;
    WORD biPlanes;
    WORD biBitCount;
    DWORD biCompression;
    DWORD biSizeImage;
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed;
    DWORD biClrImportant;
};

struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1];
};

// GetObjectW fills this for a bitmap made by CreateDIBSection, if the size asked for is this one's.
struct DIBSECTION {
    BITMAP dsBm;
    BITMAPINFOHEADER dsBmih;
    DWORD dsBitfields[3];
    HANDLE dshSection;
    DWORD dsOffset;
};

struct LOGFONTW {
    LONG lfHeight;
    LONG lfWidth;
    LONG lfEscapement;
    LONG lfOrientation;
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    WCHAR lfFaceName[LF_FACESIZE];
};

// Memory contexts start with the stock 1 x 1 monochrome bitmap, which has the same handle in all of them.
HDC WINAPI CreateCompatibleDC(HDC compatible);
BOOL WINAPI DeleteDC(HDC dc);
// Selecting null returns null and changes nothing; so does a bitmap that another context holds.
HGDIOBJ WINAPI SelectObject(HDC dc, HGDIOBJ object);
HGDIOBJ WINAPI GetCurrentObject(HDC dc, UINT type);
HGDIOBJ WINAPI GetStockObject(int index);
int WINAPI GetObjectW(HANDLE object, int size, LPVOID record);
// Fails for a bitmap that is selected into a context, as on the handheld. Succeeds for stock objects, which
// stay.
BOOL WINAPI DeleteObject(HGDIOBJ object);

// One plane; 1 bit per pixel makes a monochrome bitmap, the screen's depth a colour one.
HBITMAP WINAPI CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
HBITMAP WINAPI CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                                DWORD offset);
HBRUSH WINAPI CreateSolidBrush(COLORREF color);
HFONT WINAPI CreateFontIndirectW(const LOGFONTW* font);

BOOL WINAPI BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                   DWORD rop);
// A null mask applies the foreground code everywhere; one that is not monochrome or too small is an error.
BOOL WINAPI MaskBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                    HBITMAP mask, int maskX, int maskY, DWORD rop);
COLORREF WINAPI GetPixel(HDC dc, int x, int y);
COLORREF WINAPI SetPixel(HDC dc, int x, int y, COLORREF color);

COLORREF WINAPI SetTextColor(HDC dc, COLORREF color);
COLORREF WINAPI SetBkColor(HDC dc, COLORREF color);
int WINAPI SetBkMode(HDC dc, int mode);
UINT WINAPI SetTextAlign(HDC dc, UINT align);
// Refuses spacing, and options other than the one above.
BOOL WINAPI ExtTextOutW(HDC dc, int x, int y, UINT options, const RECT* rectangle, LPCWSTR text, UINT length,
                        const INT* spacing);
BOOL WINAPI GetTextExtentPoint32W(HDC dc, LPCWSTR text, int length, SIZE* size);
