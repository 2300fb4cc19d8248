// SPDX-License-Identifier: MIT
// The class factory that DllGetClassObject hands out.
#pragma once

#include "framework/com_object.h"

class CComClassFactory : public IClassFactory, public CComObjectRootEx<CComMultiThreadModel> {
public:
    // For the class table: creates the cached factory and queries the interface.
    static HRESULT CreateCached(CreatorFunction creator, REFIID iid, void** factory);

    void* FindInterface(REFIID iid);
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
    STDMETHODIMP LockServer(BOOL lock) override;

protected:
    explicit CComClassFactory(CreatorFunction creator) : m_pfnCreateInstance(creator) {}
    ~CComClassFactory() = default;

private:
    CreatorFunction m_pfnCreateInstance;
};
