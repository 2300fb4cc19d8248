// SPDX-License-Identifier: MIT
// Critical sections and the scope that holds one.
#pragma once

#include <windows.h>

// Initialised and deleted by hand, because the module record outlives no constructor of its own; deleting one
// that was never initialised does nothing.
class CComCriticalSection {
public:
    // Always S_OK: InitializeCriticalSection has no result, so it can tell of no failure. Creation asks all
    // the same.
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
