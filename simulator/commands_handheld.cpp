// SPDX-License-Identifier: MIT
// Commands for skins, notes and the time.
#include <sip_layout.h>
#include <unicode.h>

#include <algorithm>

#include "chosen_skin.h"
#include "commands.h"
#include "notes_file.h"
#include "script.h"
#include "session.h"
#include "skin_files.h"

namespace {

void Skins(Session&, const Arguments& arguments) { InstallSkins(arguments.Text(0), ScreenSize()); }

// Makes a selected keyboard load the stored skin and redraw.
void ApplySkin(Session& session) {
    if (!session.Sip().IsSelected()) return;
    session.Sip().SendSipInfo();
    if (const HWND panel = session.Sip().Panel()) InvalidateRect(panel, nullptr, TRUE);
}

void PutSkinFile(Session&, const Arguments& arguments) { PutSkin(arguments.Text(0)); }

void ChooseSkinNamed(Session& session, const Arguments& arguments) {
    if (!ChooseSkin(arguments.Wide(0))) {
        throw ScriptError("there is no skin \"" + arguments.Text(0) + "\" for a screen of " +
                          SizeName(ScreenSize()) + "; there are: " + NamesOfSkins());
    }
    ForgetStandIn();
    ApplySkin(session);
}

void PreferSkins(Session& session, const Arguments& arguments) {
    for (std::size_t i = 0; i < arguments.Count(); ++i)
        if (ChooseSkin(arguments.Wide(i))) return ApplySkin(session);
}

void KeepSkin(Session&, const Arguments& arguments) {
    if (!KeepChosenSkin(arguments.Wide(0))) return;
    const std::string standIn = unicode::ToUtf8(PlainSkinName(StoredSkin()));
    Note("There is no skin \"" + arguments.Text(0) + "\" for this screen" +
         (IsSkinLoaded() ? "; \"" + standIn + "\" stands in for it." : "."));
}

void NextSkin(Session& session, const Arguments&) {
    std::vector<std::u16string> skins = ListSkins();
    std::erase_if(skins, [](const std::u16string& path) { return !SuitsScreen(path); });
    const std::u16string present = StoredSkin();
    auto next = std::find(skins.begin(), skins.end(), present);
    if (next != skins.end()) ++next;
    if (next == skins.end()) next = skins.begin();
    if (skins.empty() || *next == present) return Note("There is no other skin for this screen.");
    StoreSkin(*next);
    ForgetStandIn();
    ApplySkin(session);
}

void Notes(Session& session, const Arguments&) { session.GetApplication().SetText(ReadNotes()); }

void Time(Session& session, const Arguments& arguments) {
    session.GetApplication().SetTime(arguments.Wide(0));
}

constexpr Command kCommands[] = {
    {"skins", "FOLDER", 1, 1, Skins},
    {"skin next", "", 0, 0, NextSkin},
    {"skin put", "FILE", 1, 1, PutSkinFile},
    {"skin choose", "NAME", 1, 1, ChooseSkinNamed},
    {"skin prefer", "NAME...", 1, kAnyNumber, PreferSkins},
    {"skin keep", "NAME", 1, 1, KeepSkin},
    {"notes", "", 0, 0, Notes},
    {"time", "TEXT", 1, 1, Time},
};

}  // namespace

std::span<const Command> HandheldCommands() { return kCommands; }
