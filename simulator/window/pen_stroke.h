// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "actions.h"

// The pen as the mouse, a finger or a pen of the PC moves it; it moves only while it is down. A stroke that
// begins on the panel has the panel's coordinates, any other the screen's.
class PenStroke {
public:
    explicit PenStroke(Session& session) : m_session(session) {}

    // Each returns the command for the event (in pixels of the screen), or none if the handheld does not
    // notice it.
    std::optional<Words> PutDown(POINT point);
    std::optional<Words> Move(POINT point);
    std::optional<Words> Lift(POINT point);

private:
    bool IsOnPanel(POINT point) const;
    Words Command(const char* event, POINT point) const;

    Session& m_session;
    bool m_down = false;
    bool m_onPanel = false;
    POINT m_last{};
};
