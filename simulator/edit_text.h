// SPDX-License-Identifier: MIT
// The text of an edit field with caret, selection, clipboard and undo: everything but its looks. Positions
// count UTF-16 units from 0; a surrogate pair is one character for the caret. Line breaks are "\n".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

enum class Selecting { No, Yes };

class EditText {
public:
    // Another text, with the caret behind it and nothing to take back.
    void Begin(std::u16string text);

    const std::u16string& Text() const { return m_text; }
    std::size_t Caret() const { return m_caret; }
    std::size_t SelectionStart() const { return m_anchor < m_caret ? m_anchor : m_caret; }
    std::size_t SelectionEnd() const { return m_anchor < m_caret ? m_caret : m_anchor; }
    bool HasSelection() const { return m_anchor != m_caret; }

    // Types at the caret, in place of the selection.
    void Insert(std::u16string_view text);
    // Delete the selection, or the character before or behind the caret.
    void DeleteBackward();
    void DeleteForward();
    void Clear();

    // A position past the end means the end. With selecting, the other end of the selection stays.
    void MoveTo(std::size_t position, Selecting selecting);
    // By a character; without selecting they leave a selection at its end on that side.
    void MoveLeft(Selecting selecting);
    void MoveRight(Selecting selecting);
    // To the beginning of this or the last word, of the next word.
    void MoveWordLeft(Selecting selecting);
    void MoveWordRight(Selecting selecting);
    void SelectAll();

    void Copy();
    void Cut();
    void Paste();
    bool CanPaste() const { return !m_clipboard.empty(); }
    bool CanUndo() const { return !m_changes.empty(); }
    // Takes back the last change; what was typed or deleted in one go is one change.
    void Undo();

private:
    enum class ChangeKind { Typing, DeletingBackward, DeletingForward, Single };
    struct Change {
        ChangeKind kind;
        std::size_t position;
        std::u16string removed;
        std::u16string inserted;
        std::size_t anchor;  // before the change
        std::size_t caret;
    };

    void Replace(std::size_t start, std::size_t end, std::u16string_view inserted, ChangeKind kind);
    void Record(Change change);
    std::size_t Before(std::size_t position) const;
    std::size_t Behind(std::size_t position) const;

    std::u16string m_text;
    std::size_t m_caret = 0;
    std::size_t m_anchor = 0;  // the end of the selection that stays
    std::u16string m_clipboard;
    std::vector<Change> m_changes;
    bool m_continuing = false;  // nothing has happened since the last change
};
