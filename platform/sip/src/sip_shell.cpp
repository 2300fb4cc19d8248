// SPDX-License-Identifier: MIT
#include <sip_layout.h>
#include <sip_shell.h>

#include <utility>

#include "shell_dialogs.h"
#include "sip_callback.h"
#include "sip_window.h"

namespace {

SipShell* g_currentShell = nullptr;

// The platform's standard keyboard, with which a device starts.
const CLSID kStandardKeyboard = {
    0x42429667, 0xAE04, 0x11D0, {0xA4, 0xF8, 0x00, 0xAA, 0x00, 0xA7, 0x49, 0xB9}};

HRESULT CreateObject(REFCLSID clsid, IInputMethod2** object) {
    *object = nullptr;
    void* result = nullptr;
    HRESULT status = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &result);
    if (FAILED(status)) return status;
    auto* unknown = static_cast<IUnknown*>(result);
    status = unknown->QueryInterface(IID_IInputMethod2, &result);
    unknown->Release();
    if (SUCCEEDED(status)) *object = static_cast<IInputMethod2*>(result);
    return status;
}

}  // namespace

std::unique_ptr<SipShell> SipShell::Create(const Options& options) {
    const SIZE screen = ScreenSize();
    auto window = std::make_unique<SipWindow>(options.instance, SipRectangle(screen, FirstSipHeight(screen)));
    if (!window->Handle()) return nullptr;
    return std::unique_ptr<SipShell>(new SipShell(options, std::move(window)));
}

SipShell::SipShell(const Options& options, std::unique_ptr<SipWindow> window)
    : m_options(options),
      m_window(std::move(window)),
      m_callback(std::make_unique<SipCallback>(*options.observer, *options.keys)),
      m_current(kStandardKeyboard) {
    g_currentShell = this;
}

SipShell::~SipShell() {
    ReleaseInputMethod();
    g_currentShell = nullptr;
}

SipShell* SipShell::Current() { return g_currentShell; }

template <typename Function>
HRESULT SipShell::Call(Function function) {
    ++m_callDepth;
    const HRESULT result = function(*m_object);
    --m_callDepth;
    return result;
}

template <typename Function>
HRESULT SipShell::ReportedCall(SipCall name, Function function) {
    if (!m_object) return E_UNEXPECTED;
    const HRESULT result = Call(function);
    m_options.observer->OnCall(name, result);
    return result;
}

HRESULT SipShell::CreateInputMethod() {
    IInputMethod2* object = nullptr;
    const HRESULT result = CreateObject(m_options.inputMethod, &object);
    if (SUCCEEDED(result)) {
        ReleaseInputMethod();
        m_object = object;
    }
    m_options.observer->OnCall(SipCall::Create, result);
    return result;
}

void SipShell::ReleaseInputMethod() {
    m_selected = false;
    if (IInputMethod2* object = std::exchange(m_object, nullptr)) object->Release();
}

HRESULT SipShell::Select() {
    const HRESULT result = ReportedCall(
        SipCall::Select, [this](IInputMethod2& object) { return object.Select(m_window->Handle()); });
    if (FAILED(result)) return result;
    m_selected = true;
    m_current = m_options.inputMethod;
    GetInfo();
    RegisterCallback(SipCallbackUse::Registered);
    SendSipInfo();
    SetVisibility(SipVisibility::Shown);
    return result;
}

HRESULT SipShell::Deselect() {
    const HRESULT result =
        ReportedCall(SipCall::Deselect, [](IInputMethod2& object) { return object.Deselect(); });
    if (SUCCEEDED(result)) m_selected = false;
    return result;
}

HRESULT SipShell::SwitchTo(REFCLSID clsid) {
    IInputMethod2* object = nullptr;
    const HRESULT result = CreateObject(clsid, &object);
    m_options.observer->OnCall(SipCall::Create, result);
    if (FAILED(result)) return result;
    if (m_selected) Deselect();
    ReleaseInputMethod();
    m_object = object;
    m_options.inputMethod = clsid;
    return Select();
}

HRESULT SipShell::ReadInfo(IMINFO& info) {
    info = {};
    info.cbSize = sizeof info;
    info.rcSipRect = m_window->Rectangle();
    return m_object ? Call([&info](IInputMethod2& object) { return object.GetInfo(&info); }) : E_UNEXPECTED;
}

HRESULT SipShell::GetInfo() {
    IMINFO info;
    const HRESULT result = ReadInfo(info);
    m_options.observer->OnGetInfo(result, info);
    return result;
}

HRESULT SipShell::RegisterCallback(SipCallbackUse use) {
    IIMCallback* callback = use == SipCallbackUse::Registered ? m_callback.get() : nullptr;
    return ReportedCall(SipCall::RegisterCallback,
                        [callback](IInputMethod2& object) { return object.RegisterCallback(callback); });
}

HRESULT SipShell::SetVisibility(SipVisibility visibility) {
    if (visibility == SipVisibility::Shown) {
        m_window->Show();
        return ReportedCall(SipCall::Showing, [](IInputMethod2& object) { return object.Showing(); });
    }
    m_window->Hide();
    return ReportedCall(SipCall::Hiding, [](IInputMethod2& object) { return object.Hiding(); });
}

// The input method may change rcSipRect: the observer sees the change, the window does not follow it.
HRESULT SipShell::SendSipInfo() {
    if (!m_object) return E_UNEXPECTED;
    SIPINFO info{};
    info.cbSize = sizeof info;
    info.fdwFlags = SIPF_DOCKED | (m_window->IsShown() ? SIPF_ON : SIPF_OFF);
    info.rcVisibleDesktop = VisibleDesktop();
    info.rcSipRect = m_window->Rectangle();
    const HRESULT result = Call([&info](IInputMethod2& object) { return object.ReceiveSipInfo(&info); });
    m_options.observer->OnReceiveSipInfo(result, info);
    return result;
}

HRESULT SipShell::OpenOptions(HWND parent) {
    return ReportedCall(
        SipCall::UserOptionsDlg, [parent](IInputMethod2& object) { return object.UserOptionsDlg(parent); });
}

void SipShell::OnScreenChanged() {
    const RECT rectangle = m_window->Rectangle();
    MoveTo(SipRectangle(ScreenSize(), static_cast<int>(rectangle.bottom - rectangle.top)));
    FitFullScreenDialogs();
    if (m_selected) SendSipInfo();
}

void SipShell::MoveTo(const RECT& rectangle) { m_window->MoveTo(rectangle); }

HWND SipShell::Window() const { return m_window->Handle(); }

HWND SipShell::Panel() const { return GetWindow(Window(), GW_CHILD); }

RECT SipShell::VisibleDesktop() const {
    const SIZE screen = ScreenSize();
    const int bar = BarHeight(screen);
    const LONG bottom = m_window->IsShown() ? m_window->Rectangle().top : screen.cy - bar;
    return {0, bar, screen.cx, bottom};
}

BOOL SipShell::ShowIM(DWORD flags) {
    m_options.observer->OnShowIM(flags);
    if (flags != SIPF_ON && flags != SIPF_OFF) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    // While another class is current, its input method would get the calls; this shell has none of it.
    if (IsEqualCLSID(m_current, m_options.inputMethod))
        SetVisibility(flags == SIPF_ON ? SipVisibility::Shown : SipVisibility::Hidden);
    else if (flags == SIPF_ON)
        m_window->Show();
    else
        m_window->Hide();
    return TRUE;
}

void SipShell::SetCurrentIM(REFCLSID clsid) {
    m_options.observer->OnSetCurrentIM(clsid);
    m_current = clsid;
}
