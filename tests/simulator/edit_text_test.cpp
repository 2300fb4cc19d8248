// SPDX-License-Identifier: MIT
#include <edit_text.h>

#include <gtest/gtest.h>

namespace {

EditText Typed(std::u16string_view text) {
    EditText edit;
    for (const char16_t unit : text) {
        edit.Insert({&unit, 1});
    }
    return edit;
}

TEST(EditTextTest, TypingReplacesTheSelection) {
    EditText edit = Typed(u"abcd");
    edit.MoveTo(1, Selecting::No);
    edit.MoveRight(Selecting::Yes);
    edit.MoveRight(Selecting::Yes);
    edit.Insert(u"X");
    EXPECT_EQ(edit.Text(), u"aXd");
    EXPECT_EQ(edit.Caret(), 2u);
    EXPECT_FALSE(edit.HasSelection());
}

TEST(EditTextTest, DeletingStopsAtTheEnds) {
    EditText edit = Typed(u"ab");
    edit.DeleteForward();
    EXPECT_EQ(edit.Text(), u"ab");
    edit.MoveTo(0, Selecting::No);
    edit.DeleteBackward();
    EXPECT_EQ(edit.Text(), u"ab");
    edit.DeleteForward();
    EXPECT_EQ(edit.Text(), u"b");
}

TEST(EditTextTest, DeletingEitherWayTakesTheSelectionAlone) {
    EditText edit = Typed(u"abc");
    edit.MoveLeft(Selecting::Yes);
    edit.DeleteBackward();
    EXPECT_EQ(edit.Text(), u"ab");
    edit.MoveLeft(Selecting::Yes);
    edit.DeleteForward();
    EXPECT_EQ(edit.Text(), u"a");
}

TEST(EditTextTest, ArrowsLeaveASelectionAtTheirSide) {
    EditText edit = Typed(u"abcdef");
    edit.MoveTo(2, Selecting::No);
    edit.MoveTo(4, Selecting::Yes);
    EditText other = edit;
    edit.MoveLeft(Selecting::No);
    EXPECT_EQ(edit.Caret(), 2u);
    other.MoveRight(Selecting::No);
    EXPECT_EQ(other.Caret(), 4u);
}

TEST(EditTextTest, ASurrogatePairIsOneCharacter) {
    EditText edit = Typed(u"a\U0001F600b");
    edit.MoveLeft(Selecting::No);
    edit.MoveLeft(Selecting::No);
    EXPECT_EQ(edit.Caret(), 1u);
    edit.DeleteForward();
    EXPECT_EQ(edit.Text(), u"ab");
    // Its halves come one by one, and one alone is a character of its own.
    EditText half = Typed(u"a\xD83D");
    half.DeleteBackward();
    EXPECT_EQ(half.Text(), u"a");
}

TEST(EditTextTest, WordsAreSteppedOverWithTheirBlanks) {
    EditText edit = Typed(u"one  two\nthree");
    edit.MoveWordLeft(Selecting::No);
    EXPECT_EQ(edit.Caret(), 9u);
    edit.MoveWordLeft(Selecting::No);
    EXPECT_EQ(edit.Caret(), 5u);
    edit.MoveTo(0, Selecting::No);
    edit.MoveWordRight(Selecting::Yes);
    EXPECT_EQ(edit.SelectionEnd(), 5u);
}

TEST(EditTextTest, CutCopyAndPasteGoThroughOneClipboard) {
    EditText edit = Typed(u"abc");
    edit.SelectAll();
    edit.Cut();
    EXPECT_EQ(edit.Text(), u"");
    edit.Paste();
    edit.Paste();
    EXPECT_EQ(edit.Text(), u"abcabc");
    // Nothing selected: the clipboard keeps what it has.
    edit.Copy();
    edit.Cut();
    edit.Paste();
    EXPECT_EQ(edit.Text(), u"abcabcabc");
}

TEST(EditTextTest, UndoTakesBackWhatWasDoneInOneGo) {
    EditText edit = Typed(u"abc");
    edit.MoveTo(1, Selecting::No);
    edit.Insert(u"X");
    edit.Insert(u"Y");
    edit.DeleteBackward();
    edit.DeleteBackward();
    EXPECT_EQ(edit.Text(), u"abc");
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"aXYbc");
    EXPECT_EQ(edit.Caret(), 3u);
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"abc");
    edit.Undo();
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"");
}

TEST(EditTextTest, UndoBringsTheSelectionBack) {
    EditText edit = Typed(u"abc");
    edit.SelectAll();
    edit.Insert(u"X");
    edit.Insert(u"Y");
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"abc");
    EXPECT_EQ(edit.SelectionStart(), 0u);
    EXPECT_EQ(edit.SelectionEnd(), 3u);
}

TEST(EditTextTest, UndoOfForwardDeletionsKeepsTheirOrder) {
    EditText edit = Typed(u"abcd");
    edit.MoveTo(1, Selecting::No);
    edit.DeleteForward();
    edit.DeleteForward();
    EXPECT_EQ(edit.Text(), u"ad");
    edit.Undo();
    EXPECT_EQ(edit.Text(), u"abcd");
    EXPECT_EQ(edit.Caret(), 1u);
}

}  // namespace
