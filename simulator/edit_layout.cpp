// SPDX-License-Identifier: MIT
#include "edit_layout.h"

#include <unicode.h>

#include <utility>

EditLayout::EditLayout(std::u16string_view text, int width, Measure measure)
    : m_text(text), m_measure(std::move(measure)) {
    Break(width);
}

void EditLayout::Break(int width) {
    std::size_t start = 0;
    std::size_t afterBlank = 0;  // after the last blank of the line; the line's start if it has none
    int x = 0;
    for (std::size_t i = 0; i < m_text.size();) {
        const std::u16string_view character = unicode::CharacterAt(m_text, i);
        if (character == u"\n") {
            m_lines.push_back({start, i});
            start = afterBlank = ++i;
            x = 0;
            continue;
        }
        const bool blank = character == u" ";
        const int advance = m_measure(character);
        if (!blank && x + advance > width && i > start) {
            const std::size_t end = afterBlank > start ? afterBlank : i;
            m_lines.push_back({start, end});
            start = afterBlank = i = end;
            x = 0;
            continue;
        }
        x += advance;
        i += character.size();
        if (blank) afterBlank = i;
    }
    m_lines.push_back({start, m_text.size()});
}

std::size_t EditLayout::LineOf(std::size_t position) const {
    std::size_t line = m_lines.size() - 1;
    while (line > 0 && m_lines[line].start > position)
        --line;
    return line;
}

int EditLayout::XOf(std::size_t position) const {
    int x = 0;
    for (std::size_t i = m_lines[LineOf(position)].start; i < position;) {
        const std::u16string_view character = unicode::CharacterAt(m_text, i);
        x += m_measure(character);
        i += character.size();
    }
    return x;
}

std::size_t EditLayout::PositionAt(std::size_t line, int x) const {
    const Line& bounds = m_lines[line];
    const bool wrapped = line + 1 < m_lines.size() && m_lines[line + 1].start == bounds.end;
    int left = 0;
    for (std::size_t i = bounds.start; i < bounds.end;) {
        const std::u16string_view character = unicode::CharacterAt(m_text, i);
        const int advance = m_measure(character);
        const bool last = i + character.size() >= bounds.end;
        if (x < left + (advance + 1) / 2 || (last && wrapped)) return i;
        left += advance;
        i += character.size();
    }
    return bounds.end;
}
