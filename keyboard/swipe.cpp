// SPDX-License-Identifier: MIT
// Strokes: a pen that goes down on a key and up elsewhere.
//
//   right   Space               up     the key in its other case; from the language key the umlaut plane
//   left    Backspace           down   Enter
#include <cstdint>
#include <cstdlib>

#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"

namespace {

constexpr std::int64_t kStrokeDistance = 15;  // pixels that a stroke must exceed
constexpr DWORD kTypeThenStroke = 2;

}  // namespace

// A stroke too short to act still releases the one-shot statuses.
void CKeyboard::FinishStroke(CWindow* window) {
    if (m_nPressedIndex == kNoKey || static_cast<std::size_t>(m_nPressedIndex) >= m_Charset.size()) return;
    const CharsetEntry record = m_Charset[static_cast<std::size_t>(m_nPressedIndex)];
    const WCHAR code = record.m_Slots[0];
    if (m_dwSwipe == 0 && !(code == kLanguageCode && m_bExtSym)) return;
    if (m_dwSwipe == kTypeThenStroke) TypeKey(record, window);
    Swipe(m_ptSwipeBegin.x, m_ptSwipeBegin.y, m_ptSwipeEnd.x, m_ptSwipeEnd.y, m_pCallback, window, record);
    if (!IsStatusKeyEntry(code)) ResetKbStatus(window);
}

void CKeyboard::Swipe(LONG x1, LONG y1, LONG x2, LONG y2, IIMCallback* callback, CWindow* window,
                      CharsetEntry record) {
    if (!callback || !window) return;
    const std::int64_t right = std::int64_t{x2} - x1;  // 64 bits hold the distance of any two points
    const std::int64_t down = std::int64_t{y2} - y1;
    if (right > kStrokeDistance && right > std::abs(down)) {
        if (m_dwSwipe) callback->SendVirtualKey(VK_SPACE, 0);
    } else if (-right > kStrokeDistance && -right > std::abs(down)) {
        if (m_dwSwipe) callback->SendVirtualKey(VK_BACK, 0);
    } else if (-down > kStrokeDistance) {
        if (record.m_Slots[0] == kLanguageCode && m_bExtSym)
            SetKbStatus(&kUmlautCode, window);
        else if (m_dwSwipe)
            SendKeyToApp(record, true);
    } else if (down > kStrokeDistance && m_dwSwipe) {
        callback->SendVirtualKey(VK_RETURN, 0);
    }
}
