// SPDX-License-Identifier: MIT
// The Software Input Panel from its driver's side: its window, and the calls that it makes on an input
// method. Win32 and COM alone, so that the same shell drives the input method on every platform.
#pragma once

#include <sip.h>

#include <memory>

class SipCallback;
class SipWindow;

// The calls of which nothing but the result is worth reporting.
enum class SipCall { Create, Select, Deselect, Showing, Hiding, RegisterCallback, UserOptionsDlg };

// Hears of every call in either direction at its moment: calls on the input method when they return, calls of
// the input method when they are made.
class SipObserver {
public:
    virtual ~SipObserver() = default;
    virtual void OnCall(SipCall call, HRESULT result) = 0;
    virtual void OnGetInfo(HRESULT result, const IMINFO& info) = 0;
    virtual void OnReceiveSipInfo(HRESULT result, const SIPINFO& info) = 0;
    virtual void OnShowIM(DWORD flags) = 0;
    virtual void OnSetCurrentIM(REFCLSID clsid) = 0;
    virtual void OnSendVirtualKey(BYTE virtualKey, DWORD flags) = 0;
    // Both arrays hold count elements.
    virtual void OnSendCharEvents(UINT virtualKey, UINT keyFlags, UINT count, const UINT* shiftStates,
                                  const UINT* characters) = 0;
};

// Where the keys of the input method go: the focused application.
class SipKeySink {
public:
    virtual ~SipKeySink() = default;
    virtual void SendVirtualKey(BYTE virtualKey, DWORD flags) = 0;
    virtual void SendCharEvent(UINT virtualKey, UINT shiftState, WCHAR character) = 0;
};

enum class SipVisibility { Hidden, Shown };
enum class SipCallbackUse { Registered, None };

// One shell at a time exists in a process; it answers SipShowIM, SipGetCurrentIM and SipSetCurrentIM. Calls
// on the input method return its own result, or E_UNEXPECTED without reporting anything when there is none.
class SipShell {
public:
    struct Options {
        HINSTANCE instance = nullptr;  // owner of the window class
        CLSID inputMethod{};           // what it creates until SwitchTo
        SipObserver* observer = nullptr;
        SipKeySink* keys = nullptr;
    };

    // Makes the SIP window, hidden, laid out for the present screen. Null when the window cannot be made.
    // Observer and sink outlive the shell.
    static std::unique_ptr<SipShell> Create(const Options& options);
    ~SipShell();
    SipShell(const SipShell&) = delete;
    SipShell& operator=(const SipShell&) = delete;
    // The shell of this process, null when none stands.
    static SipShell* Current();

    // Makes the object through COM and asks for IInputMethod2. An object held so far is released on success.
    HRESULT CreateInputMethod();
    void ReleaseInputMethod();
    bool HasInputMethod() const { return m_object != nullptr; }
    bool IsSelected() const { return m_selected; }
    // A call on the input method has not returned: it must not be released now.
    bool IsCalling() const { return m_callDepth > 0; }

    // Select, GetInfo, RegisterCallback, ReceiveSipInfo, then the window is shown and Showing called; from
    // then on the class is the current input method. Returns what Select returned; after a failure it ends
    // there.
    HRESULT Select();
    HRESULT Deselect();
    // Creates another input method, takes leave of the present one and selects the new one, which this shell
    // creates from then on. When it cannot be created, that is the result and everything stays.
    HRESULT SwitchTo(REFCLSID clsid);
    HRESULT RegisterCallback(SipCallbackUse use);
    // Shows or hides the window, then calls Showing or Hiding of an input method that has been created.
    HRESULT SetVisibility(SipVisibility visibility);
    // ReceiveSipInfo with the window's present rectangle.
    HRESULT SendSipInfo();
    HRESULT OpenOptions(HWND parent);
    // GetInfo without a report, for whoever shows the button. E_UNEXPECTED without an input method.
    HRESULT ReadInfo(IMINFO& info);

    // Lays the window out for the present screen, as high as it was; a selected input method is told.
    void OnScreenChanged();
    // Screen coordinates; the input method is not told.
    void MoveTo(const RECT& rectangle);

    HWND Window() const;
    HWND Panel() const;  // the input method's window; null when there is none
    // What the SIP and the bars leave of the screen.
    RECT VisibleDesktop() const;

    // The shell calls of the input method.
    BOOL ShowIM(DWORD flags);
    CLSID CurrentIM() const { return m_current; }
    CLSID InputMethod() const { return m_options.inputMethod; }
    void SetCurrentIM(REFCLSID clsid);

private:
    SipShell(const Options& options, std::unique_ptr<SipWindow> window);
    HRESULT GetInfo();

    // Makes one call on the object, which exists, and returns its result. Calls nest: a dialog of the input
    // method runs inside one.
    template <typename Function>
    HRESULT Call(Function function);
    // As Call, and reports the result.
    template <typename Function>
    HRESULT ReportedCall(SipCall name, Function function);

    Options m_options;
    std::unique_ptr<SipWindow> m_window;
    std::unique_ptr<SipCallback> m_callback;
    IInputMethod2* m_object = nullptr;  // one reference
    CLSID m_current;
    bool m_selected = false;
    int m_callDepth = 0;
};
