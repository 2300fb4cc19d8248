// SPDX-License-Identifier: MIT
#include "skin_files.h"

#include <host_control.h>
#include <sip_layout.h>
#include <unicode.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "device_files.h"
#include "framework/handles.h"
#include "registry_value.h"
#include "script.h"
#include "store/registry_names.h"

namespace fs = std::filesystem;

namespace {

const KeyPath kSettings{HKEY_LOCAL_MACHINE, kSettingsKey};

// Ignores case.
bool IsSkinName(const std::u16string& name) {
    return name.size() > 4 && lstrcmpiW(name.c_str() + name.size() - 4, u".tlk") == 0;
}

// The skins in the folder by name.
std::map<std::u16string, fs::path> SkinsIn(const fs::path& folder) {
    std::map<std::u16string, fs::path> skins;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::optional<std::u16string> name = unicode::FromUtf8(entry.path().filename().string());
        if (name && IsSkinName(*name)) skins[*name] = entry.path();
    }
    return skins;
}

std::set<std::u16string> NamesInAnyFolder(const fs::path& folder) {
    std::set<std::u16string> names;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (!entry.is_directory(error)) continue;
        for (const auto& [name, path] : SkinsIn(entry.path()))
            names.insert(name);
    }
    return names;
}

std::u16string Installed(const std::u16string& name) { return u"\\Windows\\" + name; }

void AppendMatches(const std::u16string& pattern, const std::u16string& folder,
                   std::vector<std::u16string>& paths) {
    WIN32_FIND_DATAW data;
    const CFindOwner find(FindFirstFileW(pattern.c_str(), &data));
    for (BOOL found = static_cast<bool>(find); found; found = FindNextFileW(find.Get(), &data))
        paths.push_back(folder + data.cFileName);
}

// In pixels; 0 if the file is no skin.
LONG WidthOfSkin(const std::u16string& path) {
    const host::PlatformScope scope;
    const CModuleOwner skin(LoadLibraryW(path.c_str()));
    const CBitmapOwner bitmap(skin ? LoadBitmapW(skin.Get(), u"char_keyboard_bitmap") : nullptr);
    BITMAP picture{};
    GetObjectW(bitmap.Get(), sizeof picture, &picture);
    return picture.bmWidth;
}

bool Exists(const std::u16string& path) {
    std::vector<std::u16string> matches;
    AppendMatches(path, {}, matches);
    return !matches.empty();
}

}  // namespace

std::string SizeName(SIZE screen) {
    return std::to_string(std::min(screen.cx, screen.cy)) + 'x' +
           std::to_string(std::max(screen.cx, screen.cy));
}

void InstallSkins(const fs::path& folder, SIZE screen) {
    const std::string size = SizeName(screen);
    const std::map<std::u16string, fs::path> skins = SkinsIn(folder / size);
    if (skins.empty()) throw ScriptError("there are no skins in " + (folder / size).string());
    for (const std::u16string& name : NamesInAnyFolder(folder))
        if (!skins.contains(name)) static_cast<void>(DeleteDeviceFile(Installed(name)));
    for (const auto& [name, path] : skins)
        CopyToDevice(path, Installed(name));
}

// Tried under another name first: an existing skin is only replaced by a file that is a skin.
void PutSkin(const fs::path& file) {
    const std::optional<std::u16string> name = unicode::FromUtf8(file.filename().string());
    if (!name) throw ScriptError("the name of the skin " + file.string() + " is not UTF-8");
    if (!IsSkinName(*name))
        throw ScriptError("the name of the skin " + file.string() + " does not end in .tlk");
    const std::u16string draft = Installed(*name) + u".draft";
    CopyToDevice(file, draft);
    const bool isSkin = WidthOfSkin(draft) > 0;
    static_cast<void>(DeleteDeviceFile(draft));
    if (!isSkin) throw ScriptError(file.string() + " is no skin: \"tlk check\" tells what is wrong with it");
    CopyToDevice(file, Installed(*name));
}

bool SuitsScreen(const std::u16string& path) {
    const SIZE screen = ScreenSize();
    return WidthOfSkin(path) == std::min(screen.cx, screen.cy);
}

std::vector<std::u16string> ListSkins() {
    std::vector<std::u16string> paths;
    AppendMatches(u"\\windows\\*.tlk", u"\\windows\\", paths);
    const std::optional<RegistryValue> added = ReadRegistryValue(kSettings, kUserSkinsValue);
    if (!added) return paths;
    for (const std::u16string& path : added->Texts())
        if (Exists(path)) paths.push_back(path);
    return paths;
}

bool IsSkinLoaded() { return host::CountHandles().modules > 0; }

std::u16string StoredSkin() { return ReadRegistryText(kSettings, kSkinValue); }

void StoreSkin(const std::u16string& path) {
    if (WriteRegistryValue(kSettings, kSkinValue, RegistryValue::FromText(path)) != ERROR_SUCCESS)
        throw ScriptError("the setting of the skin cannot be written");
}
