// SPDX-License-Identifier: MIT
// The library's file on the device, and the library attached to this process: its exports are linked into the
// tests, which can therefore also check its inside.
#pragma once

#include <objbase.h>
#include <sip.h>
#include <windows.h>

#include <gtest/gtest.h>

#include "test_support.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* reserved);
STDAPI DllCanUnloadNow();
STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object);
STDAPI DllRegisterServer();
STDAPI DllUnregisterServer();
extern "C" const CLSID CLSID_KeybInput;

class ServerTest : public testing::Test {
protected:
    void SetUp() override { Attach(TEXT("\\Windows\\Tolka.DLL"), "Windows/Tolka.DLL"); }

    void TearDown() override {
        EXPECT_EQ(DllCanUnloadNow(), S_OK) << "something still holds the library";
        Detach();
    }

    void Attach(LPCWSTR path, const std::filesystem::path& file) {
        test::CopyToDevice(TOLKA_RESOURCES, file);
        m_library = LoadLibraryW(path);
        ASSERT_NE(m_library, nullptr);
        ASSERT_TRUE(DllMain(m_library, DLL_PROCESS_ATTACH, nullptr));
    }

    void Detach() {
        EXPECT_TRUE(DllMain(m_library, DLL_PROCESS_DETACH, nullptr));
        EXPECT_TRUE(FreeLibrary(m_library));
    }

    // The caller owns the reference.
    static IClassFactory* GetFactory() {
        void* factory = nullptr;
        EXPECT_EQ(DllGetClassObject(CLSID_KeybInput, IID_IClassFactory, &factory), S_OK);
        return static_cast<IClassFactory*>(factory);
    }

    // Creates it without an outer unknown. The caller owns the reference; null on failure.
    static IInputMethod2* CreateInputMethod() {
        IClassFactory* factory = GetFactory();
        void* object = nullptr;
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IInputMethod2, &object), S_OK);
        factory->Release();
        return static_cast<IInputMethod2*>(object);
    }

    HMODULE m_library = nullptr;
};
