// SPDX-License-Identifier: MIT
#include <windows.h>

#include <differences.h>
#include <rectangles.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

namespace {

constexpr WCHAR kClass[] = TEXT("Windows-Test");
constexpr WCHAR kClassInCapitals[] = TEXT("WINDOWS-TEST");

// The first and the last message of a window if there are nonclient messages.
constexpr UINT kNonclientCreate = 0x0081;
constexpr UINT kNonclientDestroy = 0x0082;

struct Event {
    HWND window;
    UINT message;
    bool operator==(const Event&) const = default;
};

std::vector<Event> g_events;
// If set, handles a message instead of DefWindowProcW by returning true.
std::function<bool(HWND, UINT, LRESULT&)> g_answer;

constexpr UINT kRecorded[] = {kNonclientCreate, WM_CREATE,  WM_MOVE,           WM_SIZE,
                              WM_SHOWWINDOW,    WM_DESTROY, kNonclientDestroy, WM_CAPTURECHANGED};

LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (std::count(std::begin(kRecorded), std::end(kRecorded), message))
        g_events.push_back({window, message});
    LRESULT result = 0;
    if (g_answer && g_answer(window, message, result)) return result;
    return DefWindowProcW(window, message, wParam, lParam);
}

std::vector<UINT> TakeMessages() {
    std::vector<UINT> messages;
    for (const Event& event : g_events)
        messages.push_back(event.message);
    g_events.clear();
    return messages;
}

RECT ClientRect(HWND window) {
    RECT rectangle{};
    EXPECT_TRUE(GetClientRect(window, &rectangle));
    return rectangle;
}

// The update rectangle; all 0 for none.
RECT UpdateRect(HWND window) {
    RECT rectangle{};
    const BOOL isAny = GetUpdateRect(window, &rectangle, FALSE);
    EXPECT_EQ(isAny == FALSE, rectangle == RECT{});
    return rectangle;
}

class Windows : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(Register(), 0); }

    void TearDown() override {
        g_answer = nullptr;
        if (IsWindow(m_top)) DestroyWindow(m_top);
        UnregisterClassW(kClass, nullptr);
        g_events.clear();
    }

    static ATOM Register() {
        WNDCLASSW windowClass{};
        windowClass.style = CS_HREDRAW | CS_VREDRAW;
        windowClass.lpfnWndProc = Record;
        windowClass.lpszClassName = kClass;
        return RegisterClassW(&windowClass);
    }

    static HWND Create(LPCWSTR name, DWORD style, HWND parent) {
        return CreateWindowExW(0, name, nullptr, style, 10, 20, 100, 80, parent, nullptr, nullptr, nullptr);
    }

    HWND CreateTop(DWORD style = 0) {
        return m_top = Create(kClass, WS_POPUP | WS_CLIPCHILDREN | style, nullptr);
    }
    static HWND CreateChild(HWND parent, DWORD style = 0) { return Create(kClass, WS_CHILD | style, parent); }

    HWND m_top = nullptr;
};

TEST_F(Windows, ClassNamesAreUniqueIgnoringCase) {
    WNDCLASSW again{};
    again.lpfnWndProc = Record;
    again.lpszClassName = kClassInCapitals;
    EXPECT_EQ(RegisterClassW(&again), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_ALREADY_EXISTS));
    ASSERT_TRUE(UnregisterClassW(kClass, nullptr));
    const LPCWSTR atom = MAKEINTRESOURCEW(Register());
    for (const LPCWSTR name : {kClass, kClassInCapitals, atom}) {
        const HWND window = Create(name, WS_POPUP, nullptr);
        EXPECT_TRUE(IsWindow(window));
        DestroyWindow(window);
    }
}

TEST_F(Windows, ClassInUseCannotBeUnregistered) {
    const HWND top = CreateTop();
    EXPECT_FALSE(UnregisterClassW(kClass, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_HAS_WINDOWS));

    DestroyWindow(top);
    EXPECT_TRUE(UnregisterClassW(kClass, nullptr));
    EXPECT_FALSE(UnregisterClassW(kClass, nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_DOES_NOT_EXIST));

    EXPECT_EQ(Create(kClass, WS_POPUP, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), test::Either<DWORD>(test::Difference::UnknownClass, ERROR_CANNOT_FIND_WND_CLASS,
                                                  ERROR_CLASS_DOES_NOT_EXIST));
}

TEST_F(Windows, CreationSendsItsMessagesInOrder) {
    const HWND top = CreateTop(WS_VISIBLE);
    TakeMessages();
    const HWND child = CreateChild(top, WS_VISIBLE);
    const std::vector<UINT> expected{kNonclientCreate, WM_CREATE, WM_SIZE, WM_MOVE, WM_SHOWWINDOW};
    EXPECT_EQ(TakeMessages(),
              test::Either(test::Difference::NonclientMessages,
                           std::vector<UINT>(expected.begin() + 1, expected.end()), expected));
    EXPECT_TRUE(IsWindowVisible(child));
    EXPECT_EQ(GetParent(child), top);
}

TEST_F(Windows, RefusedCreationLeavesNoWindow) {
    HWND seen = nullptr;
    g_answer = [&](HWND window, UINT message, LRESULT& result) {
        if (message != WM_CREATE) return false;
        seen = window;
        result = -1;
        return true;
    };
    EXPECT_EQ(CreateTop(), nullptr);
    EXPECT_NE(seen, nullptr);
    EXPECT_FALSE(IsWindow(seen));
    EXPECT_EQ(g_events.back(), (Event{seen, test::Either<UINT>(test::Difference::NonclientMessages,
                                                               WM_DESTROY, kNonclientDestroy)}));
}

TEST_F(Windows, DestructionReachesParentFirstAndEndsWithIt) {
    const HWND top = CreateTop();
    const HWND child = CreateChild(top);
    g_events.clear();
    EXPECT_TRUE(DestroyWindow(top));
    const std::vector<Event> expected{
        {top, WM_DESTROY}, {child, WM_DESTROY}, {child, kNonclientDestroy}, {top, kNonclientDestroy}};
    EXPECT_EQ(g_events, test::Either(test::Difference::NonclientMessages,
                                     std::vector<Event>(expected.begin(), expected.begin() + 2), expected));
    EXPECT_FALSE(IsWindow(child));
}

TEST_F(Windows, StaleHandlesAreRefusedEverywhere) {
    const HWND stale = CreateTop();
    EXPECT_TRUE(DestroyWindow(stale));
    EXPECT_FALSE(DestroyWindow(stale));
    EXPECT_EQ(GetLastError(), test::Either<DWORD>(test::Difference::DestroyedTwice,
                                                  ERROR_INVALID_WINDOW_HANDLE, ERROR_ACCESS_DENIED));
    EXPECT_EQ(CreateChild(nullptr), nullptr);
    const HWND top = CreateTop();
    ASSERT_NE(top, stale);
    RECT rectangle;
    POINT point{};
    PAINTSTRUCT paint;
    const std::vector<std::function<bool()>> calls{
        [&] { return CreateChild(stale) != nullptr; },
        [&] { return GetClientRect(stale, &rectangle) != FALSE; },
        [&] { return GetWindowRect(stale, &rectangle) != FALSE; },
        [&] { return ClientToScreen(stale, &point) != FALSE; },
        [&] { return MoveWindow(stale, 0, 0, 1, 1, TRUE) != FALSE; },
        [&] { return BringWindowToTop(stale) != FALSE; },
        [&] { return ShowWindow(stale, SW_SHOW) != FALSE; },
        [&] { return PostMessageW(stale, WM_USER, 0, 0) != FALSE; },
        [&] { return InvalidateRect(stale, nullptr, TRUE) != FALSE; },
        [&] { return BeginPaint(stale, &paint) != nullptr; },
        [&] { return GetDC(stale) != nullptr; },
        [&] { return GetWindowLongPtrW(stale, GWL_STYLE) != 0; },
    };
    for (std::size_t i = 0; i < calls.size(); ++i) {
        SetLastError(0);
        EXPECT_FALSE(calls[i]()) << "call " << i;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE)) << "call " << i;
    }
}

TEST_F(Windows, AWindowIsVisibleOnlyWithItsAncestors) {
    const HWND top = CreateTop();
    const HWND child = CreateChild(top, WS_VISIBLE);
    EXPECT_FALSE(IsWindowVisible(child));
    EXPECT_FALSE(ShowWindow(top, SW_SHOWNOACTIVATE));
    EXPECT_TRUE(IsWindowVisible(child));
    EXPECT_TRUE(ShowWindow(child, SW_HIDE));
    EXPECT_FALSE(IsWindowVisible(child));
}

TEST_F(Windows, MovingReportsOnlyChanges) {
    const HWND top = CreateTop();
    const HWND child = CreateChild(top);
    TakeMessages();
    MoveWindow(child, 10, 20, 100, 80, TRUE);
    EXPECT_EQ(TakeMessages(), std::vector<UINT>{});
    MoveWindow(child, 5, 6, 100, 80, TRUE);
    EXPECT_EQ(TakeMessages(), std::vector<UINT>{WM_MOVE});
    MoveWindow(child, 5, 6, 50, 40, TRUE);
    EXPECT_EQ(TakeMessages(), std::vector<UINT>{WM_SIZE});

    RECT rectangle;
    EXPECT_EQ(ClientRect(child), (RECT{0, 0, 50, 40}));
    GetWindowRect(child, &rectangle);
    EXPECT_EQ(rectangle, (RECT{15, 26, 65, 66}));
    POINT point{0, 0};
    ScreenToClient(child, &point);
    EXPECT_TRUE(point.x == -15 && point.y == -26);
}

TEST_F(Windows, ProcedureAndUserDataBelongToTheWindow) {
    const HWND top = CreateTop();
    const HWND child = CreateChild(top);
    const WNDPROC seven = [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return 7; };
    EXPECT_EQ(SetWindowLongPtrW(child, GWLP_USERDATA, 42), 0);
    SetWindowLongPtrW(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(seven));
    EXPECT_EQ(SendMessageW(child, WM_USER, 0, 0), 7);
    EXPECT_EQ(SendMessageW(top, WM_USER, 0, 0), 0);
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_USERDATA), 42);
    EXPECT_EQ(GetWindowLongPtrW(top, GWLP_USERDATA), 0);
}

TEST_F(Windows, TheWindowLosingTheCaptureIsTold) {
    const HWND top = CreateTop(WS_VISIBLE);
    const HWND child = CreateChild(top, WS_VISIBLE);
    TakeMessages();
    EXPECT_EQ(SetCapture(top), nullptr);
    EXPECT_EQ(SetCapture(child), top);
    EXPECT_EQ(g_events, (std::vector<Event>{{top, WM_CAPTURECHANGED}}));
    EXPECT_EQ(GetCapture(), child);
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_EQ(g_events.back(), (Event{child, WM_CAPTURECHANGED}));
    EXPECT_EQ(GetCapture(), nullptr);

    SetCapture(child);
    DestroyWindow(top);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Windows, PostedMessagesComeInOrderAndQuitLast) {
    const HWND top = CreateTop();
    const HWND child = CreateChild(top);
    PostQuitMessage(3);
    PostMessageW(child, WM_USER + 2, 0, 0);
    DestroyWindow(child);  // its message is dropped
    PostMessageW(top, WM_USER, 0, 0);
    PostMessageW(top, WM_USER + 1, 0, 0);
    MSG message;
    ASSERT_TRUE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER));
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_USER + 1));
    EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 3u);
}

class Painting : public Windows {
protected:
    void SetUp() override {
        Windows::SetUp();
        CreateTop(WS_VISIBLE);
        UpdateWindow(m_top);
        ASSERT_FALSE(GetUpdateRect(m_top, nullptr, FALSE));
    }
};

TEST_F(Painting, TheUpdateRegionGrowsAndIsClippedToTheClientArea) {
    const RECT first{10, 10, 20, 20};
    const RECT second{90, 30, 300, 40};
    EXPECT_TRUE(InvalidateRect(m_top, &first, TRUE));
    EXPECT_TRUE(InvalidateRect(m_top, &second, TRUE));
    const RECT expected{10, 10, 100, 40};
    EXPECT_EQ(UpdateRect(m_top), expected);
    PAINTSTRUCT paint;
    ASSERT_NE(BeginPaint(m_top, &paint), nullptr);
    EXPECT_EQ(paint.rcPaint, expected);
    EXPECT_TRUE(EndPaint(m_top, &paint));
    EXPECT_EQ(UpdateRect(m_top), RECT{});
}

TEST_F(Painting, BackgroundIsErasedOnceWhenAskedFor) {
    int erased = 0;
    LRESULT eraseResult = 1;
    g_answer = [&](HWND, UINT message, LRESULT& result) {
        if (message != WM_ERASEBKGND) return false;
        ++erased;
        result = eraseResult;
        return true;
    };
    const auto paintOnce = [&] {
        PAINTSTRUCT paint;
        BeginPaint(m_top, &paint);
        EndPaint(m_top, &paint);
        return paint.fErase != FALSE;
    };
    InvalidateRect(m_top, nullptr, FALSE);
    EXPECT_FALSE(paintOnce());
    EXPECT_EQ(erased, 0);
    InvalidateRect(m_top, nullptr, TRUE);
    InvalidateRect(m_top, nullptr, FALSE);
    EXPECT_FALSE(paintOnce());
    EXPECT_EQ(erased, 1);
    eraseResult = 0;
    InvalidateRect(m_top, nullptr, TRUE);
    EXPECT_TRUE(paintOnce());
    EXPECT_EQ(erased, 2);
}

TEST_F(Painting, HiddenWindowsAreNotInvalidated) {
    InvalidateRect(m_top, nullptr, TRUE);
    ShowWindow(m_top, SW_HIDE);
    EXPECT_EQ(UpdateRect(m_top), RECT{});
    EXPECT_TRUE(InvalidateRect(m_top, nullptr, TRUE));
    EXPECT_EQ(UpdateRect(m_top), RECT{});
    ShowWindow(m_top, SW_SHOW);
    EXPECT_EQ(UpdateRect(m_top), ClientRect(m_top));
}

}  // namespace
