// SPDX-License-Identifier: MIT
#include "chosen_skin.h"

#include <sip_layout.h>
#include <unicode.h>

#include <algorithm>

#include "registry_value.h"
#include "script.h"
#include "skin_files.h"

namespace {

// The simulator's own registry key.
const KeyPath kChoice{HKEY_CURRENT_USER, u"Software\\Simulator"};
constexpr char16_t kChosenName[] = u"ChosenSkin";
constexpr char16_t kStandInPath[] = u"StandIn";

bool AreSame(const std::u16string& name, const std::u16string& other) {
    return lstrcmpiW(name.c_str(), other.c_str()) == 0;
}

// The file name without its extension.
std::u16string FileName(std::u16string_view path) {
    path.remove_prefix(path.find_last_of(u'\\') + 1);
    return std::u16string(path.substr(0, path.size() - std::min<std::size_t>(path.size(), 4)));
}

bool IsSideOfScreen(std::u16string_view text) {
    return (text.size() == 3 || text.size() == 4) &&
           std::all_of(
               text.begin(), text.end(), [](char16_t digit) { return digit >= u'0' && digit <= u'9'; });
}

void Write(const char16_t* name, const std::u16string& text) {
    if (WriteRegistryValue(kChoice, name, RegistryValue::FromText(text)) != ERROR_SUCCESS)
        throw ScriptError("the choice of the skin cannot be saved");
}

}  // namespace

std::u16string PlainSkinName(std::u16string_view path) {
    const std::u16string name = FileName(path);
    const std::size_t dash = name.find_last_of(u'-');
    if (dash == name.npos) return name;
    const std::u16string_view size = std::u16string_view(name).substr(dash + 1);
    const std::size_t cross = size.find(u'x');
    const bool sized =
        cross != size.npos && IsSideOfScreen(size.substr(0, cross)) && IsSideOfScreen(size.substr(cross + 1));
    return sized ? name.substr(0, dash) : name;
}

std::string NamesOfSkins() {
    std::string names;
    for (const std::u16string& path : ListSkins()) {
        if (!SuitsScreen(path)) continue;
        names += (names.empty() ? "" : ", ") + unicode::ToUtf8(PlainSkinName(path));
    }
    return names.empty() ? "none" : names;
}

std::u16string ChosenSkin() {
    const std::u16string stored = StoredSkin();
    const std::u16string chosen = ReadRegistryText(kChoice, kChosenName);
    const bool standsIn = !chosen.empty() && ReadRegistryText(kChoice, kStandInPath) == stored;
    return standsIn ? chosen : PlainSkinName(stored);
}

// Keeps a stored skin of this name: the user's skin may have the same name as one in \Windows.
bool ChooseSkin(const std::u16string& name) {
    const std::u16string sized =
        name + u'-' + unicode::FromUtf8(SizeName(ScreenSize())).value_or(std::u16string());
    std::vector<std::u16string> skins = ListSkins();
    std::erase_if(skins, [&](const std::u16string& path) {
        const std::u16string file = FileName(path);
        return (!AreSame(file, name) && !AreSame(file, sized)) || !SuitsScreen(path);
    });
    if (skins.empty()) return false;
    if (std::find(skins.begin(), skins.end(), StoredSkin()) == skins.end()) StoreSkin(skins.front());
    return true;
}

bool KeepChosenSkin(const std::u16string& name) {
    const std::u16string stored = StoredSkin();
    if (AreSame(PlainSkinName(stored), name)) return ForgetStandIn(), false;
    Write(kChosenName, name);
    Write(kStandInPath, stored);
    return true;
}

void ForgetStandIn() {
    DeleteRegistryValue(kChoice, kChosenName);
    DeleteRegistryValue(kChoice, kStandInPath);
}
