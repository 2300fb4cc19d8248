// SPDX-License-Identifier: MIT
#include "session.h"

#include <iostream>
#include <stdexcept>
#include <utility>

#include "chosen_skin.h"
#include "script.h"
#include "text.h"

RunningDevice::RunningDevice(const std::filesystem::path& folder, SIZE screen,
                             std::function<void(const std::string&)> report) {
    if (!report) report = [](const std::string& line) { std::cerr << line << '\n'; };
    host::DeviceOptions options;
    options.folder = folder;
    options.screen = screen;
    // A folder that cannot be written to would be reported at each attempt.
    options.report = [last = std::string(), report = std::move(report)](const std::string& line) mutable {
        if (line != last) report(line);
        last = line;
    };
    host::StartDevice(options);
}

Session::Session(const Options& options)
    : m_device(options.device, options.screen, options.report),
      m_library(options.library),
      m_factories(m_library),
      m_sipTrace(m_trace),
      m_keyboardMenu(*this) {
    const host::PlatformScope scope;
    m_application = std::make_unique<Application>(m_keyboardMenu);
    m_sip = SipShell::Create({nullptr, kInputMethodClass, &m_sipTrace, &m_keys});
    if (!m_application->Handle() || !m_sip) throw std::runtime_error("the device cannot make its windows");
    m_sipTrace.SetInfoHandler([this](const IMINFO& info) {
        m_application->SetKeyboardPicture(host::PictureOf(info.hImageNarrow, info.iNarrow));
    });
    m_sipTrace.SetChoiceHandler(ForgetStandIn);
    host::SetCaptureHandler([this](HWND window) { OnCapture(window); });
    host::SetMessageBoxHandler([this](UINT type, const std::u16string& caption, const std::u16string& text) {
        m_trace.Write("MessageBox type=" + Hexadecimal(type) + " caption=" + Quoted(caption) +
                      " text=" + Quoted(text));
    });
    host::SetOpenFileHandler([this](const std::u16string& extension, const std::u16string& filter) {
        m_trace.Write("OpenFile ext=" + Quoted(extension) + " filter=" + Quoted(filter));
    });
}

Session::~Session() {
    m_trace.Mute();
    host::SetIdleHandler(nullptr);
    host::SetCaptureHandler(nullptr);
    m_sip.reset();
    m_factories.ReleaseAll();
}

void Session::RequireNoCall() const {
    if (m_sip->IsCalling()) throw ScriptError("a dialog of the input method is open");
}

// COM finds the library in the registry; loading it here, too, keeps it until "unload".
void Session::CreateInputMethod() {
    RequireNoCall();
    m_library.EnsureRegistered();
    m_library.Load();
    m_sip->CreateInputMethod();
}

void Session::SelectInputMethod() {
    if (!m_sip->HasInputMethod()) CreateInputMethod();
    if (m_sip->HasInputMethod()) m_sip->Select();
}

// An event in the panel's coordinates ends a stroke on the application, and passes through the menu bar.
bool Session::PostQueuedPen() {
    if (m_pen.empty()) return false;
    const PenEvent next = m_pen.front();
    m_pen.pop_front();
    const bool ofPanel = next.space == PenSpace::Panel;
    if (ofPanel && BoundWindow::IsOne(GetCapture())) ReleaseCapture();
    if (ofPanel) m_application->EnableBar(FALSE);
    host::PostPen(next.event, OnScreen(next));
    if (ofPanel) m_application->EnableBar(TRUE);
    return true;
}

// Without a panel, its coordinates are those of the SIP window.
POINT Session::OnScreen(const PenEvent& event) const {
    POINT point = event.point;
    const HWND panel = m_sip->Panel();
    if (event.space == PenSpace::Panel) ClientToScreen(panel ? panel : m_sip->Window(), &point);
    return point;
}

void Session::SetScreenSize(SIZE size) {
    host::SetScreenSize(size);
    m_sip->OnScreenChanged();
    LayOutApplication();
}

void Session::RunMessages(host::IdleHandler onIdle) {
    host::SetIdleHandler(std::move(onIdle));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    host::SetIdleHandler(nullptr);
    m_trace.Flush();
}

void Session::LayOutApplication() { m_application->LayOut(m_sip->VisibleDesktop()); }

// The trace is about the input method and its dialogs, not about the application.
void Session::OnCapture(HWND window) {
    const bool captured = window != nullptr && !BoundWindow::IsOne(window);
    if (captured != m_captured) m_trace.Write(captured ? "Capture on" : "Capture off");
    m_captured = captured;
}
