// SPDX-License-Identifier: MIT
// The skins on the device, as a person who has many would keep them.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

// The screen's narrow and wide side: "240x320".
std::string SizeName(SIZE screen);

// Puts the skins made for this screen into \Windows, in the place of those for other screens. `folder` holds
// a folder of skins for each screen, named as SizeName does; what only the others hold is taken away. Throws
// ScriptError, having done nothing, when there are none for this screen; also when the host does not let it.
void InstallSkins(const std::filesystem::path& folder, SIZE screen);

// Puts this host file into \Windows. Throws ScriptError when it is no skin.
void PutSkin(const std::filesystem::path& file);

// Would the keyboard take this one? It wants a picture as wide as the screen's narrow side.
bool SuitsScreen(const std::u16string& path);
// As the keyboard discovers them: those in \Windows, then the ones that the user added.
std::vector<std::u16string> ListSkins();
// Has the keyboard loaded one? It takes none of a wrong size.
bool IsSkinLoaded();
// What the setting names; empty where there is none.
std::u16string StoredSkin();
void StoreSkin(const std::u16string& path);
