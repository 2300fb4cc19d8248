// SPDX-License-Identifier: MIT
#include <edit_text.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace {

// Arrows move, brackets select in their direction.
struct Key {
    char16_t key;
    void (*press)(EditText& edit);
};
const Key kKeys[] = {{u'<', [](EditText& edit) { edit.MoveLeft(Selecting::No); }},
                     {u'>', [](EditText& edit) { edit.MoveRight(Selecting::No); }},
                     {u'(', [](EditText& edit) { edit.MoveLeft(Selecting::Yes); }},
                     {u')', [](EditText& edit) { edit.MoveRight(Selecting::Yes); }},
                     {u'W', [](EditText& edit) { edit.MoveWordLeft(Selecting::No); }},
                     {u'}', [](EditText& edit) { edit.MoveWordRight(Selecting::Yes); }},
                     {u'H', [](EditText& edit) { edit.MoveTo(0, Selecting::No); }},
                     {u'A', [](EditText& edit) { edit.SelectAll(); }},
                     {u'B', [](EditText& edit) { edit.DeleteBackward(); }},
                     {u'D', [](EditText& edit) { edit.DeleteForward(); }},
                     {u'X', [](EditText& edit) { edit.Cut(); }},
                     {u'C', [](EditText& edit) { edit.Copy(); }},
                     {u'V', [](EditText& edit) { edit.Paste(); }},
                     {u'Z', [](EditText& edit) { edit.Undo(); }}};

// The text with a bar at the caret, or at both ends of the selection.
std::u16string Shown(std::u16string_view pressed) {
    EditText edit;
    for (const char16_t unit : pressed) {
        const auto* key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                       [unit](const Key& one) { return one.key == unit; });
        key == std::end(kKeys) ? edit.Insert({&unit, 1}) : key->press(edit);
    }
    std::u16string text = edit.Text();
    text.insert(edit.SelectionEnd(), 1, u'|');
    if (edit.HasSelection()) text.insert(edit.SelectionStart(), 1, u'|');
    return text;
}

TEST(EditTextTest, KeysEdit) {
    for (const auto& [pressed, shown] : std::initializer_list<std::pair<std::u16string, std::u16string>>{
             {u"abcdH>))x", u"ax|d"},
             {u"abD", u"ab|"},
             {u"abHB", u"|ab"},
             {u"abHD", u"|b"},
             {u"abc(B", u"ab|"},
             {u"abc(D", u"ab|"},
             {u"abcdH>))<", u"a|bcd"},
             {u"abcdH>))>", u"abc|d"},
             // A surrogate pair is one character. Its halves arrive one by one, and a single one is a
             // character, too.
             {u"a\U0001F600b<<", u"a|\U0001F600b"},
             {u"a\U0001F600b<<D", u"a|b"},
             {u"a\xD83D"
              u"B",
              u"a|"},
             // Moves by words include their blanks.
             {u"one  two\nthreeW", u"one  two\n|three"},
             {u"one  two\nthreeWW", u"one  |two\nthree"},
             {u"one  two\nthreeH}", u"|one  |two\nthree"},
             {u"abcAX", u"|"},
             {u"abcAXVV", u"abcabc|"},
             {u"abcAXVVCXV", u"abcabcabc|"},  // nothing selected: the clipboard does not change
             // A continuous change is undone at once, with the selection.
             {u"abcH>xyBBZ", u"axy|bc"},
             {u"abcH>xyBBZZ", u"a|bc"},
             {u"abcH>xyBBZZZZ", u"|"},
             {u"abcAxyZ", u"|abc|"},
             {u"abcdH>DD", u"a|d"},
             {u"abcdH>DDZ", u"a|bcd"}})
        EXPECT_EQ(Shown(pressed), shown) << std::string(pressed.begin(), pressed.end());
}

}  // namespace
