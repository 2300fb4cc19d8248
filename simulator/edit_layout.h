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

    // Breaks at "\n" and, where the width ends, behind the last blank before it; a blank never begins a line,
    // and a word wider than the field is cut. The text must outlive the layout.
    EditLayout(std::u16string_view text, int width, Measure measure);

    const std::vector<Line>& Lines() const { return m_lines; }  // at least one
    std::size_t LineOf(std::size_t position) const;
    // From the left edge of its line.
    int XOf(std::size_t position) const;
    // The position in this line nearest to x; behind the last character of a wrapped line counts as before
    // it.
    std::size_t PositionAt(std::size_t line, int x) const;

private:
    void Break(int width);

    std::u16string_view m_text;
    const Measure m_measure;
    std::vector<Line> m_lines;
};
