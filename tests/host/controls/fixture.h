// SPDX-License-Identifier: MIT
// Runs modal windows for tests: the user's actions are steps, one whenever no message is waiting.
#pragma once

#include <host_control.h>

#include <memory>
#include <string>

#include "controls/control.h"
#include "controls/dialog.h"
#include "windows/recorder.h"

namespace test {

struct Command {
    int id;
    int code;
    bool operator==(const Command&) const = default;
};
using Commands = std::vector<Command>;

class Dialogs : public RecordedWindows {
public:
    std::function<bool(UINT, WPARAM, LPARAM, INT_PTR&)> onDialog;  // sees its messages; true: handled
    Commands commands;
    HWND dialog = nullptr;

protected:
    using Step = std::function<void()>;

    void SetUp() override {
        RecordedWindows::SetUp();
        m_current = this;
        m_edit = Create({0, 0, 240, 100}, m_desktop);
        SetFocus(m_edit);
    }
    void TearDown() override {
        host::SetIdleHandler(nullptr);
        RecordedWindows::TearDown();
        m_current = nullptr;
    }

    // Controls are placed one below the other, 200 x 24 pixels each, at x 20, from y 30 on, 30 apart.
    void Add(const WCHAR* className, int id, DWORD style, const WCHAR* text = TEXT(""), int height = 24) {
        host::ControlTemplate control;
        control.style = WS_CHILD | WS_VISIBLE | style;
        control.place = {20, 30 + 30 * static_cast<int>(m_layout.controls.size()), 200, height};
        control.id = static_cast<WORD>(id);
        control.className = className;
        control.text = text;
        m_layout.controls.push_back(control);
    }
    HWND CreateSip(LONG top) { return CreateTop({0, top, 240, top + 80}, TEXT("Plain"), WS_EX_TOPMOST); }

    // Runs the dialog on the whole screen; IDOK and IDCANCEL end it. After the last step its loop gets
    // WM_QUIT, which is then dropped.
    INT_PTR Run(std::vector<Step> steps = {}) {
        const INT_PTR result = RunUntilQuit(std::move(steps));
        TakeQuit();
        return result;
    }

    // Like Run, but keeps the WM_QUIT.
    INT_PTR RunUntilQuit(std::vector<Step> steps) {
        m_layout.place = {0, 0, 240, 320};
        m_layout.style = WS_POPUP;
        Follow(std::move(steps));
        return host::RunModal({m_layout, nullptr, m_desktop, nullptr, HandleMessage, 42});
    }

    // The code of a pending WM_QUIT, -1 for none. Delivers all messages.
    static int TakeQuit() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
            DispatchMessageW(&message);
        }
        return -1;
    }

    static void Follow(std::vector<Step> steps) {
        const auto next = std::make_shared<std::size_t>(0);  // shared by copies of the handler
        host::SetIdleHandler([steps = std::move(steps), next] {
            if (*next == steps.size()) return false;
            steps[(*next)++]();
            return true;
        });
    }

    // A control of the topmost dialog; 0 is the dialog itself.
    virtual HWND Item(int id) const {
        const HWND topmost = host::TopmostModalWindow();
        return id == 0 ? topmost : GetDlgItem(topmost, id);
    }
    static int FocusedId() { return GetDlgCtrlID(GetFocus()); }
    Commands TakeCommands() { return std::exchange(commands, {}); }

    static void Key(UINT virtualKey) {
        host::PostKey(virtualKey, true);
        host::PostKey(virtualKey, false);
    }

    // Taps in the middle of a window, or at a point in it. Does nothing if the window is gone.
    static void Tap(HWND window) {
        RECT client{};
        GetClientRect(window, &client);
        Tap(window, {client.right / 2, client.bottom / 2});
    }
    static void Tap(HWND window, POINT point) {
        Pen(host::Pen::Down, window, point);
        Pen(host::Pen::Up, window, point);
    }
    static void Pen(host::Pen event, HWND window, POINT point) {
        if (ClientToScreen(window, &point)) host::PostPen(event, point);
    }

    // The same as steps.
    static Step Press(UINT virtualKey) {
        return [virtualKey] { Key(virtualKey); };
    }
    Step TapOn(int id) const {
        return [this, id] { Tap(Item(id)); };
    }
    Step TapOn(int id, POINT point) const {
        return [this, id, point] { Tap(Item(id), point); };
    }
    Step PenOn(host::Pen event, int id, POINT point) const {
        return [=, this] { Pen(event, Item(id), point); };
    }

    host::DialogTemplate m_layout;
    HWND m_edit = nullptr;  // has the focus before and after

private:
    static INT_PTR CALLBACK HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        Dialogs& test = *m_current;
        if (message == WM_DESTROY) test.dialog = nullptr;
        if (message == WM_INITDIALOG) test.dialog = window;
        if (message == WM_COMMAND) test.commands.push_back({LOWORD(wParam), HIWORD(wParam)});
        INT_PTR result = TRUE;
        if (test.onDialog && test.onDialog(message, wParam, lParam, result)) return result;
        if (message == WM_INITDIALOG) return TRUE;
        if (message != WM_COMMAND || LOWORD(wParam) > IDCANCEL) return FALSE;
        return EndDialog(window, LOWORD(wParam));
    }

    inline static Dialogs* m_current = nullptr;
};

}  // namespace test
