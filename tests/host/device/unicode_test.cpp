// SPDX-License-Identifier: MIT
#include <unicode.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

// Texts that convert without loss: the limits of each length, and code points without a character, too.
TEST(Unicode, TextsConvertToUtf8AndBack) {
    for (const auto& [bytes, text] : std::initializer_list<std::pair<std::string, std::u16string>>{
             {"", u""},
             {std::string("a\0b", 3), {u"a\0b", 3}},
             {"\x7F\xC2\x80\xDF\xBF", u"\x7F\x80\x7FF"},
             {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80", u"\x800\xD7FF\xE000"},
             {"\xEF\xBB\xBF\xEF\xBF\xBE\xEF\xBF\xBF", u"\xFEFF\xFFFE\xFFFF"},
             {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\xD800\xDC00\xDBFF\xDFFF"}}) {
        EXPECT_EQ(unicode::FromUtf8(bytes), text) << bytes;
        EXPECT_EQ(unicode::ToUtf8(text), bytes);
        EXPECT_TRUE(unicode::IsWellFormed(text)) << bytes;
    }
}

TEST(Unicode, InvalidBytesAreRefused) {
    for (const std::string bytes :
         {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xE2\x82", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"})
        EXPECT_EQ(unicode::FromUtf8("good" + bytes), std::nullopt) << bytes;
}

TEST(Unicode, ALoneSurrogateHasNoUtf8) {
    for (const std::u16string lone : {u"\xD800", u"\xDFFF", u"\xDC00\xD800", u"\xD83D\xD83D"}) {
        EXPECT_FALSE(unicode::IsWellFormed(u"a" + lone + u"b"));
        std::string replaced = "a";
        for (std::size_t i = 0; i < lone.size(); ++i) {
            EXPECT_EQ(unicode::CharacterAt(lone, i), lone.substr(i, 1));
            replaced += "\xEF\xBF\xBD";
        }
        EXPECT_EQ(unicode::ToUtf8(u"a" + lone), replaced);
    }
    std::u16string_view text = u"\xD83D\xD83D\xDE00x";
    EXPECT_EQ(unicode::TakeCharacter(text), char32_t{0xD83D});
    EXPECT_EQ(unicode::TakeCharacter(text), char32_t{0x1F600});
    EXPECT_EQ(text, u"x");
    std::string_view bytes = "\xF0\x9F\x98\x80x";
    EXPECT_EQ(unicode::TakeCharacter(bytes), char32_t{0x1F600});
    EXPECT_EQ(bytes, "x");
}

}  // namespace
