// SPDX-License-Identifier: MIT
// A second input method: draws nothing, and sends one character when it is shown.
#include <sip.h>

namespace {

class OtherInputMethod final : public IInputMethod2 {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IInputMethod2);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }  // the only object, which stays
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP Select(HWND) override { return S_OK; }
    STDMETHODIMP Deselect() override { return S_OK; }
    STDMETHODIMP Showing() override {
        UINT shiftState = KeyStateDownFlag;
        UINT character = 'o';
        return m_callback->SendCharEvents('O', KeyStateDownFlag, 1, &shiftState, &character);
    }
    STDMETHODIMP Hiding() override { return S_OK; }
    STDMETHODIMP GetInfo(IMINFO*) override { return S_OK; }
    STDMETHODIMP ReceiveSipInfo(SIPINFO*) override { return S_OK; }
    STDMETHODIMP RegisterCallback(IIMCallback* callback) override { return m_callback = callback, S_OK; }
    STDMETHODIMP GetImData(DWORD, void*) override { return S_OK; }
    STDMETHODIMP SetImData(DWORD, void*) override { return S_OK; }
    STDMETHODIMP UserOptionsDlg(HWND) override { return S_OK; }
    STDMETHODIMP SetIMMActiveContext(HWND, BOOL, DWORD, DWORD, DWORD) override { return S_OK; }
    STDMETHODIMP RegisterCallback2(IIMCallback2*) override { return S_OK; }

private:
    IIMCallback* m_callback = nullptr;
};

class Factory final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID, void** object) override { return *object = this, S_OK; }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
        static OtherInputMethod inputMethod;
        return inputMethod.QueryInterface(iid, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID iid, void** object) {
    static Factory factory;
    return factory.QueryInterface(iid, object);
}

STDAPI DllCanUnloadNow() { return S_FALSE; }
