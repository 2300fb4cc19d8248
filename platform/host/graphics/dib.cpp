// SPDX-License-Identifier: MIT
// Reads device-independent bitmaps as they are in resources. The bytes may come from a damaged or malicious
// file: every size is checked against the data before anything is read or allocated.
#include <array>
#include <bit>
#include <cstring>

#include "device/faults.h"
#include "graphics/graphics.h"
#include "graphics/objects.h"

namespace host {
namespace {

constexpr std::uint32_t kCoreHeaderSize = 12;
constexpr std::uint32_t kMasksEnd =
    sizeof(BITMAPINFOHEADER) + 3 * sizeof(DWORD);  // headers of this size contain them
constexpr int kMaxColors = 256;

template <typename Value>
Value Read(const BYTE* bytes) {
    Value value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// One channel of a pixel of 16 or 32 bits.
struct Channel {
    DWORD mask = 0;

    DWORD Of(DWORD pixel) const {
        if (mask == 0) return 0;
        const int shift = std::countr_zero(mask);
        const std::uint64_t most = mask >> shift;
        return static_cast<DWORD>((((pixel & mask) >> shift) * std::uint64_t{255} + most / 2) / most);
    }
};

struct Dib {
    int width = 0;
    int height = 0;
    RowOrder order = RowOrder::BottomUp;
    int bits = 0;
    int colorCount = 0;
    std::array<DWORD, kMaxColors> colors{};  // words; black where the table is too short
    std::array<Channel, 3> channels{};       // red, green, blue
    const BYTE* rows = nullptr;
    std::size_t stride = 0;

    bool IsMono() const { return bits == 1 && colorCount == 2 && colors[0] == 0 && colors[1] == kColorBits; }
    const BYTE* Row(int y) const {
        const int stored = order == RowOrder::TopDown ? y : height - 1 - y;
        return rows + static_cast<std::size_t>(stored) * stride;
    }
};

// Reads the header and locates the parts; false if the header or the size is wrong.
class DibReader {
public:
    DibReader(const BYTE* bytes, std::size_t size) : m_bytes(bytes), m_size(size) {}

    bool Read(Dib& dib) {
        if (m_size < sizeof(DWORD)) return false;
        m_headerSize = host::Read<DWORD>(m_bytes);
        if (m_headerSize > m_size) return false;
        const bool isCore = m_headerSize == kCoreHeaderSize;
        if (!isCore && m_headerSize < sizeof(BITMAPINFOHEADER)) return false;
        if (!(isCore ? ReadCoreHeader(dib) : ReadInfoHeader(dib))) return false;
        if (dib.width <= 0 || dib.width > kMaxSide || dib.height <= 0 || dib.height > kMaxSide) return false;
        return ReadMasks(dib) && ReadColors(dib, isCore ? 3 : 4) && FindRows(dib);
    }

private:
    bool ReadCoreHeader(Dib& dib) {
        dib.width = host::Read<WORD>(m_bytes + 4);
        dib.height = host::Read<WORD>(m_bytes + 6);
        dib.bits = host::Read<WORD>(m_bytes + 10);
        return host::Read<WORD>(m_bytes + 8) == 1;
    }

    bool ReadInfoHeader(Dib& dib) {
        const auto header = host::Read<BITMAPINFOHEADER>(m_bytes);
        if (header.biPlanes != 1 || header.biHeight < -kMaxSide) return false;
        dib.width = header.biWidth;
        dib.height = header.biHeight < 0 ? -header.biHeight : header.biHeight;
        dib.order = header.biHeight < 0 ? RowOrder::TopDown : RowOrder::BottomUp;
        dib.bits = header.biBitCount;
        m_compression = header.biCompression;
        m_colorsUsed = header.biClrUsed;
        return true;
    }

    // Also checks depth and compression, and finds the start of the colours.
    bool ReadMasks(Dib& dib) {
        m_position = m_headerSize;
        const bool hasChannels = dib.bits == 16 || dib.bits == 32;
        if (m_compression == BI_BITFIELDS && hasChannels) {
            const bool inHeader = m_headerSize >= kMasksEnd;
            const std::size_t masks = inHeader ? sizeof(BITMAPINFOHEADER) : m_position;
            if (masks + 3 * sizeof(DWORD) > m_size) return false;
            for (std::size_t i = 0; i < 3; ++i)
                dib.channels[i].mask = host::Read<DWORD>(m_bytes + masks + i * sizeof(DWORD));
            if (!inHeader) m_position += 3 * sizeof(DWORD);
            return true;
        }
        if (m_compression != BI_RGB) return false;
        if (dib.bits == 16) dib.channels = {Channel{0x7C00}, Channel{0x03E0}, Channel{0x001F}};
        if (dib.bits == 32) dib.channels = {Channel{0xFF0000}, Channel{0x00FF00}, Channel{0x0000FF}};
        return hasChannels || dib.bits == 1 || dib.bits == 4 || dib.bits == 8 || dib.bits == 24;
    }

    bool ReadColors(Dib& dib, std::size_t entrySize) {
        const std::size_t most = dib.bits <= 8 ? std::size_t{1} << dib.bits : 0;
        const std::size_t count = m_colorsUsed == 0 ? most : m_colorsUsed;
        // Deeper pixels need no table but may have one, a hint for palette screens.
        if (count > (m_size - m_position) / entrySize || (most != 0 && count > most)) return false;
        dib.colorCount = static_cast<int>(most == 0 ? 0 : count);
        for (std::size_t i = 0; i < static_cast<std::size_t>(dib.colorCount); ++i) {
            const BYTE* color = m_bytes + m_position + i * entrySize;
            dib.colors[i] = color[0] | (DWORD{color[1]} << 8) | (DWORD{color[2]} << 16);
        }
        m_position += count * entrySize;
        return true;
    }

    bool FindRows(Dib& dib) const {
        const auto rowBits = static_cast<std::size_t>(dib.width) * static_cast<std::size_t>(dib.bits);
        dib.stride = (rowBits + 31) / 32 * 4;
        dib.rows = m_bytes + m_position;
        return dib.stride * static_cast<std::size_t>(dib.height) <= m_size - m_position;
    }

    const BYTE* m_bytes;
    std::size_t m_size;
    std::size_t m_headerSize = 0;
    std::size_t m_position = 0;  // never beyond m_size
    DWORD m_compression = BI_RGB;
    DWORD m_colorsUsed = 0;
};

DWORD PixelOf(const Dib& dib, const BYTE* row, int x) {
    const auto index = static_cast<std::size_t>(x);
    const auto wordOf = [&](DWORD pixel) {
        const auto& [red, green, blue] = dib.channels;
        return (red.Of(pixel) << 16) | (green.Of(pixel) << 8) | blue.Of(pixel);
    };
    switch (dib.bits) {
        case 1:
            return dib.colors[(row[index / 8] >> (7 - index % 8)) & 1];
        case 4:
            return dib.colors[index % 2 == 0 ? row[index / 2] >> 4 : row[index / 2] & 0x0F];
        case 8:
            return dib.colors[row[index]];
        case 16:
            return wordOf(Read<WORD>(row + 2 * index));
        case 24:
            return row[3 * index] | (DWORD{row[3 * index + 1]} << 8) | (DWORD{row[3 * index + 2]} << 16);
        default:
            return wordOf(Read<DWORD>(row + 4 * index));
    }
}

void CopyPixels(const Dib& dib, const Surface& surface) {
    const bool isMono = surface.format == PixelFormat::Mono;
    for (int y = 0; y < dib.height; ++y) {
        const BYTE* row = dib.Row(y);
        if (isMono) {
            std::memcpy(surface.Row(y), row, static_cast<std::size_t>(surface.width + 7) / 8);
            continue;
        }
        DWORD* words = surface.Words(0, y);
        for (int x = 0; x < dib.width; ++x)
            words[x] = PixelOf(dib, row, x);
    }
}

}  // namespace

HBITMAP CreateBitmapFromDib(const BYTE* bytes, std::size_t size) {
    Dib dib;
    if (!bytes || !DibReader(bytes, size).Read(dib)) return Fail(ERROR_INVALID_PARAMETER, nullptr);
    auto bitmap = MakeBitmap(dib.width, dib.height, dib.IsMono() ? PixelFormat::Mono : PixelFormat::Rgb32,
                             RowOrder::TopDown, sizeof(WORD));
    if (!bitmap) return nullptr;
    CopyPixels(dib, bitmap->surface);
    return HandleOf<HBITMAP>(AddObject(std::move(bitmap)));
}

}  // namespace host
