// SPDX-License-Identifier: MIT
// The whole library, used only through its file: loaded, registered, activated by its class identifier,
// unloaded.
#include "server_fixture.h"
#include "test_skin.h"
#include "test_window.h"

namespace {

constexpr WCHAR kPath[] = TEXT("\\Windows\\Tolka.DLL");

class LibraryTest : public testing::Test {
protected:
    void SetUp() override {
        test::LetComSeeClasses();
        test::CopyLibraryToDevice(TOLKA_RESOURCES, TOLKA_CODE, "Windows/Tolka.DLL");
        m_library = LoadLibraryW(kPath);
        ASSERT_NE(m_library, nullptr);
    }

    HRESULT Call(LPCSTR name) const {
        using Export = HRESULT(STDAPICALLTYPE*)();
        const auto entry =
            reinterpret_cast<Export>(reinterpret_cast<void (*)()>(GetProcAddress(m_library, name)));
        EXPECT_NE(entry, nullptr) << name;
        return entry ? entry() : E_UNEXPECTED;
    }

    static IInputMethod* Activate(HRESULT expected = S_OK) {
        void* object = nullptr;
        EXPECT_EQ(CoCreateInstance(CLSID_KeybInput, nullptr, CLSCTX_INPROC_SERVER, IID_IInputMethod, &object),
                  expected);
        return static_cast<IInputMethod*>(object);
    }

    bool IsLoaded() const {
        WCHAR path[MAX_PATH];
        return GetModuleFileNameW(m_library, path, MAX_PATH) != 0;
    }

    HMODULE m_library = nullptr;
};

}  // namespace

TEST_F(LibraryTest, LivesAsLongAsItIsNeeded) {
    EXPECT_EQ(Call("DllCanUnloadNow"), S_OK);
    EXPECT_EQ(Call("DllRegisterServer"), S_OK);
    IInputMethod* object = Activate();
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(Call("DllCanUnloadNow"), S_FALSE);
    EXPECT_TRUE(FreeLibrary(m_library));
    test::UnloadUnusedLibraries();
    EXPECT_TRUE(IsLoaded()) << "an object is alive";
    EXPECT_EQ(object->Release(), 0u);
    test::UnloadUnusedLibraries();
    EXPECT_FALSE(IsLoaded());
}

// Anything left by an unloaded library (a window class, a factory) would disturb the next load.
TEST_F(LibraryTest, CanBeLoadedAgain) {
    test::TestSkin().Install("a.tlk");
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(FreeLibrary(m_library));
    const TestWindow sip;
    for (int life = 0; life < 3; ++life) {
        IInputMethod* object = Activate();
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->Select(sip.m_hWnd), S_OK);
        EXPECT_TRUE(IsWindowVisible(GetWindow(sip.m_hWnd, GW_CHILD)));
        EXPECT_EQ(object->Release(), 0u);
        test::UnloadUnusedLibraries();
    }
}

TEST_F(LibraryTest, UnregisteredClassCannotBeActivated) {
    ASSERT_EQ(Call("DllRegisterServer"), S_OK);
    EXPECT_EQ(Call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(Activate(REGDB_E_CLASSNOTREG), nullptr);
    EXPECT_TRUE(FreeLibrary(m_library));
}
