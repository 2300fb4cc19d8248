// SPDX-License-Identifier: MIT
// Modal dialogs: the dialog's window, what it changes around it while it stands, and its message loop.
#pragma once

#include <memory>

#include "controls/control.h"
#include "controls/dialog_template.h"

namespace host {

inline constexpr WCHAR kDialogClass[] = u"#32770";

// What a modal window changes around it, set right again however it ends.
class ModalState {
public:
    // Disables the owner's top-level window and notes the focus. The owner may be null.
    explicit ModalState(HWND owner);
    ~ModalState() { Leave(); }
    ModalState(const ModalState&) = delete;
    ModalState& operator=(const ModalState&) = delete;

    void SetDialog(HWND dialog) { m_dialog = dialog; }
    // Enables the owner and gives the focus back, unless somebody else has taken it. Once more does no harm,
    // and is needed where the dialog ended while another one lay over it.
    void Leave();

private:
    void RestoreFocus() const;

    HWND m_owner = nullptr;
    HWND m_dialog = nullptr;
    HWND m_previousFocus;
    bool m_ownerDisabled = false;  // by this object
};

// The window of a dialog: asks its procedure first, does the rest itself.
class Dialog final : public SystemWindow {
public:
    using SystemWindow::SystemWindow;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LONG_PTR* FindLong(int index) override;

    // From here on the procedure gets the messages.
    void Start(DLGPROC procedure, std::shared_ptr<ModalState> state);
    // Sends WM_INITDIALOG and sets the focus.
    void Init(LPARAM parameter);
    void Run();
    void End(INT_PTR result);
    bool HasEnded() const { return m_ended || !IsAlive(); }
    // -1 when the dialog was destroyed before it ended.
    INT_PTR Result() const { return m_ended ? m_result : -1; }

private:
    void Wake();
    LRESULT DoDefault(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT SendCommand(HWND control, int id);
    // True when the message was the dialog's own (dialog_keys.cpp).
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

// The control that Tab goes to from this one (null: from before the first); null when there is none.
enum class TabOrder { Forward, Backward };
HWND FindTabStop(HWND dialog, HWND from, TabOrder order);

// For whom the windows of a dialog are made.
enum class Maker { Caller, Platform };

struct ModalRequest {
    const DialogTemplate& layout;  // in pixels
    HFONT font = nullptr;          // has to outlive the dialog; null: the system font
    HWND owner = nullptr;
    HINSTANCE instance = nullptr;  // whose classes the controls may have
    DLGPROC procedure = nullptr;
    LPARAM parameter = 0;
    Maker maker = Maker::Caller;
};

// Makes the dialog and runs it until it ends. -1, with the last error and nothing left, when it cannot be
// made.
INT_PTR RunModal(const ModalRequest& request);

// A font of this size in typographic points, for this screen's resolution. Owns the handle, which is null
// when the font cannot be made; the layer's own.
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
