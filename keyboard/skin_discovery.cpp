// SPDX-License-Identifier: MIT
// Lists the skins.
#include <utility>

#include "framework/handles.h"
#include "framework/memory.h"
#include "keyboard/keyboard.h"
#include "store/settings_key.h"

namespace {

constexpr WCHAR kSkinFolder[] = TEXT("\\windows");

bool FileExists(const WideString& path) {
    WIN32_FIND_DATAW data;
    return static_cast<bool>(CFindOwner(FindFirstFileW(path.c_str(), &data)));
}

void AppendSkinFiles(const WideString& extension, WideStringList& files) {
    const WideString folder(kSkinFolder);
    WIN32_FIND_DATAW data;
    const CFindOwner find(FindFirstFileW((folder + TEXT("\\*.") + extension).c_str(), &data));
    if (!find) return;
    do {
        files.push_back(folder + TEXT("\\") + data.cFileName);
    } while (FindNextFileW(find.Get(), &data));
}

// Skips paths whose file is gone; the next save of the settings drops them. False when memory runs out.
bool AppendUserSkins(WideStringList& skins) {
    WideStringList stored;
    const bool all = CSettingsKey(SettingsAccess::Write).ReadStringList(kUserSkinsValue, stored);
    for (WideString& path : stored)
        if (FileExists(path)) skins.push_back(std::move(path));
    return all;
}

}  // namespace

WideStringList CKeyboard::FindSkinFiles(const WideString& extension) {
    WideStringList files;
    EnoughMemory([&] { AppendSkinFiles(extension, files); });
    return files;
}

bool CKeyboard::ListSkins(WideStringList& skins) {
    bool all = false;
    EnoughMemory([&] {
        AppendSkinFiles(TEXT("tlk"), skins);
        all = AppendUserSkins(skins);
    });
    return all;
}

WideStringList CKeyboard::GetSkinList() {
    WideStringList skins;
    ListSkins(skins);
    return skins;
}
