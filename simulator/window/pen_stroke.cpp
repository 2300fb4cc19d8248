// SPDX-License-Identifier: MIT
#include "pen_stroke.h"

#include <sip_layout.h>

namespace {

bool IsOver(HWND window, POINT point) {
    RECT area{};
    GetWindowRect(window, &area);
    return PtInRect(&area, point);
}

}  // namespace

std::optional<Words> PenStroke::PutDown(POINT point) {
    const SIZE size = ScreenSize();
    const RECT screen{0, 0, size.cx, size.cy};
    if (!PtInRect(&screen, point)) return std::nullopt;
    m_down = true;
    m_last = point;
    m_onPanel = IsOnPanel(point);
    const bool twice = host::RecognizePen(host::Pen::Down, point) == host::Pen::DoubleClick;
    return Command(twice ? "dblclk" : "down", point);
}

std::optional<Words> PenStroke::Move(POINT point) {
    if (!m_down || (point.x == m_last.x && point.y == m_last.y)) return std::nullopt;
    m_last = point;
    return Command("move", point);
}

std::optional<Words> PenStroke::Lift(POINT point) {
    if (!m_down) return std::nullopt;
    m_down = false;
    return Command("up", point);
}

// An open menu or list has the capture and so gets the pen wherever it goes down.
bool PenStroke::IsOnPanel(POINT point) const {
    const SipShell& sip = m_session.Sip();
    const HWND panel = sip.Panel();
    if (!panel || !IsWindowVisible(panel)) return false;
    const HWND capture = GetCapture();
    if (capture) return capture == panel;
    return IsOver(sip.Window(), point) && IsOver(panel, point);
}

Words PenStroke::Command(const char* event, POINT point) const {
    Words words;
    if (m_onPanel) {
        const HWND panel = m_session.Sip().Panel();
        ScreenToClient(panel ? panel : m_session.Sip().Window(), &point);
    } else {
        words.push_back("pen");
    }
    words.insert(words.end(), {event, std::to_string(point.x), std::to_string(point.y)});
    return words;
}
