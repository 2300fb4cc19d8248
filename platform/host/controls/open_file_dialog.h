// SPDX-License-Identifier: MIT
// The window of GetOpenFileNameW. It covers what the panel leaves of the screen:
//
//     +--------------------------+
//     | caption                  |
//     | \folder                  |
//     | +----------------------+ |
//     | | ..                   | |
//     | | folder               | |
//     | | file                 | |
//     | +----------------------+ |
//     | filter                   |
//     |      [  OK  ] [Cancel]   |
//     +--------------------------+
#pragma once

#include <commdlg.h>

#include <string>
#include <utility>
#include <vector>

#include "controls/file_list.h"

namespace host {

// The list's items for a folder: the parent folder, the folders, then the files that match one of the
// patterns. The root is the empty path.
std::vector<FileItem> ListFiles(const std::u16string& folder, const std::vector<std::u16string>& patterns);
bool IsFolder(const std::u16string& devicePath);

class OpenFileDialog {
public:
    struct Setup {
        std::u16string title;
        std::u16string folder;  // to start in
        std::u16string filterText;
        std::vector<std::u16string> patterns;
        std::u16string defaultExtension;  // without the dot
    };
    // The caller keeps the request, which the hook gets.
    OpenFileDialog(OPENFILENAMEW& request, Setup setup) : m_request(request), m_setup(std::move(setup)) {}
    OpenFileDialog(const OpenFileDialog&) = delete;
    OpenFileDialog& operator=(const OpenFileDialog&) = delete;

    // False if the user cancels it or it cannot be created.
    bool Run();
    // The full path that was chosen.
    const std::u16string& Path() const { return m_path; }

    // The dialog if it is the topmost modal window, else null.
    static OpenFileDialog* Topmost();
    // As if the user typed this name, which may lack the folder and the extension.
    void Answer(const std::u16string& name);
    void Cancel();

private:
    static INT_PTR CALLBACK HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInit();
    void OnCommand(WORD id, WORD code);
    void Paint() const;
    void Enter(const std::u16string& folder);
    // Opens the selected folder or ends with the selected file.
    void Take();
    void Choose(std::u16string path);

    OPENFILENAMEW& m_request;
    const Setup m_setup;
    HWND m_dialog = nullptr;
    HFONT m_captionFont = nullptr;
    int m_captionHeight = 0;
    std::u16string m_folder;  // without a separator at its end
    std::u16string m_path;
};

}  // namespace host
