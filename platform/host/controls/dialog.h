// SPDX-License-Identifier: MIT
// Modal dialogs: the window, the changes to other windows while it is open, and its message loop.
#pragma once

#include <memory>

#include "controls/control.h"
#include "controls/dialog_template.h"

namespace host {

inline constexpr WCHAR kDialogClass[] = u"#32770";

// The changes that a modal window makes to other windows; undone however it ends.
class ModalState {
public:
    // Disables the owner's top-level window and remembers the focus. The owner may be null.
    explicit ModalState(HWND owner);
    ~ModalState() { Leave(); }
    ModalState(const ModalState&) = delete;
    ModalState& operator=(const ModalState&) = delete;

    void SetDialog(HWND dialog) { m_dialog = dialog; }
    // Enables the owner and restores the focus, unless another window has taken it. May be called again,
    // which is needed if the dialog ended below another one.
    void Leave();

private:
    void RestoreFocus() const;

    HWND m_owner = nullptr;
    HWND m_dialog = nullptr;
    HWND m_previousFocus;
    bool m_ownerDisabled = false;  // by this object
};

// The window of a dialog: its procedure sees each message first.
class Dialog final : public SystemWindow {
public:
    using SystemWindow::SystemWindow;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LONG_PTR* FindLong(int index) override;

    // From now on the procedure gets the messages.
    void Start(DLGPROC procedure, std::shared_ptr<ModalState> state);
    // Sends WM_INITDIALOG and sets the focus.
    void Init(LPARAM parameter);
    void Run();
    void End(INT_PTR result);
    bool HasEnded() const { return m_ended || !IsAlive(); }
    // -1 if the dialog was destroyed before it ended.
    INT_PTR Result() const { return m_ended ? m_result : -1; }

private:
    void Wake();
    LRESULT DoDefault(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT SendCommand(HWND control, int id);
    // True if the dialog itself used the key (dialog_keys.cpp).
    bool TranslateKey(const MSG& message);
    void PressDefaultButton();
    void CloseLists(const MSG& message);

    LONG_PTR m_messageResult = 0;
    LONG_PTR m_procedure = 0;
    LONG_PTR m_userLong = 0;
    HFONT m_font = nullptr;
    std::shared_ptr<ModalState> m_state;
    INT_PTR m_result = 0;
    bool m_ended = false;
};

// The control that Tab moves to from this one (null: from before the first); null if there is none.
enum class TabOrder { Forward, Backward };
HWND FindTabStop(HWND dialog, HWND from, TabOrder order);

// Who owns the handles of a dialog's windows.
enum class Maker { Caller, Platform };

struct ModalRequest {
    const DialogTemplate& layout;  // in pixels
    HFONT font = nullptr;          // must outlive the dialog; null: the system font
    HWND owner = nullptr;
    HINSTANCE instance = nullptr;  // whose classes the controls may have
    DLGPROC procedure = nullptr;
    LPARAM parameter = 0;
    Maker maker = Maker::Caller;
};

// Creates the dialog and runs it until it ends. -1 and the last error if it cannot be created.
INT_PTR RunModal(const ModalRequest& request);

// A font of this size in points, at this screen's resolution. Owns the handle, which belongs to the layer and
// is null on failure.
class PointFont {
public:
    PointFont(int points, std::u16string_view faceName, LONG weight);
    ~PointFont();
    PointFont(const PointFont&) = delete;
    PointFont& operator=(const PointFont&) = delete;

    HFONT Get() const { return m_font; }

private:
    HFONT m_font = nullptr;
};

// Forgets what SetMessageBoxHandler set (message_box.cpp).
void ResetMessageBoxes();
// The same for the open-file dialog (open_file.cpp).
void ResetOpenFile();

}  // namespace host
