// SPDX-License-Identifier: MIT
#include "server/class_factory.h"

HRESULT CComClassFactory::CreateCached(CreatorFunction creator, REFIID iid, void** factory) {
    return CreateComObject<CComObjectCached<CComClassFactory>>(creator, iid, factory);
}

void* CComClassFactory::FindInterface(REFIID iid) {
    const bool offered = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
    return offered ? static_cast<IClassFactory*>(this) : nullptr;
}

STDMETHODIMP CComClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    // The outer object controls the new one's life, so it must get its own IUnknown.
    if (outer && !IsEqualIID(iid, IID_IUnknown)) return CLASS_E_NOAGGREGATION;
    return m_pfnCreateInstance(outer, iid, object);
}

STDMETHODIMP CComClassFactory::LockServer(BOOL lock) {
    if (lock)
        _Module.Lock();
    else
        _Module.Unlock();
    return S_OK;
}
