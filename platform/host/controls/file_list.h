// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "controls/control.h"
#include "controls/scroll.h"

namespace host {

inline constexpr WCHAR kFileListClass[] = u"FileList";

struct FileItem {
    enum class Kind { Parent, Folder, File };
    Kind kind;
    std::u16string name;
};

// Folders and files for the pen: a tap opens a folder and a double tap a file, any other touch selects.
// Notifies the parent by WM_COMMAND.
class FileList final : public Control {
public:
    static constexpr WORD kSelectionChanged = 1;
    static constexpr WORD kTaken = 2;  // the selected item

    using Control::Control;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    KeyUse UseOf(UINT virtualKey) const override;

    // Clears the selection, without a notification.
    void SetItems(std::vector<FileItem> items);
    // Null if nothing is selected. Valid until the items change.
    const FileItem* Selected() const;
    int ItemHeight() const;  // pixels

private:
    enum class Tracking { None, Items, Thumb };

    void Paint(ControlPainter& painter) override;
    void PaintItem(ControlPainter& painter, const FileItem& item, const RECT& line, bool selected) const;
    void OnPenDown(POINT point);
    void OnPenMove(POINT point);
    void OnPenUp(POINT point);
    void OnDoubleTap(POINT point);
    void OnKey(UINT virtualKey);
    // Scrolls the item into view. False if notifying the parent destroyed the list.
    bool Select(int item);
    void ScrollTo(int firstItem);
    int Count() const { return static_cast<int>(m_items.size()); }
    ItemRows Rows() const;

    std::vector<FileItem> m_items;
    int m_selected = -1;
    int m_first = 0;  // topmost item shown
    Tracking m_tracking = Tracking::None;
    LONG m_grip = 0;  // from the thumb's top to the pen
};

}  // namespace host
