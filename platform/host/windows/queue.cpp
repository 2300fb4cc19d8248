// SPDX-License-Identifier: MIT
// Posts, fetches and delivers messages. A message leaves the queue before it is delivered, so a handler may
// post, fetch and run a message loop, nested to any depth.
#include "windows/queue.h"

#include <algorithm>
#include <utility>

#include "device/faults.h"
#include "windows/pen.h"
#include "windows/window.h"

namespace host {

namespace {

constexpr std::size_t kCapacity = 10000;  // as on the platform; beyond it posting fails

struct QueuedMessage {
    MSG message{};
    Origin origin = Origin::Program;
};

std::vector<QueuedMessage> g_queue;
std::size_t g_head = 0;  // messages before it have been taken; the memory is reused once all have
bool g_quitWanted = false;
int g_quitCode = 0;
IdleHandler g_idleHandler;

MSG MakeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return {window, message, wParam, lParam, Now(), PenPosition()};
}

void Note(const QueuedMessage& queued) {
    if (queued.origin == Origin::Device) NoteKey(queued.message.message, queued.message.wParam);
}

bool TakePosted(MSG& message) {
    if (g_head == g_queue.size()) return false;
    const QueuedMessage& taken = g_queue[g_head++];
    message = taken.message;
    Note(taken);
    if (g_head == g_queue.size()) {
        g_queue.clear();
        g_head = 0;
    }
    return true;
}

bool TakePaint(MSG& message) {
    const Window* window = TakeWindowToPaint();
    if (!window) return false;
    message = MakeMessage(window->handle, WM_PAINT, 0, 0);
    return true;
}

// A requested WM_QUIT comes when no posted message is left.
bool TakeQuit(MSG& message) {
    if (!g_quitWanted) return false;
    g_quitWanted = false;
    message = MakeMessage(nullptr, WM_QUIT, static_cast<WPARAM>(g_quitCode), 0);
    return true;
}

bool TakeAny(MSG& message) { return TakePosted(message) || TakeQuit(message) || TakePaint(message); }

// Calls a copy: the handler may replace itself, or be called again from a loop inside it.
bool Idle() {
    const IdleHandler handler = g_idleHandler;
    return handler && handler();
}

}  // namespace

bool Enqueue(HWND window, UINT message, WPARAM wParam, LPARAM lParam, Origin origin) {
    if (g_queue.size() - g_head >= kCapacity) return false;
    if (g_head > 0 && g_queue.size() == g_queue.capacity()) {
        g_queue.erase(g_queue.begin(), g_queue.begin() + static_cast<std::ptrdiff_t>(g_head));
        g_head = 0;
    }
    g_queue.push_back({MakeMessage(window, message, wParam, lParam), origin});
    return true;
}

void DropMessages(HWND window) {
    const auto first = g_queue.begin() + static_cast<std::ptrdiff_t>(g_head);
    const auto kept = std::remove_if(first, g_queue.end(), [window](const QueuedMessage& queued) {
        if (queued.message.hwnd != window) return false;
        Note(queued);
        return true;
    });
    g_queue.erase(kept, g_queue.end());
}

void ResetMessages() {
    g_queue.clear();
    g_head = 0;
    g_quitWanted = false;
    g_idleHandler = nullptr;
}

LRESULT CallProcedure(const Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    return window.procedure(window.handle, message, wParam, lParam);
}

// Does not return while a window keeps posting to itself or invalidating itself. A requested WM_QUIT is left
// to the message loop, if there is one.
void DeliverMessages() {
    MSG message{};
    while (TakePosted(message) || TakePaint(message))
        DispatchMessageW(&message);
}

void SetIdleHandler(IdleHandler handler) { g_idleHandler = std::move(handler); }

}  // namespace host

using namespace host;

LRESULT WINAPI SendMessageW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const Window* window = RequireWindow(handle);
    return window ? CallProcedure(*window, message, wParam, lParam) : 0;
}

// A message for a null window is only queued: GetMessageW returns it, DispatchMessageW delivers it to nobody.
BOOL WINAPI PostMessageW(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (CallFails(Call::PostMessage, ERROR_NOT_ENOUGH_QUOTA)) return FALSE;
    if (handle && !RequireWindow(handle)) return FALSE;
    if (Enqueue(handle, message, wParam, lParam, Origin::Program)) return TRUE;
    return Fail(ERROR_NOT_ENOUGH_QUOTA, FALSE);
}

// Never waits in real time: returns WM_QUIT when the idle handler has nothing more to do.
BOOL WINAPI GetMessageW(MSG* message, HWND handle, UINT first, UINT last) {
    if (!message || handle || first != 0 || last != 0) return Fail(ERROR_INVALID_PARAMETER, -1);
    do {
        if (TakeAny(*message)) return message->message != WM_QUIT;
    } while (Idle());
    *message = MakeMessage(nullptr, WM_QUIT, 0, 0);
    return FALSE;
}

BOOL WINAPI PeekMessageW(MSG* message, HWND handle, UINT first, UINT last, UINT remove) {
    const bool filters = handle || first != 0 || last != 0;
    if (!message || filters || remove != PM_REMOVE) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    return TakeAny(*message);
}

LRESULT WINAPI DispatchMessageW(const MSG* message) {
    if (!message) return 0;
    const Window* window = FindWindow(message->hwnd);
    return window ? CallProcedure(*window, message->message, message->wParam, message->lParam) : 0;
}

void WINAPI PostQuitMessage(int exitCode) {
    g_quitWanted = true;
    g_quitCode = exitCode;
}
