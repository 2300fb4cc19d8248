// SPDX-License-Identifier: MIT
// The lines in which an edit field of some width shows its text.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

class EditLayout {
public:
    // The width of one character (one or two UTF-16 units) in pixels.
    using Measure = std::function<int(std::u16string_view)>;

    struct Line {
        std::size_t start;
        std::size_t end;  // without the line break
    };

    // Breaks at "\n", and at the width after the last blank; a blank never begins a line, and a word wider
    // than the field is split. The text must outlive the layout.
    EditLayout(std::u16string_view text, int width, Measure measure);

    const std::vector<Line>& Lines() const { return m_lines; }  // at least one
    std::size_t LineOf(std::size_t position) const;
    // The distance from the left edge of its line.
    int XOf(std::size_t position) const;
    // The position in this line that is nearest to x. At the end of a wrapped line, that is before the last
    // character.
    std::size_t PositionAt(std::size_t line, int x) const;

private:
    void Break(int width);

    std::u16string_view m_text;
    const Measure m_measure;
    std::vector<Line> m_lines;
};
