// SPDX-License-Identifier: MIT
// The skins on the device.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

// The screen's narrow and wide side: "240x320".
std::string SizeName(SIZE screen);

// Copies the skins for this screen to \Windows and removes those that are only in other screens' folders.
// `folder` has a folder of skins for each screen, named as by SizeName. Throws ScriptError, without a change
// if there are no skins for this screen, and if the host refuses.
void InstallSkins(const std::filesystem::path& folder, SIZE screen);

// Copies this host file to \Windows. Throws ScriptError if it is no skin.
void PutSkin(const std::filesystem::path& file);

// Would the keyboard accept this skin? Its picture must be as wide as the screen's narrow side.
bool SuitsScreen(const std::u16string& path);
// In the keyboard's order: those in \Windows, then those that the user added.
std::vector<std::u16string> ListSkins();
// Has the keyboard loaded a skin? It loads none of a wrong size.
bool IsSkinLoaded();
// The text of the setting; empty if there is none.
std::u16string StoredSkin();
void StoreSkin(const std::u16string& path);
