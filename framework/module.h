// SPDX-License-Identifier: MIT
// The module record, one per process that loads the library.
#pragma once

#include <objbase.h>
#include <windows.h>

#include <vector>

#include "framework/lock.h"

enum class RegistryAction { Register, Unregister };

using CreatorFunction = HRESULT (*)(IUnknown* outer, REFIID iid, void** object);

// One creatable class. A table of entries ends with one whose class identifier is null.
struct CComClassEntry {
    const CLSID* m_pClsid;
    HRESULT (*m_pfnUpdateRegistry)(RegistryAction action);
    HRESULT (*m_pfnGetClassObject)(CreatorFunction creator, REFIID iid, void** factory);
    CreatorFunction m_pfnCreateInstance;
    IUnknown* m_pFactory;  // cached at the first request; the entry holds one reference
    DWORD m_dwRegister;    // registration cookie, always 0 for a library
    LPCWSTR (*m_pfnGetObjectDescription)();
    void (*m_pfnObjectMain)(bool starting);
};

// A window or dialog whose first message has not arrived yet. Lives on the stack of its creator.
struct CreateWindowRecord {
    void* m_pThis;
    DWORD m_dwThreadID;
    CreateWindowRecord* m_pNext;
};

class CComModule {
public:
    // Called at process attach. The class table stays the caller's and lives as long as the library.
    void Init(HINSTANCE instance, CComClassEntry* classes);
    // Called at process detach: releases the factories, unregisters the window classes, deletes the locks.
    void Term();

    HINSTANCE GetModuleInstance() const { return m_hInst; }

    // The lock count: reasons to stay loaded. Any thread.
    LONG Lock() { return InterlockedIncrement(&m_nLockCnt); }
    LONG Unlock() { return InterlockedDecrement(&m_nLockCnt); }
    LONG GetLockCount() const { return m_nLockCnt; }

    // Implements DllGetClassObject: the cached factory of the class, made at the first request. Any thread.
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** object);
    // Stops at the first failure and returns it.
    HRESULT UpdateRegistry(RegistryAction action);

    // Binds a window that this thread is about to create to its object. The record stays the caller's.
    void AddCreateWindowRecord(CreateWindowRecord* record, void* object);
    // The object of the window that this thread is creating; null when there is none.
    void* ExtractCreateWindowRecord();
    // Removes the record of a window that never got a message.
    void RemoveCreateWindowRecord(CreateWindowRecord* record);

    // Registers the class unless `atom` is set already, and returns the atom, 0 on failure. Fills in the
    // instance and the cursor. Any thread.
    ATOM RegisterWindowClass(WNDCLASSW& windowClass, ATOM& atom);

private:
    HRESULT CreateFactory(CComClassEntry& entry);
    void UnregisterWindowClasses();

    HINSTANCE m_hInst = nullptr;
    LONG m_nLockCnt = 0;
    CComClassEntry* m_pClasses = nullptr;
    CComCriticalSection m_csFactory;
    CComCriticalSection m_csWindowCreate;
    CComCriticalSection m_csWindowClass;
    CreateWindowRecord* m_pCreateWndList = nullptr;
    std::vector<ATOM> m_WindowClasses;
};

extern CComModule _Module;
