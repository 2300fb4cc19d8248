// SPDX-License-Identifier: MIT
// The last error, locks and interlocked counters, for any thread.
#include "device/faults.h"

#include <mutex>
#include <new>

#include <unistd.h>

namespace {

thread_local DWORD g_lastError = 0;

// Shared by all sections whose own mutex could not be created; they then exclude each other, too.
// InitializeCriticalSection cannot report that memory ran out.
std::recursive_mutex& SharedMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

std::recursive_mutex& Mutex(const CRITICAL_SECTION* section) {
    return section->mutex ? *static_cast<std::recursive_mutex*>(section->mutex) : SharedMutex();
}

}  // namespace

DWORD WINAPI GetLastError() { return g_lastError; }
void WINAPI SetLastError(DWORD error) { g_lastError = error; }

void WINAPI InitializeCriticalSection(CRITICAL_SECTION* section) {
    section->mutex = host::CallFails(host::Call::InitializeLock, ERROR_NOT_ENOUGH_MEMORY)
                         ? nullptr
                         : new (std::nothrow) std::recursive_mutex;
}

void WINAPI EnterCriticalSection(CRITICAL_SECTION* section) { Mutex(section).lock(); }
void WINAPI LeaveCriticalSection(CRITICAL_SECTION* section) { Mutex(section).unlock(); }

void WINAPI DeleteCriticalSection(CRITICAL_SECTION* section) {
    delete static_cast<std::recursive_mutex*>(section->mutex);
    section->mutex = nullptr;
}

LONG WINAPI InterlockedIncrement(LONG volatile* value) {
    return __atomic_add_fetch(value, 1, __ATOMIC_SEQ_CST);
}

LONG WINAPI InterlockedDecrement(LONG volatile* value) {
    return __atomic_sub_fetch(value, 1, __ATOMIC_SEQ_CST);
}

DWORD WINAPI GetCurrentThreadId() { return static_cast<DWORD>(gettid()); }
