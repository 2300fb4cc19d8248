// SPDX-License-Identifier: MIT
// The life of the real library, from registration to unloading, and its options: the demonstration types on
// it.
#include <sip.h>

#include <gtest/gtest.h>

#include "handheld.h"
#include "registry_values.h"
#include "test_support.h"

namespace {

constexpr WCHAR kClassKey[] = L"CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}";

bool ClassIsRegistered() { return test::KeyExists(HKEY_CLASSES_ROOT, kClassKey); }

// The dialog as the user sees it, recorded while it is open.
struct SeenDialog {
    int times = 0;
    std::wstring about;
    LRESULT skins = 0;
};
SeenDialog g_seen;

void CALLBACK CloseDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = FindWindowW(L"#32770", nullptr);
    if (!dialog) return;
    KillTimer(nullptr, timer);
    WCHAR text[200] = {};
    GetDlgItemTextW(dialog, 217, text, 200);
    g_seen = {g_seen.times + 1, text, SendDlgItemMessageW(dialog, 202, CB_GETCOUNT, 0, 0)};
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

void OpenTheOptions(IInputMethod2* object) {
    g_seen = {};
    SetTimer(nullptr, 0, 10, CloseDialog);
    EXPECT_EQ(object->UserOptionsDlg(nullptr), S_OK);
    EXPECT_EQ(g_seen.times, 1);
    EXPECT_EQ(g_seen.skins, 1) << "the installed skin";
    EXPECT_NE(g_seen.about.find(L"Build: 0, 1, 0, 12"), std::wstring::npos)
        << "read from the installed library";
}

TEST(Library, IsRegisteredCreatedAndUnloaded) {
    test::LetComSeeClasses();
    InstallFiles();
    LoadedLibrary library;
    ASSERT_EQ(library.Call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(ClassIsRegistered());
    void* created = nullptr;
    ASSERT_EQ(CoCreateInstance(kInputMethod, nullptr, CLSCTX_INPROC_SERVER, IID_IInputMethod2, &created),
              S_OK);
    auto* object = static_cast<IInputMethod2*>(created);
    IMINFO info{};
    info.cbSize = sizeof info;
    EXPECT_EQ(object->GetInfo(&info), S_OK);
    EXPECT_NE(info.hImageNarrow, nullptr);
    OpenTheOptions(object);

    EXPECT_EQ(library.Call("DllCanUnloadNow"), S_FALSE);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_EQ(library.Call("DllCanUnloadNow"), S_OK);
    EXPECT_EQ(library.Call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(ClassIsRegistered());
    library.Free();
    test::UnloadUnusedLibraries();
    EXPECT_FALSE(LoadedLibrary::IsLoaded());
}

}  // namespace
