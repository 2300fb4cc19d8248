// SPDX-License-Identifier: MIT
#include "server/test_server.h"

#include <differences.h>
#include <registry_values.h>
#include <test_support.h>

#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>

#include <vector>

namespace {

using test::Difference;
using test::Either;
using test::NumberValue;
using test::TextValue;
using WideString = std::basic_string<WCHAR>;

constexpr LPCWSTR kServerKey = TEXT("CLSID\\{71D0A9C4-E26F-4D1B-935C-0A446BF217DE}\\InprocServer32");

HRESULT Create(REFIID iid, void** object) {
    return CoCreateInstance(kTestServerClass, nullptr, CLSCTX_INPROC_SERVER, iid, object);
}

bool IsAttached() {
    return test::ReadValue(HKEY_LOCAL_MACHINE, TEST_SERVER_KEY, TEST_SERVER_ATTACHED) == NumberValue(1);
}

void EnterServer(LPCWSTR path) {
    test::WriteValue(HKEY_CLASSES_ROOT, kServerKey, TEXT(""), TextValue(path));
    test::WriteValue(HKEY_CLASSES_ROOT, kServerKey, TEXT("ThreadingModel"), TextValue(TEXT("Free")));
}

void RefuseLoading(DWORD refuse) {
    test::WriteValue(HKEY_LOCAL_MACHINE, TEST_SERVER_KEY, TEST_SERVER_REFUSE, NumberValue(refuse));
}

class Com : public testing::Test {
protected:
    void SetUp() override { test::LetComSeeClasses(); }
    void TearDown() override { test::UnloadUnusedLibraries(); }

    void Install(LPCWSTR path) {
        test::CopyLibraryToDevice(TEST_RESOURCES, TEST_SERVER, "Windows/server.dll");
        EnterServer(path);
    }
};

TEST_F(Com, ActivatesThroughTheRegistryAndUnloadsWhatIsUnused) {
    Install(TEXT("\\windows\\server.dll"));
    void* object = nullptr;
    ASSERT_EQ(Create(IID_IUnknown, &object), S_OK);
    EXPECT_TRUE(IsAttached());
    void* factory = nullptr;
    ASSERT_EQ(CoGetClassObject(kTestServerClass, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, &factory),
              S_OK);
    static_cast<IUnknown*>(factory)->Release();
    test::UnloadUnusedLibraries();
    EXPECT_TRUE(IsAttached()) << "an object is alive";
    static_cast<IUnknown*>(object)->Release();
    test::UnloadUnusedLibraries();
    EXPECT_FALSE(IsAttached());
}

TEST_F(Com, ReportsWhyActivationFails) {
    const HRESULT notLoaded = Either(Difference::ActivationErrors, CO_E_DLLNOTFOUND, E_ACCESSDENIED);
    void* object = this;
    EXPECT_EQ(Create(IID_IUnknown, &object), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(object, nullptr);
    Install(TEXT("\\windows\\absent.dll"));
    EXPECT_EQ(Create(IID_IUnknown, &object), notLoaded);
    // A library with only resources has no class objects.
    test::CopyToDevice(TEST_RESOURCES, "Windows/resources.dll");
    EnterServer(TEXT("resources.dll"));
    EXPECT_EQ(Create(IID_IUnknown, &object),
              Either(Difference::ActivationErrors, CO_E_ERRORINDLL, CO_E_DLLNOTFOUND));
    Install(TEXT("\\windows\\server.dll"));
    RefuseLoading(1);
    EXPECT_EQ(Create(IID_IUnknown, &object), notLoaded);
    RefuseLoading(0);
    EXPECT_EQ(Create(kTestServerClass, &object), E_NOINTERFACE);
    EXPECT_EQ(Create(IID_IUnknown, nullptr), E_POINTER);
}

TEST(ComIdentifiers, HaveOneTextForm) {
    LPWSTR text = nullptr;
    ASSERT_EQ(StringFromCLSID(kTestServerClass, &text), S_OK);
    EXPECT_EQ(lstrcmpW(text, TEXT("{71D0A9C4-E26F-4D1B-935C-0A446BF217DE}")), 0);
    CoTaskMemFree(text);
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromString(TEXT("{71d0a9c4-E26F-4d1b-935C-0A446BF217dE}"), &clsid), S_OK);
    EXPECT_TRUE(clsid == kTestServerClass);
    for (const LPCWSTR bad :
         {TEXT(""), TEXT("{71D0A9C4-E26F-4D1B-935C-0A446BF217DE"),
          TEXT("71D0A9C4-E26F-4D1B-935C-0A446BF217DE"), TEXT("{71D0A9C4-E26F-4D1B-935C-0A446BF217DE} "),
          TEXT("{71D0A9C4-E26F-4D1B-935C-0A446BF217DG}"), TEXT("{71D0A9C4-E26F-4D1B-935C0-A446BF217DE}")})
        EXPECT_EQ(CLSIDFromString(bad, &clsid), CO_E_CLASSSTRING);
}

class TypeLibraries : public testing::Test {
protected:
    static constexpr LPCWSTR kVersionKey = TEXT("TypeLib\\{0B6F6E52-3D0C-4C55-8B57-9B7A3F0E21D4}\\3.12");

    static void ExpectEntry(LPCWSTR subkey, const WideString& text) {
        EXPECT_EQ(test::ReadValue(HKEY_CLASSES_ROOT, WideString(kVersionKey) + subkey, TEXT("")),
                  TextValue(text));
    }

    // Not every SDK declares the texts of RegisterTypeLib const.
    static void ExpectRegisters(WideString path) {
        ITypeLib* library = nullptr;
        ASSERT_EQ(LoadTypeLib(path.c_str(), &library), S_OK);
        WideString help = TEXT("\\help\\");
        EXPECT_EQ(RegisterTypeLib(library, path.data(), help.data()), S_OK);
        library->Release();
        ExpectEntry(TEXT(""), TEXT("Test 3.18 Type Library"));
        ExpectEntry(Either(Difference::TypeLibrarySystem, TEXT("\\0\\win32"), TEXT("\\0\\win64")), path);
        ExpectEntry(TEXT("\\FLAGS"), Either(Difference::TypeLibraryFlags, TEXT("0"), TEXT("8")));
        ExpectEntry(TEXT("\\HELPDIR"), TEXT("\\help\\"));
    }
};

TEST_F(TypeLibraries, AreRegisteredFromTheirOwnFileOrALibrary) {
    test::CopyToDevice(TEST_TYPE_LIBRARY, "Windows/test.tlb");
    test::CopyToDevice(TEST_RESOURCES, "Windows/test.dll");
    ExpectRegisters(TEXT("\\windows\\test.tlb"));
    ExpectRegisters(TEXT("\\windows\\test.dll"));
}

TEST_F(TypeLibraries, AreRefusedIfTruncated) {
    test::CopyToDevice(TEST_TYPE_LIBRARY, "Windows/test.tlb");
    const std::string whole = test::ReadDeviceFile("Windows/test.tlb");
    ITypeLib* library = nullptr;
    EXPECT_EQ(LoadTypeLib(TEXT("\\windows\\absent.tlb"), &library), TYPE_E_CANTLOADLIBRARY);
    std::vector<std::size_t> sizes{0, 3};
    if (test::ActsAsHandheld(Difference::CutTypeLibraries)) sizes.insert(sizes.end(), {0x53, 0x100});
    for (const std::size_t size : sizes) {
        test::WriteDeviceFile("Windows/test.tlb", whole.substr(0, size));
        EXPECT_EQ(LoadTypeLib(TEXT("\\windows\\test.tlb"), &library), TYPE_E_CANTLOADLIBRARY) << size;
        EXPECT_EQ(library, nullptr);
    }
}

}  // namespace
