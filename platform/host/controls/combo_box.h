// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "controls/control.h"

namespace host {

// A field that shows the selected item, and a list that drops down from it. Selections by a program send no
// notification. While the list is open, arrow keys move in it and only Enter or the pen selects an item, so
// that a parent that acts on every selection acts once.
class ComboBox final : public Control {
public:
    using Control::Control;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // The height given includes the open list; the window gets that of the field.
    void AdjustBounds(RECT& bounds) override;
    KeyUse UseOf(UINT virtualKey) const override;

    const std::vector<std::u16string>& Items() const { return m_items; }
    int Selected() const { return m_selected; }
    void Open();
    // As the pen does. The combo box may be gone afterwards.
    void Take(int index);

private:
    enum class Outcome { Taken, Cancelled };

    void Paint(ControlPainter& painter) override;
    void OnFontChanged() override;
    // None for any other message.
    std::optional<LRESULT> OnItemMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnStateMessage(UINT message, WPARAM wParam, LPARAM lParam);

    LRESULT AddItem(LPCWSTR text);
    LRESULT DeleteItem(int index);
    LRESULT SelectItem(int index);
    LRESULT CopyItem(int index, LPWSTR text) const;
    LRESULT GetDroppedRect(RECT* rectangle) const;
    bool HasItem(int index) const;
    // Makes the selected item the control's text.
    void ShowSelection();

    bool IsOpen() const { return m_list != nullptr; }
    // Closes an open list and notifies the parent. False when the combo box did not survive that.
    bool Close(Outcome outcome);
    void DestroyList();
    void RefreshList();

    void OnPenDown();
    void OnPenMove(POINT point, UINT message);
    void OnKey(UINT virtualKey);
    void OnCharacter(WCHAR character);
    // By the keyboard: moves in the open list, or selects at once when it is closed.
    void MoveTo(int index);
    int CurrentItem() const;  // highlighted in the open list, else selected
    int FindByFirstLetter(WCHAR letter) const;

    RECT ListPlace() const;  // on the screen
    int FieldHeight() const;

    std::vector<std::u16string> m_items;
    int m_selected = -1;
    int m_droppedHeight = 0;  // pixels, with the field
    HWND m_list = nullptr;    // while it is open
    bool m_tracking = false;  // the pen went down in the field and may move on into the list
};

}  // namespace host
