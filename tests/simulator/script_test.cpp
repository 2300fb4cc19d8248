// SPDX-License-Identifier: MIT
#include <script.h>
#include <text.h>

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;

TEST(ScriptTest, WordsAreSeparatedByBlanksOrQuoted) {
    EXPECT_EQ(SplitWords("reg  set\tA\\B \"\" \"a \\\"b\\\" \\\\\"\r"),
              (Words{"reg", "set", "A\\B", "", "a \"b\" \\"}));
    EXPECT_EQ(SplitWords(" \t"), Words{});
    EXPECT_EQ(SplitWords("# \"not closed"), Words{});
    EXPECT_EQ(SplitWords("a #b"), (Words{"a", "#b"}));
}

TEST(ScriptTest, MalformedLinesAreRefused) {
    for (const char* line :
         {"\"abc", "\"abc\\", "\"a\\n\"", "\"a\"b", "a\"b", "a \xC3", "\xED\xA0\x80", "\xC0\x80"})
        EXPECT_THROW(SplitWords(line), ScriptError) << line;
}

TEST(ScriptTest, NumbersAreDecimalOrHexadecimal) {
    EXPECT_EQ(ParseNumber("12", 0, 100), 12);
    EXPECT_EQ(ParseNumber("-0x1f", -100, 100), -31);
    EXPECT_EQ(ParseNumber("0xFFFFFFFF", 0, 0xFFFFFFFF), 0xFFFFFFFF);
    for (const char* word :
         {"", "-", "0x", "--1", "-0x-1", "1a", "1 ", "+1", "101", "-1", "99999999999999999999"})
        EXPECT_THROW(ParseNumber(word, 0, 100), ScriptError) << word;
}

TEST(ScriptTest, BytesHaveTwoDigitsEach) {
    EXPECT_EQ(ParseBytes("00fFa0"), (std::vector<std::uint8_t>{0, 255, 160}));
    EXPECT_TRUE(ParseBytes("").empty());
    for (const char* word : {"0", "0x", "000", "g0", "-1"})
        EXPECT_THROW(ParseBytes(word), ScriptError) << word;
}

TEST(TextTest, EscapesKeepALineReadable) {
    EXPECT_EQ(Quoted(u"a\"\\\n"), R"("a\"\\\n")");
    EXPECT_EQ(Quoted(std::u16string_view(u"\0\t\x7F", 3)), R"("\u0000\u0009\u007f")");
    EXPECT_EQ(Quoted(u"ü€\U0001F600"), "\"ü€\U0001F600\"");
    EXPECT_EQ(Quoted(u"\xD83Dx\xDE00"), R"("\ud83dx\ude00")");
}

}  // namespace
