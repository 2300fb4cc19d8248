// SPDX-License-Identifier: MIT
// The Software Input Panel from its driver's side: its window, and its calls to an input method. Uses only
// Win32 and COM, so that the same shell drives the input method on every platform.
#pragma once

#include <sip.h>

#include <memory>

class SipCallback;
class SipWindow;

// The calls of which only the result is reported.
enum class SipCall { Create, Select, Deselect, Showing, Hiding, RegisterCallback, UserOptionsDlg };

// Is told of every call: of those to the input method when they return, of those by the input method when
// they are made.
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

// Receives the keys of the input method for the focused application.
class SipKeySink {
public:
    virtual ~SipKeySink() = default;
    virtual void SendVirtualKey(BYTE virtualKey, DWORD flags) = 0;
    virtual void SendCharEvent(UINT virtualKey, UINT shiftState, WCHAR character) = 0;
};

enum class SipVisibility { Hidden, Shown };
enum class SipCallbackUse { Registered, None };

// A process has one shell at a time, which implements SipShowIM, SipGetCurrentIM and SipSetCurrentIM. Calls
// to the input method return its result, or E_UNEXPECTED without a report if there is none.
class SipShell {
public:
    struct Options {
        HINSTANCE instance = nullptr;  // owner of the window class
        CLSID inputMethod{};           // created until SwitchTo names another one
        SipObserver* observer = nullptr;
        SipKeySink* keys = nullptr;
    };

    // Creates the SIP window, hidden, laid out for the present screen; null on failure. Observer and sink
    // must outlive the shell.
    static std::unique_ptr<SipShell> Create(const Options& options);
    ~SipShell();
    SipShell(const SipShell&) = delete;
    SipShell& operator=(const SipShell&) = delete;
    // The shell of this process; null if there is none.
    static SipShell* Current();

    // Creates the object through COM and queries IInputMethod2. On success releases the object held so far.
    HRESULT CreateInputMethod();
    void ReleaseInputMethod();
    bool HasInputMethod() const { return m_object != nullptr; }
    bool IsSelected() const { return m_selected; }
    // True during a call to the input method, which must not be released then.
    bool IsCalling() const { return m_callDepth > 0; }

    // Calls Select, GetInfo, RegisterCallback and ReceiveSipInfo, shows the window and calls Showing; the
    // class is then the current input method. Returns the result of Select; if that fails, nothing else is
    // called.
    HRESULT Select();
    HRESULT Deselect();
    // Creates another input method, deselects the present one and selects the new one, which this shell
    // creates from then on. If it cannot be created, returns the error and changes nothing.
    HRESULT SwitchTo(REFCLSID clsid);
    HRESULT RegisterCallback(SipCallbackUse use);
    // Shows or hides the window, then calls Showing or Hiding of an input method that has been created.
    HRESULT SetVisibility(SipVisibility visibility);
    // ReceiveSipInfo with the window's present rectangle.
    HRESULT SendSipInfo();
    HRESULT OpenOptions(HWND parent);
    // GetInfo without a report, for showing the button.
    HRESULT ReadInfo(IMINFO& info);

    // Lays the window out for the present screen, as high as before, and tells a selected input method.
    void OnScreenChanged();
    // Screen coordinates. Does not tell the input method.
    void MoveTo(const RECT& rectangle);

    HWND Window() const;
    HWND Panel() const;  // the input method's window; null when there is none
    // The screen without the SIP and the bars.
    RECT VisibleDesktop() const;

    // The shell calls of the input method.
    BOOL ShowIM(DWORD flags);
    CLSID CurrentIM() const { return m_current; }
    CLSID InputMethod() const { return m_options.inputMethod; }
    void SetCurrentIM(REFCLSID clsid);

private:
    SipShell(const Options& options, std::unique_ptr<SipWindow> window);
    HRESULT GetInfo();

    // Makes a call to the object, which must exist. Calls nest: a dialog of the input method runs inside one.
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
