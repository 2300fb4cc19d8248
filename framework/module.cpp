// SPDX-License-Identifier: MIT
#include "framework/module.h"

#include <algorithm>

#include "framework/memory.h"

CComModule _Module;

void CComModule::Init(HINSTANCE instance, CComClassEntry* classes) {
    m_hInst = instance;
    m_pClasses = classes;
    m_nLockCnt = 0;
    m_csFactory.Init();
    m_csWindowCreate.Init();
    m_csWindowClass.Init();
    for (CComClassEntry* entry = m_pClasses; entry->m_pClsid; ++entry)
        entry->m_pfnObjectMain(true);
}

void CComModule::Term() {
    for (CComClassEntry* entry = m_pClasses; entry && entry->m_pClsid; ++entry) {
        if (entry->m_pFactory) entry->m_pFactory->Release();
        entry->m_pFactory = nullptr;
        entry->m_pfnObjectMain(false);
    }
    m_csFactory.Term();
    m_csWindowCreate.Term();
    UnregisterWindowClasses();
    m_csWindowClass.Term();
}

HRESULT CComModule::GetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    for (CComClassEntry* entry = m_pClasses; entry && entry->m_pClsid; ++entry) {
        if (!entry->m_pfnGetClassObject || !IsEqualCLSID(clsid, *entry->m_pClsid)) continue;
        const HRESULT result = CreateFactory(*entry);
        return FAILED(result) ? result : entry->m_pFactory->QueryInterface(iid, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

// Two threads may ask at the same time; only one of them makes the factory. The lock keeps the other from
// seeing the pointer before the object is complete.
HRESULT CComModule::CreateFactory(CComClassEntry& entry) {
    CComCritSecLock lock(m_csFactory);
    if (entry.m_pFactory) return S_OK;
    void* factory = nullptr;
    const HRESULT result = entry.m_pfnGetClassObject(entry.m_pfnCreateInstance, IID_IUnknown, &factory);
    if (SUCCEEDED(result)) entry.m_pFactory = static_cast<IUnknown*>(factory);
    return result;
}

HRESULT CComModule::UpdateRegistry(RegistryAction action) {
    for (CComClassEntry* entry = m_pClasses; entry && entry->m_pClsid; ++entry) {
        const HRESULT result = entry->m_pfnUpdateRegistry(action);
        if (FAILED(result)) return result;
    }
    return S_OK;
}

void CComModule::AddCreateWindowRecord(CreateWindowRecord* record, void* object) {
    record->m_pThis = object;
    record->m_dwThreadID = GetCurrentThreadId();
    CComCritSecLock lock(m_csWindowCreate);
    record->m_pNext = m_pCreateWndList;
    m_pCreateWndList = record;
}

void* CComModule::ExtractCreateWindowRecord() {
    const DWORD thread = GetCurrentThreadId();
    CComCritSecLock lock(m_csWindowCreate);
    for (CreateWindowRecord** link = &m_pCreateWndList; *link; link = &(*link)->m_pNext) {
        if ((*link)->m_dwThreadID != thread) continue;
        void* object = (*link)->m_pThis;
        *link = (*link)->m_pNext;
        return object;
    }
    return nullptr;
}

void CComModule::RemoveCreateWindowRecord(CreateWindowRecord* record) {
    CComCritSecLock lock(m_csWindowCreate);
    for (CreateWindowRecord** link = &m_pCreateWndList; *link; link = &(*link)->m_pNext) {
        if (*link != record) continue;
        *link = record->m_pNext;
        return;
    }
}

// The description and its atom are shared by all threads that create such windows: the lock guards them too.
ATOM CComModule::RegisterWindowClass(WNDCLASSW& windowClass, ATOM& atom) {
    CComCritSecLock lock(m_csWindowClass);
    if (atom && std::find(m_WindowClasses.begin(), m_WindowClasses.end(), atom) != m_WindowClasses.end())
        return atom;
    // Reserved first, so that a registered class can always be recorded and unregistered.
    if (!EnoughMemory([&] { m_WindowClasses.reserve(m_WindowClasses.size() + 1); })) return 0;
    windowClass.hInstance = m_hInst;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    atom = RegisterClassW(&windowClass);
    if (atom) m_WindowClasses.push_back(atom);
    return atom;
}

void CComModule::UnregisterWindowClasses() {
    for (const ATOM atom : m_WindowClasses)
        UnregisterClassW(reinterpret_cast<LPCWSTR>(static_cast<ULONG_PTR>(atom)), m_hInst);
    std::vector<ATOM>().swap(m_WindowClasses);
}
