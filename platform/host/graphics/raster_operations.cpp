// SPDX-License-Identifier: MIT
// The loops handle four pixels at a time, under a mask groups of eight. They use the compilers' vector type,
// so that their speed does not depend on the optimiser.
#include "graphics/raster_operations.h"

#include <array>
#include <cstring>
#include <type_traits>

namespace host {
namespace {

constexpr unsigned kGroup = 8;
constexpr int kLanes = 4;
using Words = DWORD __attribute__((vector_size(kLanes * sizeof(DWORD))));
using Expansion = std::array<std::array<DWORD, kGroup>, 256>;

constexpr Expansion MakeExpansion() {
    Expansion words{};
    for (std::size_t bits = 0; bits < words.size(); ++bits)
        for (std::size_t i = 0; i < kGroup; ++i)
            words[bits][i] = (bits >> (kGroup - 1 - i)) & 1 ? kColorBits : 0;
    return words;
}

alignas(64) constexpr Expansion kExpansion = MakeExpansion();

inline Words Load(const DWORD* row) {
    Words words;
    std::memcpy(&words, row, sizeof words);
    return words;
}

inline void Store(DWORD* row, const Words& words) { std::memcpy(row, &words, sizeof words); }

template <typename Word>
inline Word* Advance(Word* row, std::ptrdiff_t bytes) {
    using Byte = std::conditional_t<std::is_const_v<Word>, const BYTE, BYTE>;
    return reinterpret_cast<Word*>(reinterpret_cast<Byte*>(row) + bytes);
}

template <typename Blend>
inline void BlendRow(DWORD* target, const DWORD* source, int count, Blend blend) {
    for (; count >= kLanes; count -= kLanes) {
        Store(target, blend(Load(target), Load(source)));
        target += kLanes;
        source += kLanes;
    }
    for (int i = 0; i < count; ++i)
        target[i] = blend(target[i], source[i]);
}

// The words for eight mask bits, from bit `shift` of the first byte on. Reads the second byte only if its
// bits are needed.
inline const DWORD* MaskWords(const BYTE* bytes, unsigned shift) {
    if (shift == 0) return kExpansion[bytes[0]].data();
    const unsigned both = static_cast<unsigned>(bytes[0]) << kGroup | bytes[1];
    return kExpansion[(both >> (kGroup - shift)) & 0xFF].data();
}

template <typename Blend>
inline void BlendGroup(DWORD* target, const DWORD* source, const DWORD* words, Blend blend) {
    const Words first = blend(Load(target), Load(source), Load(words));
    const Words second = blend(Load(target + kLanes), Load(source + kLanes), Load(words + kLanes));
    Store(target, first);
    Store(target + kLanes, second);
}

// If the target is not read, pixels may be drawn twice: the last group of a row can then end with the row.
enum class Target { Read, Ignored };

// The row's first pixel has bit `shift` of the first mask byte.
template <Target use, typename Blend>
[[gnu::always_inline]] inline void BlendMaskedRow(DWORD* target, const DWORD* source, unsigned count,
                                                  const BYTE* mask, unsigned shift, Blend blend) {
    const bool hasGroup = count >= kGroup;
    for (; count >= kGroup; count -= kGroup) {
        BlendGroup(target, source, MaskWords(mask++, shift), blend);
        target += kGroup;
        source += kGroup;
    }
    if (count == 0) return;
    if (use == Target::Ignored && hasGroup) {
        const unsigned back = kGroup - count;
        const unsigned bit = shift + count;  // in the previous byte
        BlendGroup(target - back, source - back, MaskWords(mask - 1 + bit / kGroup, bit % kGroup), blend);
        return;
    }
    for (unsigned x = 0; x < count; ++x) {
        const unsigned bit = x + shift;
        const DWORD word = (mask[bit / kGroup] << (bit % kGroup)) & 0x80 ? kColorBits : 0;
        target[x] = blend(target[x], source[x], word);
    }
}

// Calls draw(target row, source row, row number) for each row.
template <typename Draw>
inline void ForEachRow(const Rows rows, Draw draw) {
    for (int y = 0; y < rows.height; ++y)
        draw(Advance(rows.target, y * rows.targetStride), Advance(rows.source, y * rows.sourceStride), y);
}

// Sets each pixel to blend(target, source), where the arguments are words or vectors of words.
template <typename Blend>
void BlendRows(const Rows& rows, Blend blend) {
    const int width = rows.width;
    ForEachRow(rows,
               [=](DWORD* target, const DWORD* source, int) { BlendRow(target, source, width, blend); });
}

// The same under the mask, with its words as a third argument. A mask that begins at a byte has its own loop:
// painting the whole keyboard uses it.
template <Target use, typename Blend>
void BlendMaskedRows(const Rows& rows, Blend blend) {
    const auto width = static_cast<unsigned>(rows.width);
    const auto shift = static_cast<unsigned>(rows.maskX);
    const BYTE* mask = rows.mask;
    const std::ptrdiff_t stride = rows.maskStride;
    if (shift == 0) {
        ForEachRow(
            rows, [=](DWORD* target, const DWORD* source,
                      int y) { BlendMaskedRow<use>(target, source, width, mask + y * stride, 0, blend); });
    } else {
        ForEachRow(
            rows,
            [=](DWORD* target, const DWORD* source, int y) {
                BlendMaskedRow<use>(target, source, width, mask + y * stride, shift, blend);
            });
    }
}

void CombineMasked(const Rows& rows, const Rop& fore, const Rop& back) {
    if (fore.ReadsTarget() || back.ReadsTarget()) {
        BlendMaskedRows<Target::Read>(
            rows, [fore, back](auto t, auto s,
                               auto m) { return (fore.Apply(s, t) & m) | (back.Apply(s, t) & ~m); });
    } else if (fore.source == kColorBits && back.source == 0 && fore.constant == back.constant) {
        // The picture over black, or its negative over white: what a keyboard draws.
        const DWORD color = back.constant;
        BlendMaskedRows<Target::Ignored>(rows, [color](auto, auto s, auto m) { return (s & m) ^ color; });
    } else {
        BlendMaskedRows<Target::Ignored>(
            rows,
            [fore, back](auto, auto s, auto m) {
                return ((fore.constant ^ (s & fore.source)) & m) | ((back.constant ^ (s & back.source)) & ~m);
            });
    }
}

}  // namespace

Rop MakeRop(BYTE code, DWORD pattern) {
    // All ones if the code has this bit.
    const auto spread = [code](int index) { return DWORD{0} - ((DWORD{code} >> index) & 1); };
    const auto result = [&](int index) {
        return ((spread(index) & ~pattern) | (spread(4 + index) & pattern)) & kColorBits;
    };
    const DWORD none = result(0);
    const DWORD target = none ^ result(1);
    const DWORD source = none ^ result(2);
    return {none, source, target, none ^ target ^ source ^ result(3)};
}

void CombineRows(const Rows& rows, const Rop& fore, const Rop& back) {
    if (rows.mask)
        CombineMasked(rows, fore, back);
    else if (fore.ReadsTarget())
        BlendRows(rows, [fore](auto t, auto s) { return fore.Apply(s, t); });
    else
        BlendRows(
            rows, [fore](auto, auto s) { return fore.constant ^ (s & fore.source); });
}

void CopyRows(const Rows& rows) {
    const std::size_t bytes = static_cast<std::size_t>(rows.width) * sizeof(DWORD);
    ForEachRow(rows,
               [bytes](DWORD* target, const DWORD* source, int) { std::memcpy(target, source, bytes); });
}

}  // namespace host
