// SPDX-License-Identifier: MIT
// GetOpenFileNameW: checks the request, shows the dialog and fills in the choice.
#include <algorithm>
#include <utility>

#include "controls/open_file_dialog.h"
#include "device/faults.h"
#include "device/files.h"
#include "device/strings.h"

namespace host {
namespace {

constexpr std::u16string_view kUsualFolder = u"\\My Documents";

OpenFileHandler g_handler;

// The strings up to the empty one that ends the list.
std::vector<std::u16string> SplitStrings(LPCWSTR strings) {
    std::vector<std::u16string> split;
    while (strings && *strings) {
        split.emplace_back(strings);
        strings += split.back().size() + 1;
    }
    return split;
}

std::u16string JoinStrings(const std::vector<std::u16string>& strings) {
    std::u16string joined;
    for (const std::u16string& string : strings) {
        if (!joined.empty()) joined += u'|';
        joined += string;
    }
    return joined;
}

bool IsUnderstood(const OPENFILENAMEW& request) {
    constexpr DWORD known = OFN_EXPLORER | OFN_ENABLEHOOK;
    return request.lStructSize == sizeof request && (request.Flags & ~known) == 0 &&
           !request.lpstrCustomFilter && !request.lpTemplateName && request.lpstrFile &&
           (!request.hwndOwner || IsWindow(request.hwndOwner));
}

// Without a filter all files are listed.
OpenFileDialog::Setup MakeSetup(const OPENFILENAMEW& request) {
    OpenFileDialog::Setup setup;
    setup.title = request.lpstrTitle ? request.lpstrTitle : u"Open";
    const std::vector<std::u16string> filters = SplitStrings(request.lpstrFilter);
    const std::size_t pair = 2 * (std::max<std::size_t>(request.nFilterIndex, 1) - 1);
    if (pair + 1 < filters.size()) {
        setup.filterText = filters[pair];
        const auto patterns = Split(filters[pair + 1], u";");
        setup.patterns.assign(patterns.begin(), patterns.end());
    }
    if (setup.patterns.empty()) setup.patterns = {u"*"};
    setup.defaultExtension = View(request.lpstrDefExt);
    for (const std::u16string_view folder : {View(request.lpstrInitialDir), kUsualFolder})
        if (setup.folder.empty() && !folder.empty() && IsFolder(std::u16string(folder)))
            setup.folder = folder;
    return setup;
}

void CopyText(std::u16string_view text, LPWSTR target) {
    text.copy(target, text.size());
    target[text.size()] = u'\0';
}

// A choice that does not fit is not copied at all.
bool FillIn(OPENFILENAMEW& request, const std::u16string& path) {
    const std::u16string_view name = SplitDevicePath(path).name;
    const bool titleFits = !request.lpstrFileTitle || name.size() < request.nMaxFileTitle;
    if (path.size() >= request.nMaxFile || !titleFits) {
        if (request.nMaxFile > 0) request.lpstrFile[0] = static_cast<WCHAR>(path.size() + 1);
        return false;
    }
    CopyText(path, request.lpstrFile);
    if (request.lpstrFileTitle) CopyText(name, request.lpstrFileTitle);
    const std::size_t nameStart = path.size() - name.size();
    const std::size_t dot = name.rfind(u'.');
    request.nFileOffset = static_cast<WORD>(nameStart);
    request.nFileExtension = dot == name.npos ? WORD{0} : static_cast<WORD>(nameStart + dot + 1);
    return true;
}

}  // namespace

void SetOpenFileHandler(OpenFileHandler handler) { g_handler = std::move(handler); }

bool AnswerOpenFile(const std::u16string& name) {
    OpenFileDialog* dialog = OpenFileDialog::Topmost();
    if (!dialog || name.empty()) return false;
    dialog->Answer(name);
    return true;
}

bool CancelOpenFile() {
    OpenFileDialog* dialog = OpenFileDialog::Topmost();
    if (dialog) dialog->Cancel();
    return dialog != nullptr;
}

void ResetOpenFile() { g_handler = nullptr; }

}  // namespace host

using namespace host;

BOOL WINAPI GetOpenFileNameW(OPENFILENAMEW* request) {
    if (!request || !IsUnderstood(*request)) return FALSE;
    if (g_handler)
        g_handler(std::u16string(View(request->lpstrDefExt)),
                  JoinStrings(SplitStrings(request->lpstrFilter)));
    if (CallFails(Call::GetOpenFileName)) return FALSE;
    OpenFileDialog dialog(*request, MakeSetup(*request));
    return dialog.Run() && FillIn(*request, dialog.Path());
}
