// SPDX-License-Identifier: MIT
// What the layer has only for tests: failures on demand and the count of live handles.
#include <commctrl.h>
#include <host_control.h>
#include <skin_builder.h>
#include <test_support.h>

#include "picture.h"
#include "windows/recorder.h"

namespace {

using host::Call;
using host::LiveHandles;

TEST(Faults, TheNthCallFromNowFailsOnce) {
    EXPECT_EQ(host::CallCount(Call::DeleteFile), 0u) << "nothing stays of a test before";
    const auto errorOfDeletion = [] { return DeleteFileW(TEXT("\\absent")) ? 0 : GetLastError(); };
    errorOfDeletion();
    host::FailCall(Call::DeleteFile, 2);
    for (const int expected : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_FILE_NOT_FOUND})
        EXPECT_EQ(errorOfDeletion(), static_cast<DWORD>(expected));
    EXPECT_EQ(host::CallCount(Call::DeleteFile), 4u);
    host::FailCall(Call::DeleteFile);
    host::ClearFaults();
    EXPECT_EQ(errorOfDeletion(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

class Failures : public test::RecordedWindows {};

TEST_F(Failures, SetAnErrorAndChangeNothing) {
    const test::Picture picture(CreateBitmap(2, 2, 1, 32, nullptr));
    const LOGFONTW font{};
    RECT area{0, 0, 2, 2};
    BITMAP record{};
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = TEXT("Failing");
    const HBRUSH white = GetSysColorBrush(COLOR_WINDOW);
    const std::pair<Call, std::function<bool()>> attempts[] = {
        {Call::CreateDC, [] { return CreateCompatibleDC(nullptr) != nullptr; }},
        {Call::CreateBitmap, [] { return CreateBitmap(1, 1, 1, 1, nullptr) != nullptr; }},
        {Call::CreateDIBSection, [] { return test::MakeSection(24, 1, 1) != nullptr; }},
        {Call::CreateFont, [&] { return CreateFontIndirectW(&font) != nullptr; }},
        {Call::CreateBrush, [] { return CreateSolidBrush(0) != nullptr; }},
        {Call::SelectObject, [&] { return SelectObject(picture, white) != nullptr; }},
        {Call::GetObject, [&] { return GetObjectW(picture.Bitmap(), sizeof record, &record) != 0; }},
        {Call::BitBlt, [&] { return BitBlt(picture, 0, 0, 2, 2, nullptr, 0, 0, WHITENESS) != 0; }},
        {Call::MaskBlt,
         [&] { return MaskBlt(picture, 0, 0, 2, 2, nullptr, 0, 0, nullptr, 0, 0, WHITENESS) != 0; }},
        {Call::FillRect, [&] { return FillRect(picture, &area, white) != 0; }},
        {Call::DrawText, [&] { return DrawTextW(picture, u"a", 1, &area, 0) != 0; }},
        {Call::LoadBitmap, [] { return LoadBitmapW(nullptr, u"picture") != nullptr; }},
        {Call::CreateWindow,
         [&] {
             return Create({0, 0, 5, 5}) != nullptr;
         }},
        {Call::PostMessage, [&] { return PostMessageW(m_desktop, WM_USER, 0, 0) != 0; }},
        {Call::InvalidateRect, [&] { return InvalidateRect(m_desktop, nullptr, TRUE) != 0; }},
        {Call::RegisterClass, [&] { return RegisterClassW(&windowClass) != 0; }}};
    for (const auto& [call, attempt] : attempts) {
        host::FailCall(call);
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(attempt()) << static_cast<int>(call);
        EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS)) << static_cast<int>(call);
    }
    EXPECT_EQ(picture.Pixels(), std::vector<COLORREF>(4, 0));
}

// A section without its own mutex must still exclude.
TEST(Faults, ALockThatCouldNotBeMadeStillLocks) {
    host::FailCall(Call::InitializeLock);
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EnterCriticalSection(&section);
    LeaveCriticalSection(&section);
    LeaveCriticalSection(&section);
    DeleteCriticalSection(&section);
}

class LiveHandlesTest : public test::RecordedWindows {
protected:
    // Creates the object, checks that it counts, and ends it.
    template <typename Make, typename End>
    void ExpectCounted(int LiveHandles::*kind, Make make, End end) {
        const int before = host::CountHandles().*kind;
        const auto product = make();
        EXPECT_EQ(host::CountHandles().*kind, before + 1);
        {
            const host::PlatformScope platform;
            const auto own = make();
            EXPECT_EQ(host::CountHandles().*kind, before + 1) << "one of the platform";
            EXPECT_TRUE(end(own));
        }
        EXPECT_TRUE(end(product));
        EXPECT_EQ(host::CountHandles().*kind, before);
    }
};

TEST_F(LiveHandlesTest, CountForTheirCreators) {
    test::SkinBuilder().Install("a.tlk");
    const LOGFONTW font{};
    WIN32_FIND_DATAW data;
    ExpectCounted(
        &LiveHandles::bitmaps, [] { return CreateBitmap(1, 1, 1, 1, nullptr); }, DeleteObject);
    ExpectCounted(
        &LiveHandles::dcs, [] { return CreateCompatibleDC(nullptr); }, DeleteDC);
    ExpectCounted(
        &LiveHandles::fonts, [&] { return CreateFontIndirectW(&font); }, DeleteObject);
    ExpectCounted(
        &LiveHandles::brushes, [] { return CreateSolidBrush(0); }, DeleteObject);
    ExpectCounted(
        &LiveHandles::windows,
        [&] {
            return Create({0, 0, 5, 5}, m_desktop);
        },
        DestroyWindow);
    ExpectCounted(
        &LiveHandles::finds, [&] { return FindFirstFileW(TEXT("\\*"), &data); }, FindClose);
    ExpectCounted(
        &LiveHandles::lists, [] { return ImageList_Create(2, 2, 0, 1, 1); }, ImageList_Destroy);
    ExpectCounted(
        &LiveHandles::modules, [] { return LoadLibraryW(TEXT("a.tlk")); }, FreeLibrary);
}

// A module is shared, and counts as long as the product holds it.
TEST_F(LiveHandlesTest, AModuleLoadedByThePlatformCountsForTheProductToo) {
    test::SkinBuilder().Install("a.tlk");
    HMODULE module = nullptr;
    {
        const host::PlatformScope platform;
        module = LoadLibraryW(TEXT("a.tlk"));
    }
    EXPECT_EQ(host::CountHandles().modules, 0);
    EXPECT_EQ(LoadLibraryW(TEXT("a.tlk")), module);
    EXPECT_EQ(host::CountHandles().modules, 1);
    FreeLibrary(module);
    EXPECT_EQ(host::CountHandles().modules, 0);
    FreeLibrary(module);
}

}  // namespace
