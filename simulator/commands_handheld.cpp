// SPDX-License-Identifier: MIT
// What a person at the handheld changes about it: its skins and its time.
#include <sip_layout.h>

#include <algorithm>

#include "commands.h"
#include "session.h"
#include "skin_files.h"

namespace {

void Skins(Session&, const Arguments& arguments) { InstallSkins(arguments.Text(0), ScreenSize()); }

// A keyboard that has been given another skin waits until it is shown again.
void DrawPanelAnew(Session& session) {
    if (const HWND panel = session.Sip().Panel()) InvalidateRect(panel, nullptr, TRUE);
}

// The keyboard puts a valid skin in the place of one that does not suit the screen: then it is the turn of
// the one behind that.
void NextSkin(Session& session, const Arguments&) {
    std::vector<std::u16string> skins = ListSkins();
    const std::u16string present = StoredSkin();
    const auto current = std::find_if(skins.begin(), skins.end(), [&present](const std::u16string& path) {
        return path.find(present) != std::u16string::npos;
    });
    if (!present.empty() && current != skins.end()) std::rotate(skins.begin(), current + 1, skins.end());
    for (const std::u16string& skin : skins) {
        if (skin == present) continue;
        StoreSkin(skin);
        session.Sip().SendSipInfo();
        if (StoredSkin() == skin) return DrawPanelAnew(session);
    }
    Note("There is no other skin for this screen.");
}

void Time(Session& session, const Arguments& arguments) {
    session.GetApplication().SetTime(arguments.Wide(0));
}

constexpr Command commands[] = {
    {"skins", "FOLDER", 1, 1, Skins},
    {"skin next", "", 0, 0, NextSkin},
    {"time", "TEXT", 1, 1, Time},
};

}  // namespace

std::span<const Command> HandheldCommands() { return commands; }
