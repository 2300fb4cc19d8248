// SPDX-License-Identifier: MIT
#include "factories.h"

namespace {

// The outer object of an aggregation, of which only the identity matters. It outlives the inner one.
class OuterUnknown final : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (!IsEqualIID(iid, IID_IUnknown)) return E_NOINTERFACE;
        *object = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() override { return --m_references; }

private:
    ULONG m_references = 1;
};

}  // namespace

HRESULT Factories::Request(IClassFactory** factory) {
    void* object = nullptr;
    const HRESULT result = m_library.GetClassObject(IID_IClassFactory, &object);
    *factory = static_cast<IClassFactory*>(object);
    return result;
}

Factories::Result Factories::Get() {
    IClassFactory* factory = nullptr;
    const HRESULT result = Request(&factory);
    if (FAILED(result)) return {result, false};
    const bool same = m_held.empty() || m_held.front() == factory;
    m_held.push_back(factory);
    return {result, same};
}

bool Factories::Release() {
    if (m_held.empty()) return false;
    IClassFactory* factory = m_held.back();
    m_held.pop_back();
    factory->Release();
    return true;
}

void Factories::ReleaseAll() {
    while (Release()) {
    }
}

HRESULT Factories::Lock(BOOL lock) {
    IClassFactory* factory = nullptr;
    HRESULT result = Request(&factory);
    if (FAILED(result)) return result;
    result = factory->LockServer(lock);
    factory->Release();
    return result;
}

HRESULT Factories::CreateInstance(REFIID iid, Aggregation aggregation) {
    IClassFactory* factory = nullptr;
    HRESULT result = Request(&factory);
    if (FAILED(result)) return result;
    OuterUnknown outer;
    void* object = nullptr;
    result = factory->CreateInstance(aggregation == Aggregation::Aggregated ? &outer : nullptr, iid, &object);
    if (SUCCEEDED(result)) static_cast<IUnknown*>(object)->Release();
    factory->Release();
    return result;
}
