// SPDX-License-Identifier: MIT
// Commands for the screen, the text field and the device's files.
#include "commands.h"
#include "device_files.h"
#include "png_file.h"
#include "session.h"
#include "text.h"

namespace {

void Text(Session& session, const Arguments&) {
    session.GetTrace().Write("Text " + Quoted(session.GetApplication().FocusedText()));
}

void Screenshot(Session&, const Arguments& arguments) {
    const host::ScreenView screen = host::Screen();
    const RECT all{0, 0, screen.width, screen.height};
    WritePng(arguments.Text(0), screen, all, all);
}

// A window's client area in screen coordinates.
RECT ClientOnScreen(HWND window) {
    RECT r{};
    GetClientRect(window, &r);
    POINT corner{};
    ClientToScreen(window, &corner);
    return {r.left + corner.x, r.top + corner.y, r.right + corner.x, r.bottom + corner.y};
}

void ScreenshotPanel(Session& session, const Arguments& arguments) {
    const HWND panel = session.Sip().Panel();
    if (!panel) return Note("There is no panel to take a picture of.");
    const bool shown = IsWindowVisible(panel) != FALSE;
    WritePng(arguments.Text(0), host::Screen(), ClientOnScreen(panel),
             shown ? ClientOnScreen(session.Sip().Window()) : RECT{});
}

void NoteMissing(const Arguments& arguments, bool found) {
    if (!found) Note("The device has no file " + arguments.Text(0) + '.');
}

void Delete(Session&, const Arguments& arguments) {
    NoteMissing(arguments, DeleteDeviceFile(arguments.Wide(0)));
}

template <FileAccess access>
void SetAccess(Session&, const Arguments& arguments) {
    NoteMissing(arguments, SetDeviceFileAccess(arguments.Wide(0), access));
}

void Renew(Session&, const Arguments& arguments) { RenewDeviceFile(arguments.Wide(0), arguments.Text(1)); }

constexpr Command kCommands[] = {
    {"text", "", 0, 0, Text},
    {"screenshot panel", "FILE", 1, 1, ScreenshotPanel},
    {"screenshot", "[panel] FILE", 1, 1, Screenshot},
    {"delete", "PATH", 1, 1, Delete},
    {"readonly", "PATH", 1, 1, SetAccess<FileAccess::ReadOnly>},
    {"writable", "PATH", 1, 1, SetAccess<FileAccess::Writable>},
    {"renew", "PATH FILE", 2, 2, Renew},
};

}  // namespace

std::span<const Command> DeviceCommands() { return kCommands; }
