// SPDX-License-Identifier: MIT
// The text of an edit field with caret, selection, clipboard and undo, without its display. Positions count
// UTF-16 units from 0; a surrogate pair is one character for the caret. Line breaks are "\n".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

enum class Selecting { No, Yes };

class EditText {
public:
    // Starts with another text, the caret at its end, nothing to undo.
    void Begin(std::u16string text);

    const std::u16string& Text() const { return m_text; }
    std::size_t Caret() const { return m_caret; }
    std::size_t SelectionStart() const { return m_anchor < m_caret ? m_anchor : m_caret; }
    std::size_t SelectionEnd() const { return m_anchor < m_caret ? m_caret : m_anchor; }
    bool HasSelection() const { return m_anchor != m_caret; }

    // Types at the caret, replacing the selection.
    void Insert(std::u16string_view text);
    // Delete the selection, or the character before or after the caret.
    void DeleteBackward();
    void DeleteForward();
    void Clear();

    // A position past the end means the end. When selecting, the other end of the selection stays.
    void MoveTo(std::size_t position, Selecting selecting);
    // By one character; without selecting, from a selection to its end on that side.
    void MoveLeft(Selecting selecting);
    void MoveRight(Selecting selecting);
    // To the beginning of this or the previous word, or of the next word.
    void MoveWordLeft(Selecting selecting);
    void MoveWordRight(Selecting selecting);
    void SelectAll();

    void Copy();
    void Cut();
    void Paste();
    bool HasText() const { return !m_text.empty(); }
    bool CanPaste() const { return !m_clipboard.empty(); }
    bool CanUndo() const { return !m_changes.empty(); }
    // Undoes the last change; continuous typing or deleting is one change.
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
    std::size_t After(std::size_t position) const;

    std::u16string m_text;
    std::size_t m_caret = 0;
    std::size_t m_anchor = 0;  // the fixed end of the selection
    std::u16string m_clipboard;
    std::vector<Change> m_changes;
    bool m_continuing = false;  // nothing else has happened since the last change
};
