// SPDX-License-Identifier: MIT
#include "controls/painter.h"

#include <unicode.h>

#include <algorithm>

namespace host {

namespace {

constexpr int kUsualLineHeight = 13;  // of the 8-point font on the smallest screen
constexpr std::u16string_view kBlanks = u" \t";

std::u16string_view WithoutTrailingBlanks(std::u16string_view text) {
    const std::size_t last = text.find_last_not_of(kBlanks);
    return text.substr(0, last == text.npos ? 0 : last + 1);
}

}  // namespace

RECT Shrink(const RECT& r, int pixels) {
    return {r.left + pixels, r.top + pixels, r.right - pixels, r.bottom - pixels};
}

FontMetrics::FontMetrics(HFONT font) {
    const PlatformScope scope;
    m_dc = GetDC(nullptr);
    m_previous = font ? SelectObject(m_dc, font) : nullptr;
    SIZE size{};
    m_lineHeight = GetTextExtentPoint32W(m_dc, u"X", 1, &size) ? size.cy : kUsualLineHeight;
}

FontMetrics::~FontMetrics() {
    if (m_previous) SelectObject(m_dc, m_previous);
    ReleaseDC(nullptr, m_dc);
}

int FontMetrics::Width(std::u16string_view text) const {
    SIZE size{};
    GetTextExtentPoint32W(m_dc, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

int FontMetrics::Unit() const {
    return std::max(1, (m_lineHeight + kUsualLineHeight / 2) / kUsualLineHeight);
}

std::vector<std::u16string_view> FontMetrics::Wrap(std::u16string_view text, int width) const {
    std::vector<std::u16string_view> lines;
    while (true) {
        const std::size_t end = text.find(u'\n');
        std::u16string_view paragraph = text.substr(0, end);
        if (paragraph.ends_with(u'\r')) paragraph.remove_suffix(1);
        WrapParagraph(paragraph, width, lines);
        if (end == text.npos) return lines;
        text.remove_prefix(end + 1);
    }
}

// Measures each character once, however long the text. A line holds at least one character.
void FontMetrics::WrapParagraph(std::u16string_view paragraph, int width,
                                std::vector<std::u16string_view>& lines) const {
    std::size_t start = 0;
    std::size_t nextWord =
        0;  // start of the last word that begins on this line; `start` if that is the first
    int lineWidth = 0;
    int wordWidth = 0;  // from there on
    for (std::size_t at = 0; at < paragraph.size();) {
        const std::u16string_view character = unicode::CharacterAt(paragraph, at);
        const bool blank = kBlanks.find(paragraph[at]) != kBlanks.npos;
        const int advance = Width(character);
        if (!blank && at > start && lineWidth + advance > width) {
            const bool atWord = nextWord > start;
            const std::size_t end = atWord ? nextWord : at;
            lines.push_back(WithoutTrailingBlanks(paragraph.substr(start, end - start)));
            lineWidth = atWord ? wordWidth : 0;
            start = nextWord = end;
        }
        lineWidth += advance;
        wordWidth += advance;
        at += character.size();
        if (!blank) continue;
        nextWord = at;
        wordWidth = 0;
    }
    lines.push_back(WithoutTrailingBlanks(paragraph.substr(start)));
}

ControlPainter::ControlPainter(HWND window, HFONT font)
    : m_metrics(font), m_window(window), m_dc(BeginPaint(window, &m_paint)) {
    GetClientRect(window, &m_client);
    if (font) m_previousFont = SelectObject(m_dc, font);
    SetBkMode(m_dc, TRANSPARENT);
}

// Deselects the font, which may be deleted before the context is used again.
ControlPainter::~ControlPainter() {
    if (m_previousFont) SelectObject(m_dc, m_previousFont);
    if (m_dc) EndPaint(m_window, &m_paint);
}

void ControlPainter::Fill(const RECT& area, int color) { Fill(area, GetSysColorBrush(color)); }

void ControlPainter::Fill(const RECT& area, HBRUSH brush) { FillRect(m_dc, &area, brush); }

void ControlPainter::Frame(const RECT& area, int color, int units) {
    const int thickness = units * m_metrics.Unit();
    const LONG top = std::min(area.top + thickness, area.bottom);
    const LONG bottom = std::max(area.bottom - thickness, top);
    Fill({area.left, area.top, area.right, top}, color);
    Fill({area.left, bottom, area.right, area.bottom}, color);
    Fill({area.left, top, std::min(area.left + thickness, area.right), bottom}, color);
    Fill({std::max(area.right - thickness, area.left), top, area.right, bottom}, color);
}

void ControlPainter::DottedFrame(const RECT& area, int color) {
    const COLORREF ink = GetSysColor(color);
    const auto dot = [&](LONG x, LONG y) {
        if ((x + y) % 2 == 0) SetPixel(m_dc, x, y, ink);
    };
    for (LONG x = area.left; x < area.right; ++x) {
        dot(x, area.top);
        dot(x, area.bottom - 1);
    }
    for (LONG y = area.top; y < area.bottom; ++y) {
        dot(area.left, y);
        dot(area.right - 1, y);
    }
}

void ControlPainter::Line(std::u16string_view text, const RECT& area, UINT format, int color) {
    SetTextColor(m_dc, GetSysColor(color));
    RECT place = area;
    DrawTextW(m_dc, text.data(), static_cast<int>(text.size()), &place, format | DT_SINGLELINE | DT_NOPREFIX);
}

void ControlPainter::Arrow(const RECT& area, Direction direction, int color) {
    const LONG rows = std::max<LONG>(std::min(area.right - area.left, area.bottom - area.top) / 4, 1);
    const LONG middle = (area.left + area.right - 1) / 2;
    const LONG top = (area.top + area.bottom - rows) / 2;
    for (LONG row = 0; row < rows; ++row) {
        const LONG reach = direction == Direction::Up ? row : rows - 1 - row;
        Fill({middle - reach, top + row, middle + reach + 1, top + row + 1}, color);
    }
}

// A short stroke down and a longer one up, as thick as three thin lines.
void ControlPainter::CheckMark(const RECT& area, int color) {
    const LONG size = std::min(area.right - area.left, area.bottom - area.top);
    const LONG turn = size / 3;
    const LONG thickness = std::max<LONG>(size / 4, 2);
    for (LONG x = 0; x < size; ++x) {
        const LONG depth = x <= turn ? x : 2 * turn - x;  // beyond the turn it goes up
        const LONG top = area.top + (size - thickness) / 2 + depth;
        const RECT column{area.left + x, std::max(top, area.top), area.left + x + 1,
                          std::min(top + thickness, area.bottom)};
        if (column.top < column.bottom) Fill(column, color);
    }
}

}  // namespace host
