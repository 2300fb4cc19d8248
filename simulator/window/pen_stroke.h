// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "acts.h"

// The pen as the mouse, a finger or a pen of the PC moves it: between its strokes it is away from the screen,
// so that only a pen that is down moves. A stroke that begins on the panel stands in the panel's coordinates,
// any other in the screen's.
class PenStroke {
public:
    explicit PenStroke(Session& session) : m_session(session) {}

    // In pixels of the screen. Each event's command; none where the handheld notices nothing.
    std::optional<Words> PutDown(POINT point);
    std::optional<Words> Move(POINT point);
    std::optional<Words> Lift(POINT point);

private:
    bool IsOnPanel(POINT point) const;
    Words Act(const char* event, POINT point) const;

    Session& m_session;
    bool m_down = false;
    bool m_onPanel = false;
    POINT m_last{};
};
