// SPDX-License-Identifier: MIT
// Commands for the Software Input Panel.
#include <string>

#include "commands.h"
#include "session.h"

namespace {

bool HasInputMethod(Session& session) {
    if (session.Sip().HasInputMethod()) return true;
    Note(R"(There is no input method to call: "create" or "select" comes first.)");
    return false;
}

void Create(Session& session, const Arguments&) { session.CreateInputMethod(); }

void Select(Session& session, const Arguments&) { session.SelectInputMethod(); }

void Deselect(Session& session, const Arguments&) {
    if (HasInputMethod(session)) session.Sip().Deselect();
}

template <SipCallbackUse use>
void Callback(Session& session, const Arguments&) {
    if (HasInputMethod(session)) session.Sip().RegisterCallback(use);
}

template <SipVisibility visibility>
void SetVisibility(Session& session, const Arguments&) {
    session.Sip().SetVisibility(visibility);
}

void Info(Session& session, const Arguments&) {
    if (HasInputMethod(session)) session.Sip().SendSipInfo();
}

void Screen(Session& session, const Arguments& arguments) {
    constexpr int greatest = 4096;
    session.SetScreenSize({arguments.Number(0, 1, greatest), arguments.Number(1, 1, greatest)});
}

void MoveSip(Session& session, const Arguments& arguments) {
    session.Sip().MoveTo(
        {arguments.Pixels(0), arguments.Pixels(1), arguments.Pixels(2), arguments.Pixels(3)});
}

// The window's rectangle in the client coordinates of another one, or of the screen for null.
std::string Describe(HWND window, HWND space) {
    RECT r{};
    GetWindowRect(window, &r);
    POINT corner{r.left, r.top};
    if (space) ScreenToClient(space, &corner);
    const bool shown = (static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)) & WS_VISIBLE) != 0;
    return std::to_string(corner.x) + ' ' + std::to_string(corner.y) + ' ' +
           std::to_string(r.right - r.left) + ' ' + std::to_string(r.bottom - r.top) +
           (shown ? " shown=1" : " shown=0");
}

void Windows(Session& session, const Arguments&) {
    const HWND sip = session.Sip().Window();
    const HWND panel = session.Sip().Panel();
    session.GetTrace().Write("Window sip " + Describe(sip, nullptr));
    session.GetTrace().Write("Window panel " + (panel ? Describe(panel, sip) : "none"));
}

constexpr Command kCommands[] = {
    {"create", "", 0, 0, Create},
    {"select", "", 0, 0, Select},
    {"deselect", "", 0, 0, Deselect},
    {"callback on", "", 0, 0, Callback<SipCallbackUse::Registered>},
    {"callback off", "", 0, 0, Callback<SipCallbackUse::None>},
    {"show", "", 0, 0, SetVisibility<SipVisibility::Shown>},
    {"hide", "", 0, 0, SetVisibility<SipVisibility::Hidden>},
    {"info", "", 0, 0, Info},
    {"screen", "W H", 2, 2, Screen},
    {"sip", "L T R B", 4, 4, MoveSip},
    {"windows", "", 0, 0, Windows},
};

}  // namespace

std::span<const Command> SipCommands() { return kCommands; }
