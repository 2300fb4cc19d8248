// SPDX-License-Identifier: MIT
#include "edit_text.h"

#include <unicode.h>

#include <algorithm>
#include <utility>

namespace {

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\n'; }

}  // namespace

void EditText::Begin(std::u16string text) {
    m_text = std::move(text);
    m_changes.clear();
    MoveTo(m_text.size(), Selecting::No);
}

void EditText::Insert(std::u16string_view text) {
    Replace(SelectionStart(), SelectionEnd(), text, ChangeKind::Typing);
}

void EditText::DeleteBackward() {
    if (HasSelection())
        Replace(SelectionStart(), SelectionEnd(), {}, ChangeKind::Single);
    else
        Replace(Before(m_caret), m_caret, {}, ChangeKind::DeletingBackward);
}

void EditText::DeleteForward() {
    if (HasSelection())
        Replace(SelectionStart(), SelectionEnd(), {}, ChangeKind::Single);
    else
        Replace(m_caret, After(m_caret), {}, ChangeKind::DeletingForward);
}

void EditText::Clear() { Replace(0, m_text.size(), {}, ChangeKind::Single); }

void EditText::MoveTo(std::size_t position, Selecting selecting) {
    m_caret = std::min(position, m_text.size());
    if (selecting == Selecting::No) m_anchor = m_caret;
    m_continuing = false;
}

void EditText::MoveLeft(Selecting selecting) {
    const bool leaving = HasSelection() && selecting == Selecting::No;
    MoveTo(leaving ? SelectionStart() : Before(m_caret), selecting);
}

void EditText::MoveRight(Selecting selecting) {
    const bool leaving = HasSelection() && selecting == Selecting::No;
    MoveTo(leaving ? SelectionEnd() : After(m_caret), selecting);
}

void EditText::MoveWordLeft(Selecting selecting) {
    std::size_t position = m_caret;
    while (position > 0 && IsBlank(m_text[position - 1]))
        --position;
    while (position > 0 && !IsBlank(m_text[position - 1]))
        --position;
    MoveTo(position, selecting);
}

void EditText::MoveWordRight(Selecting selecting) {
    std::size_t position = m_caret;
    while (position < m_text.size() && !IsBlank(m_text[position]))
        ++position;
    while (position < m_text.size() && IsBlank(m_text[position]))
        ++position;
    MoveTo(position, selecting);
}

void EditText::SelectAll() {
    MoveTo(0, Selecting::No);
    MoveTo(m_text.size(), Selecting::Yes);
}

void EditText::Copy() {
    if (HasSelection()) m_clipboard = m_text.substr(SelectionStart(), SelectionEnd() - SelectionStart());
}

void EditText::Cut() {
    Copy();
    Replace(SelectionStart(), SelectionEnd(), {}, ChangeKind::Single);
}

void EditText::Paste() {
    if (m_clipboard.empty()) return;
    Replace(SelectionStart(), SelectionEnd(), m_clipboard, ChangeKind::Single);
}

void EditText::Undo() {
    if (m_changes.empty()) return;
    const Change change = std::move(m_changes.back());
    m_changes.pop_back();
    m_text.replace(change.position, change.inserted.size(), change.removed);
    m_anchor = change.anchor;
    m_caret = change.caret;
    m_continuing = false;
}

void EditText::Replace(std::size_t start, std::size_t end, std::u16string_view inserted, ChangeKind kind) {
    if (start == end && inserted.empty()) return;
    Record({kind, start, m_text.substr(start, end - start), std::u16string(inserted), m_anchor, m_caret});
    m_text.replace(start, end - start, inserted);
    m_caret = m_anchor = start + inserted.size();
    m_continuing = true;
}

// Joins the change with the last one if it continues the same action.
void EditText::Record(Change change) {
    const bool joins = m_continuing && !m_changes.empty() && m_changes.back().kind == change.kind;
    if (!joins || change.kind == ChangeKind::Single) {
        m_changes.push_back(std::move(change));
        return;
    }
    Change& last = m_changes.back();
    last.inserted += change.inserted;
    if (change.kind == ChangeKind::DeletingBackward) {
        last.position = change.position;
        last.removed.insert(0, change.removed);
    } else {
        last.removed += change.removed;
    }
}

std::size_t EditText::Before(std::size_t position) const {
    if (position == 0) return 0;
    const bool pair = position >= 2 && unicode::CharacterAt(m_text, position - 2).size() == 2;
    return position - (pair ? 2 : 1);
}

std::size_t EditText::After(std::size_t position) const {
    return position == m_text.size() ? position : position + unicode::CharacterAt(m_text, position).size();
}
