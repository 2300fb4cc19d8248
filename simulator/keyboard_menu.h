// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "application.h"
#include "input_methods.h"

class Session;

// The keyboard button and its menu, as on the platform: show or hide the SIP, open the options, change the
// input method.
class KeyboardMenu final : public KeyboardSwitch {
public:
    explicit KeyboardMenu(Session& session) : m_session(session) {}

    void ToggleKeyboard() override;
    std::vector<MenuItem> MenuItems() override;
    void ChooseKeyboardItem(UINT id) override;

private:
    void Choose(const RegisteredInputMethod& method);

    Session& m_session;
    std::vector<RegisteredInputMethod> m_listed;  // in the last menu
};
