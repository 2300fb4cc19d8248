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

struct Filter {
    HWND window = nullptr;  // with its descendants; null: all messages
    UINT first = 0;
    UINT last = 0;  // first and last 0: every number
};

std::vector<QueuedMessage> queue;
std::size_t head = 0;  // messages before it have been taken; the memory is reused once all have
bool quitWanted = false;
int quitCode = 0;
IdleHandler idleHandler;

MSG MakeMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return {window, message, wParam, lParam, Now(), PenPosition()};
}

bool Passes(const Filter& filter, HWND window, UINT message) {
    if (filter.first != 0 || filter.last != 0) {
        if (message < filter.first || message > filter.last) return false;
    }
    if (!filter.window) return true;
    const Window* target = FindWindow(window);
    return target && IsInside(*target, filter.window);
}

void Note(const QueuedMessage& queued) {
    if (queued.origin == Origin::Device) NoteKey(queued.message.message, queued.message.wParam);
}

bool TakePosted(const Filter& filter, MSG& message) {
    for (std::size_t i = head; i < queue.size(); ++i) {
        if (!Passes(filter, queue[i].message.hwnd, queue[i].message.message)) continue;
        message = queue[i].message;
        Note(queue[i]);
        if (i == head) {
            ++head;
        } else {
            queue.erase(queue.begin() + static_cast<std::ptrdiff_t>(i));
        }
        if (head == queue.size()) {
            queue.clear();
            head = 0;
        }
        return true;
    }
    return false;
}

bool TakePaint(const Filter& filter, MSG& message) {
    if (filter.first != 0 || filter.last != 0) {
        if (WM_PAINT < filter.first || WM_PAINT > filter.last) return false;
    }
    const Window* window = TakeWindowToPaint(filter.window);
    if (!window) return false;
    message = MakeMessage(window->handle, WM_PAINT, 0, 0);
    return true;
}

// A requested WM_QUIT comes when no posted message is left, and passes every filter.
bool TakeQuit(MSG& message) {
    if (!quitWanted) return false;
    quitWanted = false;
    message = MakeMessage(nullptr, WM_QUIT, static_cast<WPARAM>(quitCode), 0);
    return true;
}

bool TakeAny(const Filter& filter, MSG& message) {
    return TakePosted(filter, message) || TakeQuit(message) || TakePaint(filter, message);
}

// Calls a copy: the handler may replace itself, or be called again from a loop inside it.
bool Idle() {
    const IdleHandler handler = idleHandler;
    return handler && handler();
}

}  // namespace

bool Enqueue(HWND window, UINT message, WPARAM wParam, LPARAM lParam, Origin origin) {
    if (queue.size() - head >= kCapacity) return false;
    if (head > 0 && queue.size() == queue.capacity()) {
        queue.erase(queue.begin(), queue.begin() + static_cast<std::ptrdiff_t>(head));
        head = 0;
    }
    queue.push_back({MakeMessage(window, message, wParam, lParam), origin});
    return true;
}

void DropMessages(HWND window) {
    const auto first = queue.begin() + static_cast<std::ptrdiff_t>(head);
    const auto kept = std::remove_if(first, queue.end(), [window](const QueuedMessage& queued) {
        if (queued.message.hwnd != window) return false;
        Note(queued);
        return true;
    });
    queue.erase(kept, queue.end());
}

void ResetMessages() {
    queue.clear();
    head = 0;
    quitWanted = false;
    idleHandler = nullptr;
}

LRESULT CallProcedure(const Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    return window.procedure(window.handle, message, wParam, lParam);
}

// Does not return while a window keeps posting to itself or invalidating itself. A requested WM_QUIT is left
// to the message loop, if there is one.
void DeliverMessages() {
    MSG message{};
    while (TakePosted({}, message) || TakePaint({}, message)) {
        DispatchMessageW(&message);
    }
}

void SetIdleHandler(IdleHandler handler) { idleHandler = std::move(handler); }

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
    if (!message) return Fail(ERROR_INVALID_PARAMETER, -1);
    const Filter filter{handle, first, last};
    do {
        if (handle && !RequireWindow(handle)) return -1;
        if (TakeAny(filter, *message)) return message->message != WM_QUIT;
    } while (Idle());
    *message = MakeMessage(nullptr, WM_QUIT, 0, 0);
    return FALSE;
}

BOOL WINAPI PeekMessageW(MSG* message, HWND handle, UINT first, UINT last, UINT remove) {
    if (!message || remove != PM_REMOVE) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    if (handle && !RequireWindow(handle)) return FALSE;
    return TakeAny({handle, first, last}, *message);
}

LRESULT WINAPI DispatchMessageW(const MSG* message) {
    if (!message) return 0;
    const Window* window = FindWindow(message->hwnd);
    return window ? CallProcedure(*window, message->message, message->wParam, message->lParam) : 0;
}

void WINAPI PostQuitMessage(int exitCode) {
    quitWanted = true;
    quitCode = exitCode;
}
