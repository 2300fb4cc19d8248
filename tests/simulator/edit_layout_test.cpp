// SPDX-License-Identifier: MIT
#include <edit_layout.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// Every character is ten pixels wide.
std::vector<std::u16string> Lines(std::u16string_view text, int width) {
    const EditLayout layout(text, width, [](std::u16string_view) { return 10; });
    std::vector<std::u16string> lines;
    for (const EditLayout::Line& line : layout.Lines())
        lines.emplace_back(text.substr(line.start, line.end - line.start));
    return lines;
}

using Expected = std::vector<std::u16string>;

TEST(EditLayoutTest, LinesBreakAfterBlanksAndAtLineBreaks) {
    EXPECT_EQ(Lines(u"", 50), Expected{u""});
    EXPECT_EQ(Lines(u"ab cd ef", 50), (Expected{u"ab cd ", u"ef"}));
    EXPECT_EQ(Lines(u"a\n\nb\n", 50), (Expected{u"a", u"", u"b", u""}));
}

TEST(EditLayoutTest, WordsWiderThanTheFieldAreSplit) {
    EXPECT_EQ(Lines(u"abcdefg", 30), (Expected{u"abc", u"def", u"g"}));
    EXPECT_EQ(Lines(u"ab", 5), (Expected{u"a", u"b"}));
    EXPECT_EQ(Lines(u"\U0001F600\U0001F601", 5), (Expected{u"\U0001F600", u"\U0001F601"}));
}

TEST(EditLayoutTest, PositionsAndPointsMatch) {
    const std::u16string text = u"ab cd ef\ngh";
    const EditLayout layout(text, 50, [](std::u16string_view) { return 10; });
    EXPECT_EQ(layout.LineOf(5), 0u);
    // The position after the last character of a wrapped line is the beginning of the next one.
    EXPECT_EQ(layout.LineOf(6), 1u);
    EXPECT_EQ(layout.XOf(6), 0);
    EXPECT_EQ(layout.LineOf(8), 1u);
    EXPECT_EQ(layout.XOf(8), 20);
    EXPECT_EQ(layout.PositionAt(0, 14), 1u);
    EXPECT_EQ(layout.PositionAt(0, 15), 2u);
    EXPECT_EQ(layout.PositionAt(0, 1000), 5u);
    EXPECT_EQ(layout.PositionAt(1, 1000), 8u);
    EXPECT_EQ(layout.PositionAt(2, -5), 9u);
}

}  // namespace
