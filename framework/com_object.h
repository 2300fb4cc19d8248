// SPDX-License-Identifier: MIT
// COM objects: reference counts, the plain, the aggregatable and the cached form, and their creation.
//
// A class has `void* FindInterface(REFIID)`, which returns the interface without adding a reference, or null.
#pragma once

#include <objbase.h>
#include <windows.h>

#include <new>

#include "framework/lock.h"
#include "framework/module.h"

// Counts change with interlocked operations, as the free threading model requires.
struct CComMultiThreadModel {
    static ULONG Increment(LONG* value) { return static_cast<ULONG>(InterlockedIncrement(value)); }
    static ULONG Decrement(LONG* value) { return static_cast<ULONG>(InterlockedDecrement(value)); }
};

// The reference count and the per-object lock, initialised at creation and deleted at destruction.
template <typename ThreadModel>
class CComObjectRootEx {
public:
    HRESULT FinalConstruct() { return S_OK; }
    ULONG InternalAddRef() { return ThreadModel::Increment(&m_dwRef); }
    ULONG InternalRelease() { return ThreadModel::Decrement(&m_dwRef); }
    HRESULT InitLock() { return m_critsec.Init(); }

    CComObjectRootEx(const CComObjectRootEx&) = delete;
    CComObjectRootEx& operator=(const CComObjectRootEx&) = delete;

protected:
    CComObjectRootEx() = default;
    ~CComObjectRootEx() { m_critsec.Term(); }

    LONG m_dwRef = 0;
    CComCriticalSection m_critsec;
};

template <typename Class, const CLSID* clsid>
class CComCoClass {
public:
    static const CLSID& GetObjectCLSID() { return *clsid; }
};

// QueryInterface for the pointer that FindInterface returned; the reference is added to `counted`.
template <typename Counted>
HRESULT AnswerQueryInterface(Counted* counted, void* found, void** object) {
    if (!object) return E_POINTER;
    *object = found;
    if (!found) return E_NOINTERFACE;
    counted->AddRef();
    return S_OK;
}

// Keeps the library loaded while an object lives. It is the first base, so destroyed last: the object's own
// destructor still runs in a loaded library.
struct CLibraryLock {
    CLibraryLock() { _Module.Lock(); }
    ~CLibraryLock() { _Module.Unlock(); }
};

// The plain form: lives until its reference count reaches 0.
template <typename Class>
class CComObject final : private CLibraryLock, public Class {
public:
    explicit CComObject(IUnknown*) {}
    virtual ~CComObject() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        return AnswerQueryInterface(this, this->FindInterface(iid), object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return this->InternalAddRef(); }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG count = this->InternalRelease();
        if (count == 0) delete this;
        return count;
    }
};

// The part of an aggregated object whose interfaces pass their IUnknown calls on to the outer unknown.
template <typename Class>
class CComContainedObject final : public Class {
public:
    explicit CComContainedObject(IUnknown* outer) : m_pOuterUnknown(outer) {}
    virtual ~CComContainedObject() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        return m_pOuterUnknown->QueryInterface(iid, object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return m_pOuterUnknown->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return m_pOuterUnknown->Release(); }

private:
    IUnknown* m_pOuterUnknown;  // not counted: it outlives the object that it aggregates
};

// The aggregatable form: its own IUnknown keeps the object alive, the others delegate to the outer one.
template <typename Class>
class CComAggObject final : private CLibraryLock,
                            public IUnknown,
                            public CComObjectRootEx<CComMultiThreadModel> {
public:
    explicit CComAggObject(IUnknown* outer) : m_contained(outer) {}
    virtual ~CComAggObject() = default;

    HRESULT InitLock() { return m_contained.InitLock(); }
    HRESULT FinalConstruct() { return m_contained.FinalConstruct(); }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (IsEqualIID(iid, IID_IUnknown))
            return AnswerQueryInterface(this, static_cast<IUnknown*>(this), object);
        return AnswerQueryInterface(&m_contained, m_contained.FindInterface(iid), object);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return InternalAddRef(); }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG count = InternalRelease();
        if (count == 0) delete this;
        return count;
    }

private:
    CComContainedObject<Class> m_contained;
};

// The cached form: the cache holds one reference. Further ones, those of clients, keep the library loaded.
template <typename Class>
class CComObjectCached final : public Class {
public:
    template <typename Argument>
    explicit CComObjectCached(Argument argument) : Class(argument) {}
    virtual ~CComObjectCached() = default;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        return AnswerQueryInterface(this, this->FindInterface(iid), object);
    }
    STDMETHODIMP_(ULONG) AddRef() override {
        const ULONG count = this->InternalAddRef();
        if (count == 2) _Module.Lock();
        return count;
    }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG count = this->InternalRelease();
        if (count == 1) _Module.Unlock();
        if (count == 0) delete this;
        return count;
    }
};

// Creates the object, initialises it while holding a reference, and queries the interface. Destroys the
// object if any step fails.
template <typename Object, typename Argument>
HRESULT CreateComObject(Argument argument, REFIID iid, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    Object* object = nullptr;
    try {
        object = new (std::nothrow) Object(argument);
    } catch (...) {
    }
    if (!object) return E_OUTOFMEMORY;
    object->InternalAddRef();
    HRESULT answer = object->InitLock();
    if (SUCCEEDED(answer)) answer = object->FinalConstruct();
    object->InternalRelease();
    if (SUCCEEDED(answer)) answer = object->QueryInterface(iid, result);
    if (FAILED(answer)) delete object;
    return answer;
}

// Creates an instance: the plain form, or with an outer unknown the aggregatable one.
template <typename Class>
HRESULT CreateInstanceOf(IUnknown* outer, REFIID iid, void** object) {
    return outer ? CreateComObject<CComAggObject<Class>>(outer, iid, object)
                 : CreateComObject<CComObject<Class>>(outer, iid, object);
}
