// SPDX-License-Identifier: MIT
#include "session.h"

#include <iostream>
#include <stdexcept>

#include "device_files.h"
#include "text.h"

RunningDevice::RunningDevice(const std::filesystem::path& folder, SIZE screen) {
    host::DeviceOptions options;
    options.folder = folder;
    options.screen = screen;
    options.report = [](const std::string& line) { std::cerr << line << '\n'; };
    host::StartDevice(options);
}

Session::Session(const Options& options)
    : m_device(options.device, options.screen),
      m_library(options.library),
      m_factories(m_library),
      m_sipTrace(m_trace) {
    if (options.skin) {
        const std::optional<std::u16string> name = FromUtf8(options.skin->filename().string());
        if (!name) throw std::runtime_error("the name of the skin is not UTF-8");
        CopyToDevice(*options.skin, u"\\Windows\\" + *name);
    }
    const host::PlatformScope scope;
    m_application = std::make_unique<Application>();
    m_sip = SipShell::Create({nullptr, inputMethodClass, &m_sipTrace, &m_keys});
    if (!m_application->Handle() || !m_sip) throw std::runtime_error("the device cannot make its windows");
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

bool Session::PostQueuedPen() {
    if (m_pen.empty()) return false;
    const PenEvent next = m_pen.front();
    m_pen.pop_front();
    // Without a panel its place is that of the SIP window.
    const HWND panel = m_sip->Panel();
    POINT point = next.point;
    ClientToScreen(panel ? panel : m_sip->Window(), &point);
    host::PostPen(next.event, point);
    return true;
}

void Session::SetScreenSize(SIZE size) {
    host::SetScreenSize(size);
    m_sip->OnScreenChanged();
    LayOutApplication();
}

void Session::LayOutApplication() { m_application->LayOut(m_sip->VisibleDesktop()); }

void Session::OnCapture(HWND window) {
    const bool captured = window != nullptr;
    if (captured != m_captured) m_trace.Write(captured ? "Capture on" : "Capture off");
    m_captured = captured;
}
