// SPDX-License-Identifier: MIT
// Critical sections and the scope that holds one.
#pragma once

#include <windows.h>

// Initialised and deleted by hand: the module record lives from process attach to detach, not as long as its
// constructor and destructor would have it. Deleting a section that was never initialised does nothing.
class CComCriticalSection {
public:
    // Always S_OK: InitializeCriticalSection has no result. Callers check it all the same.
    HRESULT Init() {
        InitializeCriticalSection(&m_sec);
        m_bInitialized = true;
        return S_OK;
    }
    void Term() {
        if (!m_bInitialized) return;
        m_bInitialized = false;
        DeleteCriticalSection(&m_sec);
    }
    void Lock() { EnterCriticalSection(&m_sec); }
    void Unlock() { LeaveCriticalSection(&m_sec); }

private:
    CRITICAL_SECTION m_sec{};
    bool m_bInitialized = false;
};

class CComCritSecLock {
public:
    explicit CComCritSecLock(CComCriticalSection& section) : m_section(section) { m_section.Lock(); }
    ~CComCritSecLock() { m_section.Unlock(); }
    CComCritSecLock(const CComCritSecLock&) = delete;
    CComCritSecLock& operator=(const CComCritSecLock&) = delete;

private:
    CComCriticalSection& m_section;
};
