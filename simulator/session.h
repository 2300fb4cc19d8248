// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>
#include <sip_shell.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "application.h"
#include "factories.h"
#include "key_delivery.h"
#include "keyboard_menu.h"
#include "library.h"
#include "sip_trace.h"
#include "trace.h"

// Calls StartDevice and StopDevice.
class RunningDevice {
public:
    // `report` is that of Session::Options.
    RunningDevice(const std::filesystem::path& folder, SIZE screen,
                  std::function<void(const std::string&)> report);
    ~RunningDevice() { host::StopDevice(); }
    RunningDevice(const RunningDevice&) = delete;
    RunningDevice& operator=(const RunningDevice&) = delete;
};

// The device with everything on it. Members are destroyed in reverse order: the library's objects before its
// code, all windows before the device.
class Session {
public:
    struct Options {
        std::filesystem::path device;
        SIZE screen{240, 320};
        std::filesystem::path library;
        // Receives messages for the user, one line each; if empty, they go to standard error.
        std::function<void(const std::string&)> report;
    };

    // Throws std::exception with a message for the user.
    explicit Session(const Options& options);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Trace& GetTrace() { return m_trace; }
    SipShell& Sip() { return *m_sip; }
    Library& GetLibrary() { return m_library; }
    Factories& GetFactories() { return m_factories; }
    Application& GetApplication() const { return *m_application; }

    // These throw ScriptError while a dialog of the input method is open: its object must not go during a
    // call.
    void CreateInputMethod();
    void SelectInputMethod();  // created first if there is none
    void RequireNoCall() const;

    // The coordinates of a pen event: the panel's client coordinates, or the screen's.
    enum class PenSpace { Panel, Screen };
    // Queues a pen event, to be posted after the queued ones have been handled.
    void QueuePen(PenSpace space, host::Pen event, POINT point) { m_pen.push_back({space, event, point}); }
    // Posts the next queued pen event; false if there is none.
    bool PostQueuedPen();
    void SetScreenSize(SIZE size);
    // Delivers messages until the handler, which is called whenever none is waiting, returns false.
    void RunMessages(host::IdleHandler onIdle);
    // Lays the windows of the application out in the area that the SIP leaves free.
    void LayOutApplication();

private:
    struct PenEvent {
        PenSpace space;
        host::Pen event;
        POINT point;
    };

    POINT OnScreen(const PenEvent& event) const;
    void OnCapture(HWND window);

    Trace m_trace;
    RunningDevice m_device;
    Library m_library;
    Factories m_factories;
    SipTrace m_sipTrace;
    KeyDelivery m_keys;
    KeyboardMenu m_keyboardMenu;
    std::unique_ptr<Application> m_application;
    std::unique_ptr<SipShell> m_sip;
    std::deque<PenEvent> m_pen;
    bool m_captured = false;
};
