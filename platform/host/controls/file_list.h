// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "controls/scrolled_list.h"

namespace host {

inline constexpr WCHAR kFileListClass[] = u"FileList";

struct FileItem {
    enum class Kind { Parent, Folder, File };
    Kind kind;
    std::u16string name;
};

// Folders and files for the pen: a tap opens a folder and a double tap a file, any other touch selects.
// Notifies the parent by WM_COMMAND.
class FileList final : public ScrolledList {
public:
    static constexpr WORD kSelectionChanged = 1;
    static constexpr WORD kTaken = 2;  // the selected item

    using ScrolledList::ScrolledList;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    KeyUse UseOf(UINT virtualKey) const override;

    // Clears the selection, without a notification.
    void SetItems(std::vector<FileItem> items);
    // Null if nothing is selected. Valid until the items change.
    const FileItem* Selected() const;
    int ItemHeight() const;  // pixels

private:
    static constexpr Look kLook{.padding = 3, .frame = 0};  // enough for a pen

    Look GetLook() const override { return kLook; }
    int Count() const override { return static_cast<int>(m_items.size()); }
    void Paint(ControlPainter& painter) override;
    void PaintItem(ControlPainter& painter, int item, const RECT& line) const override;
    bool FollowsPen() const override { return Selected() != nullptr; }
    // Notifies the parent if the selection changes.
    void Touch(int item) override;
    void Take(int item) override;
    void OnDoubleTap(POINT point);
    void OnKey(UINT virtualKey);

    std::vector<FileItem> m_items;
};

}  // namespace host
