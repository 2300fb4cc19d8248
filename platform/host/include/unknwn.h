// SPDX-License-Identifier: MIT
// The base interfaces of COM.
#pragma once

#include <windef.h>
#include <winerror.h>

struct GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline bool operator==(const GUID& first, const GUID& second) {
    return __builtin_memcmp(&first, &second, sizeof(GUID)) == 0;
}
#define IsEqualIID(first, second) ((first) == (second))
#define IsEqualCLSID(first, second) ((first) == (second))

#define STDMETHODCALLTYPE
#define STDAPICALLTYPE
#define STDMETHOD(method) virtual HRESULT STDMETHODCALLTYPE method
#define STDMETHOD_(type, method) virtual type STDMETHODCALLTYPE method
#define STDMETHODIMP HRESULT STDMETHODCALLTYPE
#define STDMETHODIMP_(type) type STDMETHODCALLTYPE
#define STDAPI extern "C" __attribute__((visibility("default"))) HRESULT STDAPICALLTYPE
#define PURE = 0

struct IUnknown {
    STDMETHOD(QueryInterface)(REFIID iid, void** object) PURE;
    STDMETHOD_(ULONG, AddRef)() PURE;
    STDMETHOD_(ULONG, Release)() PURE;
};

struct IClassFactory : IUnknown {
    STDMETHOD(CreateInstance)(IUnknown* outer, REFIID iid, void** object) PURE;
    STDMETHOD(LockServer)(BOOL lock) PURE;
};

extern const IID IID_IUnknown;
extern const IID IID_IClassFactory;
