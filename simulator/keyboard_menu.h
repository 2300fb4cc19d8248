// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "application.h"
#include "input_methods.h"

class Session;

// What the platform does when the keyboard button or its menu is tapped: it shows or hides the SIP, opens the
// options, and changes the input method.
class KeyboardMenu final : public KeyboardSwitch {
public:
    explicit KeyboardMenu(Session& session) : m_session(session) {}

    void ToggleKeyboard() override;
    std::vector<MenuItem> MenuItems() override;
    void ChooseKeyboardItem(UINT id) override;

private:
    void Choose(const RegisteredInputMethod& method);

    Session& m_session;
    std::vector<RegisteredInputMethod> m_listed;  // in the menu that was opened last
};
