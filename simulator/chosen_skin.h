// SPDX-License-Identifier: MIT
// The user's choice of a skin applies to every screen. As a skin is made for one size, the choice is a name
// without the size: "german" is german.tlk or, on a screen of 240 x 320, german-240x320.tlk. On a screen
// without such a skin another one stands in for it, and the choice is kept in the device's registry.
#pragma once

#include <string>
#include <vector>

// The name of a skin, from its path or file name: without folder, extension and size.
std::u16string PlainSkinName(std::u16string_view path);
// The names of the skins that suit the screen, for a message.
std::string NamesOfSkins();

// The name that the user chose, even if another skin stands in for it; empty if none was chosen.
std::u16string ChosenSkin();
// Stores the skin of this name for the present screen in the settings; false if there is none.
[[nodiscard]] bool ChooseSkin(const std::u16string& name);
// Lets the present skin stand in for the skin of this name; false if it is that skin.
bool KeepChosenSkin(const std::u16string& name);
// Makes the present skin the user's choice.
void ForgetStandIn();
