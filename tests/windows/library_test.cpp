// SPDX-License-Identifier: MIT
// The real library in a shell: registered, created by its class identifier, selected, typed on, options
// opened, unregistered, unloaded.
#include <gtest/gtest.h>

#include <vector>

#include "handheld.h"
#include "recording_callback.h"
#include "registry_values.h"
#include "test_support.h"

namespace {

constexpr WCHAR kClassKey[] = L"CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}";
constexpr RECT kSipPlace{0, 214, 240, 294};
constexpr WCHAR kSipClass[] = L"LibraryTestSip";

bool ClassIsRegistered() { return test::KeyExists(HKEY_CLASSES_ROOT, kClassKey); }

// The skin, read as a module: the tests' expectations come from its resources.
class Skin {
public:
    Skin() : m_module(LoadLibraryW(L"\\Windows\\standard.tlk")) { EXPECT_NE(m_module, nullptr); }
    ~Skin() { FreeLibrary(m_module); }
    Skin(const Skin&) = delete;
    Skin& operator=(const Skin&) = delete;

    PanelPicture Picture(LPCWSTR name) const {
        return PictureOf(test::Picture(
            static_cast<HBITMAP>(LoadImageW(m_module, name, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))));
    }

    // The middle of the first rectangle of the key. Records are 16 bytes, most significant byte first.
    POINT KeyCenter(WORD key) const {
        const HRSRC resource = FindResourceW(m_module, L"CHAR_LAYOUT_STRUCT", L"RC_DATA");
        const auto* record = static_cast<const BYTE*>(LoadResource(m_module, resource));
        const BYTE* const end = record + SizeofResource(m_module, resource);
        const auto word = [&](int index) {
            return static_cast<LONG>(record[2 * index] << 8 | record[2 * index + 1]);
        };
        for (; record + 16 <= end; record += 16) {
            if (word(0) == key) return {(word(2) + word(4)) / 2, (word(3) + word(5)) / 2};
        }
        ADD_FAILURE() << "the skin has no key " << key;
        return {};
    }

private:
    HMODULE m_module;
};

// The picture where the mask is white, black elsewhere.
PanelPicture Masked(const PanelPicture& picture, const PanelPicture& mask) {
    PanelPicture result = picture;
    for (std::size_t i = 0; i < result.pixels.size(); ++i)
        result.pixels[i] = mask.pixels[i] ? picture.pixels[i] : 0;
    return result;
}

class Library : public testing::Test {
protected:
    void SetUp() override {
        test::LetComSeeClasses();
        InstallFiles();
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.lpszClassName = kSipClass;
        RegisterClassW(&windowClass);
        m_sip = CreateWindowExW(WS_EX_TOPMOST, kSipClass, nullptr, WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                                kSipPlace.left, kSipPlace.top, 240, 80, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(m_sip, nullptr);
    }
    void TearDown() override {
        DestroyWindow(m_sip);
        UnregisterClassW(kSipClass, nullptr);
    }

    HWND Panel() const { return GetWindow(m_sip, GW_CHILD); }

    test::Events Tap(WORD key) {
        const POINT point = m_skin->KeyCenter(key);
        SendPen(Panel(), WM_LBUTTONDOWN, point);
        SendPen(Panel(), WM_LBUTTONUP, point);
        return m_callback.Take();
    }

    void Select(IInputMethod2* object);
    void TypeOnTheSkin();
    void OpenTheOptions(IInputMethod2* object);

    HWND m_sip = nullptr;
    std::unique_ptr<Skin> m_skin;
    test::RecordingCallback m_callback;
};

void Library::Select(IInputMethod2* object) {
    IMINFO info{};
    info.cbSize = sizeof info;
    EXPECT_EQ(object->Select(m_sip), S_OK);
    EXPECT_EQ(object->GetInfo(&info), S_OK);
    EXPECT_NE(info.hImageNarrow, nullptr);
    EXPECT_EQ(object->RegisterCallback(&m_callback), S_OK);
    SIPINFO place{};
    place.cbSize = sizeof place;
    place.fdwFlags = SIPF_DOCKED | SIPF_ON;
    place.rcVisibleDesktop = {0, 26, 240, kSipPlace.top};
    place.rcSipRect = kSipPlace;
    EXPECT_EQ(object->ReceiveSipInfo(&place), S_OK);
    EXPECT_EQ(object->Showing(), S_OK);
    DeliverMessages();
}

void Library::TypeOnTheSkin() {
    const PanelPicture picture = m_skin->Picture(L"char_keyboard_bitmap");
    const PanelPicture small = Masked(picture, m_skin->Picture(L"LANG1_SMALL_MASK"));
    EXPECT_EQ(CountDifferences(PictureOf(Panel()), small), 0);
    constexpr WORD q = 82;
    constexpr WORD shift = 48;
    EXPECT_EQ(Tap(q), test::Typed('Q', 'q'));
    EXPECT_EQ(Tap(shift), test::Events{"vk 10 down"});
    EXPECT_NE(CountDifferences(PictureOf(Panel()), small), 0);
    EXPECT_FALSE(Tap(q).empty());
    EXPECT_EQ(CountDifferences(PictureOf(Panel()), small), 0) << "Shift held for one letter";
    EXPECT_EQ(GetCapture(), nullptr);
}

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

void Library::OpenTheOptions(IInputMethod2* object) {
    g_seen = {};
    SetTimer(nullptr, 0, 10, CloseDialog);
    EXPECT_EQ(object->UserOptionsDlg(nullptr), S_OK);
    EXPECT_EQ(g_seen.times, 1);
    EXPECT_EQ(g_seen.skins, 1) << "the installed skin";
    EXPECT_NE(g_seen.about.find(L"Build: 0, 1, 0, 12"), std::wstring::npos)
        << "read from the installed library";
}

TEST_F(Library, WorksInAShell) {
    LoadedLibrary library;
    m_skin = std::make_unique<Skin>();
    ASSERT_EQ(library.Call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(ClassIsRegistered());
    void* created = nullptr;
    ASSERT_EQ(CoCreateInstance(kInputMethod, nullptr, CLSCTX_INPROC_SERVER, IID_IInputMethod2, &created),
              S_OK);
    auto* object = static_cast<IInputMethod2*>(created);
    Select(object);
    ASSERT_NE(Panel(), nullptr);
    TypeOnTheSkin();
    OpenTheOptions(object);

    EXPECT_EQ(object->Deselect(), S_OK);
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(library.Call("DllCanUnloadNow"), S_FALSE);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_EQ(library.Call("DllCanUnloadNow"), S_OK);
    EXPECT_EQ(library.Call("DllUnregisterServer"), S_OK);
    EXPECT_FALSE(ClassIsRegistered());
    m_skin.reset();
    library.Free();
    test::UnloadUnusedLibraries();
    EXPECT_FALSE(LoadedLibrary::IsLoaded());
}

}  // namespace
