// SPDX-License-Identifier: MIT
// Block transfers. Each goes row by row through the two loops of raster_operations.h, which work on words: a
// surface of words is used in place, others are converted in spans on the stack. Allocates only to copy a
// bitmap onto itself.
#include "graphics/blit.h"

#include <cstdlib>
#include <cstring>
#include <optional>

#include "device/faults.h"

namespace host {
namespace {

constexpr int kSpan = 256;  // pixels converted at a time
constexpr BYTE kPatternCopy = 0xF0;
constexpr DWORD kNoSource[kSpan] = {};

BYTE ForegroundCode(DWORD rop) { return static_cast<BYTE>(rop >> 16); }
BYTE BackgroundCode(DWORD rop) { return static_cast<BYTE>(rop >> 24); }

// An input of a transfer: the pixel for (x, y) of the target surface is at (x + dx, y + dy).
struct Input {
    const Surface* surface = nullptr;
    std::int64_t dx = 0;
    std::int64_t dy = 0;

    int X(int x) const { return static_cast<int>(x + dx); }
    int Y(int y) const { return static_cast<int>(y + dy); }
};

struct Transfer {
    const Surface& target;
    Input source;  // no surface: the codes use none
    Input mask;    // no surface: the foreground code everywhere
    Rop fore;
    Rop back;
    DWORD bitWords[2] = {0, kColorBits};  // the words for the bits of a 1-bit source
    std::optional<DWORD> key = {};        // colour to monochrome: this colour becomes 1, any other 0

    void DrawRectangle(const RECT& r) const;

private:
    bool IsDirect() const {
        return target.format == PixelFormat::Rgb32 && source.surface &&
               source.surface->format == PixelFormat::Rgb32;
    }
    void DrawSpan(int x, int y, int count) const;
    void PointAtMask(Rows& rows, int x, int y) const;
    void ReadSource(int x, int y, int count, DWORD* words) const;
};

void Transfer::DrawRectangle(const RECT& r) const {
    if (!IsDirect()) {
        for (int y = r.top; y < r.bottom; ++y)
            for (int x = r.left; x < r.right; x += kSpan)
                DrawSpan(x, y, std::min<int>(kSpan, r.right - x));
        return;
    }
    Rows rows{.target = target.Words(r.left, r.top),
              .targetStride = target.stride,
              .source = source.surface->Words(source.X(r.left), source.Y(r.top)),
              .sourceStride = source.surface->stride,
              .width = r.right - r.left,
              .height = r.bottom - r.top};
    PointAtMask(rows, r.left, r.top);
    if (!rows.mask && fore.IsCopy() && !source.surface->shared)
        CopyRows(rows);
    else
        CombineRows(rows, fore, back);
}

void Transfer::DrawSpan(int x, int y, int count) const {
    DWORD sourceWords[kSpan];
    DWORD words[kSpan];
    const bool isDirect = target.format == PixelFormat::Rgb32;
    if (source.surface) ReadSource(x, y, count, sourceWords);
    if (!isDirect) ReadWords(target, x, y, count, kBitsAsWords, words);
    Rows rows{.target = isDirect ? target.Words(x, y) : words,
              .source = source.surface ? sourceWords : kNoSource,
              .width = count,
              .height = 1};
    PointAtMask(rows, x, y);
    CombineRows(rows, fore, back);
    if (!isDirect) WriteWords(target, x, y, count, words);
}

void Transfer::PointAtMask(Rows& rows, int x, int y) const {
    if (!mask.surface) return;
    const int maskX = mask.X(x);
    rows.mask = mask.surface->Row(mask.Y(y)) + maskX / 8;
    rows.maskStride = mask.surface->stride;
    rows.maskX = maskX % 8;
}

void Transfer::ReadSource(int x, int y, int count, DWORD* words) const {
    ReadWords(*source.surface, source.X(x), source.Y(y), count, bitWords, words);
    if (!key) return;
    for (int i = 0; i < count; ++i)
        words[i] = words[i] == *key ? kColorBits : 0;
}

// Between a monochrome and a coloured surface, the contexts' colours give the colours of the bits.
void SetSourceColors(Transfer& transfer, const Context& target, const Context& source) {
    const bool fromBits = source.bitmap->surface.HasBits();
    const bool toBits = target.bitmap->surface.HasBits();
    if (fromBits && !toBits) {
        transfer.bitWords[0] = SwapRedAndBlue(target.attributes.textColor);
        transfer.bitWords[1] = SwapRedAndBlue(target.attributes.backColor);
    }
    if (toBits && !fromBits) transfer.key = SwapRedAndBlue(source.attributes.backColor);
}

// Copies a surface that the transfer also writes, so that it reads the old pixels. Keeps the memory for the
// next time.
Surface CopySurface(const Surface& surface, std::vector<BYTE>& memory) {
    const auto rowBytes = static_cast<std::size_t>(std::abs(surface.stride));
    memory.resize(rowBytes * static_cast<std::size_t>(surface.height));
    Surface copy = surface;
    copy.top = memory.data();
    copy.stride = static_cast<std::ptrdiff_t>(rowBytes);
    for (int y = 0; y < surface.height; ++y)
        std::memcpy(copy.Row(y), surface.Row(y), rowBytes);
    return copy;
}

struct Block {
    int x, y, width, height;
};

Input InputAt(const Context& target, const Block& block, const Surface& surface, POINT origin, int x, int y) {
    return {&surface, std::int64_t{x} + origin.x - block.x - target.origin.x,
            std::int64_t{y} + origin.y - block.y - target.origin.y};
}

void Run(Transfer& transfer, const Context& target, const Block& block) {
    static std::vector<BYTE> sourceMemory;
    static std::vector<BYTE> maskMemory;
    Surface sourceCopy;
    Surface maskCopy;
    RECT area = PlaceArea(target, block.x, block.y, block.width, block.height);
    if (transfer.source.surface) {
        // Pixels of the target for which the source has none stay unchanged.
        const Input& source = transfer.source;
        area =
            Intersect(area, MakeArea(-source.dx, -source.dy, source.surface->width, source.surface->height));
    }
    if (transfer.source.surface == &transfer.target) {
        sourceCopy = CopySurface(transfer.target, sourceMemory);
        transfer.source.surface = &sourceCopy;
    }
    if (transfer.mask.surface == &transfer.target) {
        maskCopy = CopySurface(transfer.target, maskMemory);
        transfer.mask.surface = &maskCopy;
    }
    ForEachVisible(target, area, [&](const RECT& part) { transfer.DrawRectangle(part); });
}

// A mask must have one bit per pixel and cover the block, which is not empty.
bool IsMaskFor(const Surface& mask, const Block& block, int maskX, int maskY) {
    if (mask.HasBits() && maskX >= 0 && maskY >= 0 && mask.width - block.width >= maskX &&
        mask.height - block.height >= maskY)
        return true;
    return Fail(ERROR_INVALID_PARAMETER, false);
}

struct MaskInput {
    HBITMAP handle = nullptr;
    int x = 0;
    int y = 0;
};

bool TransferBlock(HDC targetHandle, const Block& block, HDC sourceHandle, POINT from,
                   const MaskInput& maskInput, BYTE foreCode, BYTE backCode) {
    const Context* target = FindObject<Context>(targetHandle);
    if (!target) return false;
    if (block.width < 0 || block.height < 0) return Fail(ERROR_INVALID_PARAMETER, false);
    const Bitmap* mask = maskInput.handle ? FindObject<Bitmap>(maskInput.handle) : nullptr;
    if (maskInput.handle && !mask) return false;
    const bool needsSource = NeedsSource(foreCode) || (mask && NeedsSource(backCode));
    const Context* source = needsSource ? FindObject<Context>(sourceHandle) : nullptr;
    if (needsSource && !source) return false;
    if (block.width == 0 || block.height == 0) return true;
    if (mask && !IsMaskFor(mask->surface, block, maskInput.x, maskInput.y)) return false;

    const Surface& surface = target->bitmap->surface;
    const DWORD pattern = WordFor(surface, target->brush->color);
    Transfer transfer{.target = surface,
                      .source = {},
                      .mask = {},
                      .fore = MakeRop(foreCode, pattern),
                      .back = MakeRop(backCode, pattern)};
    if (source) {
        transfer.source = InputAt(*target, block, source->bitmap->surface, source->origin, from.x, from.y);
        SetSourceColors(transfer, *target, *source);
    }
    if (mask) transfer.mask = InputAt(*target, block, mask->surface, {}, maskInput.x, maskInput.y);
    Run(transfer, *target, block);
    return true;
}

// The surface pixel of a point of the context; false if it is clipped.
bool FindPixel(const Context& context, int x, int y, POINT& pixel) {
    const RECT area = PlaceArea(context, x, y, 1, 1);
    bool found = !context.onScreen;
    for (const RECT& clip : context.clip.Rectangles())
        found = found || !IsEmpty(Intersect(clip, area));
    pixel = {area.left, area.top};
    return found && !IsEmpty(Intersect(area, context.bitmap->surface.Bounds()));
}

}  // namespace

DWORD WordFor(const Surface& surface, COLORREF color) {
    const DWORD word = SwapRedAndBlue(color);
    return surface.HasBits() ? kBitsAsWords[IsBright(word)] : word;
}

void FillArea(const Context& context, const RECT& area, COLORREF color) {
    const Surface& surface = context.bitmap->surface;
    const Rop fill = MakeRop(kPatternCopy, WordFor(surface, color));
    const Transfer transfer{.target = surface, .source = {}, .mask = {}, .fore = fill, .back = fill};
    ForEachVisible(context, area, [&](const RECT& part) { transfer.DrawRectangle(part); });
}

}  // namespace host

using namespace host;

BOOL WINAPI BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                   DWORD rop) {
    if (CallFails(Call::BitBlt, ERROR_NOT_ENOUGH_MEMORY)) return FALSE;
    const BYTE code = ForegroundCode(rop);
    return TransferBlock(target, {x, y, width, height}, source, {sourceX, sourceY}, {}, code, code);
}

BOOL WINAPI MaskBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                    HBITMAP mask, int maskX, int maskY, DWORD rop) {
    if (CallFails(Call::MaskBlt, ERROR_NOT_ENOUGH_MEMORY)) return FALSE;
    return TransferBlock(target, {x, y, width, height}, source, {sourceX, sourceY}, {mask, maskX, maskY},
                         ForegroundCode(rop), BackgroundCode(rop));
}

int WINAPI FillRect(HDC dc, const RECT* rectangle, HBRUSH handle) {
    if (CallFails(Call::FillRect, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    const Context* context = FindObject<Context>(dc);
    const Brush* brush = context ? FindBrush(handle) : nullptr;
    if (!brush) return 0;
    if (!rectangle) return Fail(ERROR_INVALID_PARAMETER, 0);
    FillArea(*context, PlaceRectangle(*context, *rectangle), brush->color);
    return 1;
}

COLORREF WINAPI GetPixel(HDC dc, int x, int y) {
    const Context* context = FindObject<Context>(dc);
    POINT pixel{};
    if (!context || !FindPixel(*context, x, y, pixel)) return CLR_INVALID;
    const Surface& surface = context->bitmap->surface;
    DWORD word = 0;
    ReadWords(surface, pixel.x, pixel.y, 1, kBitsAsWords, &word);
    return SwapRedAndBlue(word);
}

COLORREF WINAPI SetPixel(HDC dc, int x, int y, COLORREF color) {
    const Context* context = FindObject<Context>(dc);
    POINT pixel{};
    if (!context || !FindPixel(*context, x, y, pixel)) return CLR_INVALID;
    FillArea(*context, {pixel.x, pixel.y, pixel.x + 1, pixel.y + 1}, color);
    return GetPixel(dc, x, y);
}
