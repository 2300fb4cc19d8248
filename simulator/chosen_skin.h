// SPDX-License-Identifier: MIT
// The skin that a person chose holds on every screen: a skin is made for one size, so the choice is a name
// without it. "german" is the file german.tlk or, on a screen of 240 x 320, german-240x320.tlk. Where a
// screen has no such skin another one stands in for it, and the choice is kept in the device's registry.
#pragma once

#include <string>
#include <vector>

// Of a skin's path or file name: without folder, extension and size.
std::u16string PlainSkinName(std::u16string_view path);
// Of those that suit the screen, for a message.
std::string NamesOfSkins();

// What the person chose, wherever it is; empty when nothing has been chosen.
std::u16string ChosenSkin();
// Stores the skin of this name that is made for the present screen; false when there is none.
[[nodiscard]] bool ChooseSkin(const std::u16string& name);
// What the setting names now stands in for the skin of this name; false when it is that skin.
bool KeepChosenSkin(const std::u16string& name);
// What the setting names is what the person chose.
void ForgetStandIn();
