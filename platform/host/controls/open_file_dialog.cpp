// SPDX-License-Identifier: MIT
#include "controls/open_file_dialog.h"

#include <algorithm>
#include <utility>

#include "controls/box.h"
#include "controls/painter.h"
#include "device/files.h"

namespace host {
namespace {

constexpr WORD kListId = 0x460;
constexpr WORD kFolderId = 0x440;
constexpr WORD kFilterId = 0x441;

// In units of the font's thin line.
constexpr int kMargin = 6;

std::vector<OpenFileDialog*> g_open;  // the last one opened is at the end

// Calls visit(entry) for what a pattern finds.
template <typename Visitor>
void ForEachFound(const std::u16string& pattern, Visitor visit) {
    const PlatformScope scope;
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(pattern.c_str(), &data);
    for (BOOL found = find != INVALID_HANDLE_VALUE; found; found = FindNextFileW(find, &data))
        visit(data);
    FindClose(find);
}

bool IsFolder(const WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Relative to the owner, as positions of dialogs are.
Placement PlaceOverFreeScreen(HWND owner) {
    const RECT area = FreeScreenArea();
    POINT corner{area.left, area.top};
    if (owner) ScreenToClient(owner, &corner);
    return {corner.x, corner.y, area.right - area.left, area.bottom - area.top};
}

// The list gets the remaining height, at least two lines, even if the buttons then end up below the screen's
// free part. If there is little room, the filter is left out first.
DialogTemplate MakeLayout(const FontMetrics& metrics, int captionHeight, HWND owner,
                          const std::u16string& filter) {
    const int unit = metrics.Unit();
    const int margin = kMargin * unit;
    const int line = metrics.LineHeight();
    DialogTemplate layout;
    layout.style = WS_POPUP;
    layout.place = PlaceOverFreeScreen(owner);
    const int width = layout.place.width - 2 * margin;
    const int listTop = captionHeight + margin / 2 + line + margin / 2;
    const int buttonTop =
        std::max(layout.place.height - margin - kButtonHeight * unit, listTop + 2 * line + margin);
    const bool showsFilter = buttonTop - listTop > 8 * line;
    const int listBottom = buttonTop - margin - (showsFilter ? line + margin / 2 : 0);

    ControlTemplate list =
        MakeControl(kListId, 0, {}, WS_TABSTOP, {margin, listTop, width, listBottom - listTop});
    list.className = kFileListClass;
    layout.controls.push_back(std::move(list));
    AddButtons(layout, 2,
               {margin + width - 2 * kButtonWidth * unit - margin, buttonTop, kButtonWidth * unit,
                kButtonHeight * unit},
               margin);
    const Placement folder{margin, captionHeight + margin / 2, width, line};
    layout.controls.push_back(MakeControl(kFolderId, kStaticAtom, {}, SS_LEFT, folder));
    if (showsFilter) {
        const Placement place{margin, listBottom + margin / 2, width, line};
        layout.controls.push_back(MakeControl(kFilterId, kStaticAtom, filter, SS_LEFT, place));
    }
    return layout;
}

// The path, or an ellipsis and its end if it is wider than this.
std::u16string FitPath(const FontMetrics& metrics, std::u16string path, int width) {
    std::u16string text = path;
    while (metrics.Width(text) > width && path.find(u'\\', 1) != path.npos) {
        path.erase(0, path.find(u'\\', 1));
        text = u"\u2026" + path;
    }
    return text;
}

// Null if nothing is selected, or the hook has destroyed the list.
const FileItem* SelectedItem(HWND dialog) {
    const auto list = FindSystemWindow<FileList>(GetDlgItem(dialog, kListId));
    return list ? list->Selected() : nullptr;
}

}  // namespace

std::vector<FileItem> ListFiles(const std::u16string& folder, const std::vector<std::u16string>& patterns) {
    std::vector<FileItem> items;
    if (!folder.empty()) items.push_back({FileItem::Kind::Parent, u".."});
    ForEachFound(folder + u"\\*", [&](const WIN32_FIND_DATAW& data) {
        if (IsFolder(data)) items.push_back({FileItem::Kind::Folder, data.cFileName});
    });
    for (const std::u16string& pattern : patterns) {
        ForEachFound(
            folder + u"\\" + pattern,
            [&](const WIN32_FIND_DATAW& data) {
                const auto same = [&](const FileItem& item) { return item.name == data.cFileName; };
                if (IsFolder(data) || std::any_of(items.begin(), items.end(), same)) return;
                items.push_back({FileItem::Kind::File, data.cFileName});
            });
    }
    return items;
}

bool IsFolder(const std::u16string& devicePath) {
    const ResolvedPath resolved = ResolvePath(devicePath);
    std::error_code error;
    return resolved.error == ERROR_SUCCESS && std::filesystem::is_directory(resolved.path, error);
}

bool OpenFileDialog::Run() {
    const BoxFonts fonts;
    m_captionFont = fonts.Caption();
    m_captionHeight = fonts.CaptionHeight();
    DialogTemplate layout =
        MakeLayout(FontMetrics(fonts.Text()), m_captionHeight, m_request.hwndOwner, m_setup.filterText);
    layout.title = m_setup.title;
    g_open.push_back(this);
    const INT_PTR result = RunModal({layout, fonts.Text(), m_request.hwndOwner, nullptr, HandleMessage,
                                     reinterpret_cast<LPARAM>(this), Maker::Platform});
    std::erase(g_open, this);
    return result == IDOK;
}

OpenFileDialog* OpenFileDialog::Topmost() {
    const HWND top = TopmostModalWindow();
    const auto found = std::find_if(g_open.begin(), g_open.end(),
                                    [top](const OpenFileDialog* dialog) { return dialog->m_dialog == top; });
    return top && found != g_open.end() ? *found : nullptr;
}

void OpenFileDialog::Answer(const std::u16string& name) {
    std::u16string path = name;
    std::replace(path.begin(), path.end(), u'/', u'\\');
    if (!path.starts_with(u'\\')) path = m_folder + u"\\" + path;
    if (IsFolder(path)) return Enter(path);
    const bool hasExtension = SplitDevicePath(path).name.find(u'.') != std::u16string_view::npos;
    if (!hasExtension && !m_setup.defaultExtension.empty()) path += u"." + m_setup.defaultExtension;
    Choose(std::move(path));
}

void OpenFileDialog::Cancel() { EndDialog(m_dialog, IDCANCEL); }

// The hook sees all messages from WM_INITDIALOG on, and may destroy the dialog.
INT_PTR CALLBACK OpenFileDialog::HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    auto* self = reinterpret_cast<OpenFileDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (!self) return FALSE;
    self->m_dialog = dialog;
    if (message == WM_INITDIALOG) self->OnInit();
    const LPOFNHOOKPROC hook = (self->m_request.Flags & OFN_ENABLEHOOK) ? self->m_request.lpfnHook : nullptr;
    const LPARAM told = message == WM_INITDIALOG ? reinterpret_cast<LPARAM>(&self->m_request) : lParam;
    if (hook && hook(dialog, message, wParam, told) != 0) return TRUE;
    return IsWindow(dialog) ? self->OnMessage(message, wParam, lParam) : TRUE;
}

INT_PTR OpenFileDialog::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_PAINT:
            return Paint(), TRUE;
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam), HIWORD(wParam)), TRUE;
    }
    return FALSE;
}

void OpenFileDialog::OnInit() { Enter(m_setup.folder); }

void OpenFileDialog::OnCommand(WORD id, WORD code) {
    if (id == IDCANCEL)
        Cancel();
    else if (id == IDOK || (id == kListId && code == FileList::kTaken))
        Take();
    else if (id == kListId && code == FileList::kSelectionChanged)
        EnableWindow(GetDlgItem(m_dialog, IDOK), SelectedItem(m_dialog) != nullptr);
}

void OpenFileDialog::Paint() const {
    ControlPainter painter(m_dialog, m_captionFont);
    if (!painter) return;
    PaintBox(painter, m_setup.title, m_captionHeight, kMargin * painter.Metrics().Unit());
}

void OpenFileDialog::Enter(const std::u16string& folder) {
    const std::size_t end = folder.find_last_not_of(u'\\');
    m_folder = folder.substr(0, end == folder.npos ? 0 : end + 1);
    const HWND text = GetDlgItem(m_dialog, kFolderId);
    RECT client{};
    GetClientRect(text, &client);
    const FontMetrics metrics(reinterpret_cast<HFONT>(SendMessageW(text, WM_GETFONT, 0, 0)));
    SetWindowTextW(text, FitPath(metrics, m_folder.empty() ? u"\\" : m_folder, client.right).c_str());
    const auto list = FindSystemWindow<FileList>(GetDlgItem(m_dialog, kListId));
    if (list) list->SetItems(ListFiles(m_folder, m_setup.patterns));
    EnableWindow(GetDlgItem(m_dialog, IDOK), FALSE);
}

void OpenFileDialog::Take() {
    const FileItem* item = SelectedItem(m_dialog);
    if (!item) return;
    switch (item->kind) {
        case FileItem::Kind::Parent:
            return Enter(std::u16string(SplitDevicePath(m_folder).folder));
        case FileItem::Kind::Folder:
            return Enter(m_folder + u"\\" + item->name);
        case FileItem::Kind::File:
            return Choose(m_folder + u"\\" + item->name);
    }
}

void OpenFileDialog::Choose(std::u16string path) {
    m_path = std::move(path);
    EndDialog(m_dialog, IDOK);
}

}  // namespace host
