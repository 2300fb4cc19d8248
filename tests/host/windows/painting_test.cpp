// SPDX-License-Identifier: MIT
#include <host_control.h>

#include "framework/handles.h"
#include "rectangles.h"
#include "test_support.h"
#include "windows/recorder.h"

namespace {

// Every window fills its clip with its own colour, so the screen shows which window painted where.
class WindowPainting : public test::RecordedWindows {
protected:
    void SetUp() override {
        RecordedWindows::SetUp();
        onMessage = [](const test::Message& message, LRESULT& result) {
            if (message.number != WM_PAINT) return false;
            Fill(CPaintCycle(message.window).Get(), message.window);
            result = 0;
            return true;
        };
        Settle();
    }

    static COLORREF ColorOf(HWND window) {
        return RGB(reinterpret_cast<ULONG_PTR>(window) & 0x3F, m_tint, 0x40);
    }

    static void Fill(HDC dc, HWND window) {
        const CBrushOwner brush(CreateSolidBrush(ColorOf(window)));
        const RECT everything{-1000, -1000, 1000, 1000};
        FillRect(dc, &everything, brush.Get());
    }

    // Delivers all messages; later painting has another tint.
    void Settle() {
        host::DeliverMessages();
        messages.clear();
        host::TakeScreenChanges();
        m_tint = static_cast<BYTE>(m_tint + 1);
    }

    static DWORD PixelAt(int x, int y) {
        const host::ScreenView screen = host::Screen();
        return screen.pixels[y * screen.width + x];
    }

    // The number of screen pixels that the window has painted since Settle.
    static int PixelsOf(HWND window) {
        const COLORREF color = ColorOf(window);
        const DWORD pixel = (color & 0xFF) << 16 | (color & 0xFF00) | ((color >> 16) & 0xFF);
        const host::ScreenView screen = host::Screen();
        return static_cast<int>(
            std::count(screen.pixels, screen.pixels + screen.width * screen.height, pixel));
    }

    std::vector<HWND> PaintedInOrder() {
        host::DeliverMessages();
        std::vector<HWND> windows;
        for (const test::Message& message : Take({WM_PAINT}))
            windows.push_back(message.window);
        return windows;
    }

    inline static BYTE m_tint = 0;
};

TEST_F(WindowPainting, DrawingStaysInsideTheUpdateRegion) {
    const RECT first{10, 10, 20, 20};
    const RECT second{15, 15, 30, 20};
    InvalidateRect(m_desktop, &first, FALSE);
    InvalidateRect(m_desktop, &second, FALSE);
    host::DeliverMessages();
    EXPECT_EQ(PixelsOf(m_desktop), 100 + 50);
    EXPECT_EQ(host::TakeScreenChanges(), (RECT{10, 10, 30, 20}));
}

TEST_F(WindowPainting, DrawingIsClippedByChildrenSiblingsAndTopmostWindows) {
    const HWND sip = CreateTop({0, 240, 240, 320}, TEXT("Plain"), WS_EX_TOPMOST);
    const HWND dialog = CreateTop({100, 100, 240, 320});
    const HWND upper = Create({30, 30, 200, 60}, dialog);
    const HWND lower = Create({0, 0, 60, 60}, dialog);
    Settle();
    for (const HWND window : {m_desktop, dialog, lower, upper, sip})
        InvalidateRect(window, nullptr, FALSE);
    EXPECT_EQ(PaintedInOrder(), (std::vector<HWND>{sip, dialog, upper, lower, m_desktop}));
    const int upperShows = 110 * 30;
    const int lowerShows = 60 * 60 - 30 * 30;
    EXPECT_EQ(PixelsOf(sip), 240 * 80);
    EXPECT_EQ(PixelsOf(upper), upperShows);
    EXPECT_EQ(PixelsOf(lower), lowerShows);
    EXPECT_EQ(PixelsOf(dialog), 140 * 140 - upperShows - lowerShows);
    EXPECT_EQ(PixelsOf(m_desktop), 240 * 240 - 140 * 140);
}

TEST_F(WindowPainting, ClientContextIsClippedLikePainting) {
    const HWND child = Create({200, 10, 300, 20}, m_desktop);
    Settle();
    for (const HWND window : {m_desktop, child}) {
        const HDC dc = GetDC(window);
        Fill(dc, window);
        EXPECT_EQ(ReleaseDC(nullptr, dc), 0) << "it belongs to the window";
        EXPECT_EQ(ReleaseDC(window, dc), 1);
    }
    EXPECT_EQ(PixelsOf(child), 40 * 10);
    EXPECT_EQ(PixelsOf(m_desktop), 240 * 320 - 40 * 10);
}

TEST_F(WindowPainting, TheWindowBelowIsPaintedWhenAWindowGoes) {
    const HWND below = CreateTop({0, 0, 60, 60});
    const HWND child = Create({10, 10, 30, 30}, below);
    const HWND above = CreateTop({20, 20, 100, 100});
    Settle();
    DestroyWindow(above);
    EXPECT_EQ(PaintedInOrder(), (std::vector<HWND>{below, child, m_desktop}));
    EXPECT_EQ(PixelsOf(child), 10 * 10);
    EXPECT_EQ(PixelsOf(below), 40 * 40 - 10 * 10);
    EXPECT_EQ(PixelsOf(m_desktop), 80 * 80 - 40 * 40);
}

TEST_F(WindowPainting, TheBareScreenIsBlack) {
    const HWND edge = CreateTop({0, 0, 240, 320});
    Settle();
    ShowWindow(m_desktop, SW_HIDE);
    MoveWindow(edge, 10, 0, 240, 320, TRUE);
    EXPECT_EQ(PixelAt(9, 5), 0u);
    EXPECT_NE(PixelAt(10, 5), 0u);
}

TEST_F(WindowPainting, ResizingPaintsTheNewPartAndMovingTheWholeWindow) {
    const HWND child = Create({10, 10, 30, 30}, m_desktop);
    Settle();
    MoveWindow(child, 10, 10, 30, 20, TRUE);
    EXPECT_EQ(PaintedInOrder(), std::vector<HWND>{child});
    EXPECT_EQ(PixelsOf(child), 10 * 20);
    Settle();
    MoveWindow(child, 15, 10, 30, 20, TRUE);
    host::DeliverMessages();
    EXPECT_EQ(PixelsOf(child), 30 * 20);
    EXPECT_EQ(PixelsOf(m_desktop), 5 * 20);
    Settle();
    MoveWindow(child, 15, 10, 30, 20, TRUE);
    EXPECT_TRUE(PaintedInOrder().empty());
}

TEST_F(WindowPainting, ARaisedWindowPaintsItsCoveredPart) {
    const HWND lower = Create({0, 0, 40, 40}, m_desktop);
    const HWND upper = Create({20, 0, 60, 40}, m_desktop);
    BringWindowToTop(upper);
    Settle();
    BringWindowToTop(lower);
    EXPECT_EQ(PaintedInOrder(), std::vector<HWND>{lower});
    EXPECT_EQ(PixelsOf(lower), 20 * 40);
    BringWindowToTop(lower);
    EXPECT_TRUE(PaintedInOrder().empty());
}

TEST_F(WindowPainting, CoveredWindowsAreNotPainted) {
    CreateTop({0, 0, 240, 320});
    Settle();
    InvalidateRect(m_desktop, nullptr, TRUE);
    EXPECT_TRUE(PaintedInOrder().empty());
    EXPECT_FALSE(GetUpdateRect(m_desktop, nullptr, FALSE));
}

TEST_F(WindowPainting, NewScreenSizePaintsEverything) {
    const HWND child = Create({10, 10, 30, 30}, m_desktop);
    Settle();
    host::SetScreenSize({320, 240});
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    EXPECT_EQ(PaintedInOrder(), (std::vector<HWND>{m_desktop, child}));
    EXPECT_EQ(PixelsOf(m_desktop), 240 * 240 - 20 * 20);
}

TEST_F(WindowPainting, BackgroundIsTheClassBrush) {
    InvalidateRect(m_desktop, nullptr, TRUE);
    onMessage = nullptr;
    host::DeliverMessages();
    EXPECT_EQ(PixelAt(5, 5), 0xFFFFFFu);
}

TEST_F(WindowPainting, UnansweredPaintIsDroppedAndReported) {
    onMessage = [](const test::Message& message, LRESULT&) { return message.number == WM_PAINT; };
    for (int i = 0; i < 2; ++i) {
        InvalidateRect(m_desktop, nullptr, TRUE);
        EXPECT_EQ(PaintedInOrder().size(), 1u);
        EXPECT_EQ(test::TakeReports().size(), 1u);
    }
}

TEST_F(WindowPainting, AFailedBeginPaintIsTriedAgain) {
    InvalidateRect(m_desktop, nullptr, TRUE);
    host::FailCall(host::Call::BeginPaint);
    EXPECT_EQ(PaintedInOrder().size(), 2u);
    EXPECT_EQ(PixelsOf(m_desktop), 240 * 320);
}

TEST_F(WindowPainting, PaintingDoesNotNestOrCross) {
    const HWND child = Create({10, 10, 30, 30}, m_desktop);
    PAINTSTRUCT paint;
    PAINTSTRUCT second;
    ASSERT_NE(BeginPaint(m_desktop, &paint), nullptr);
    EXPECT_EQ(BeginPaint(m_desktop, &second), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_FALSE(EndPaint(child, &paint));
    EXPECT_EQ(ReleaseDC(m_desktop, paint.hdc), 0);
    EXPECT_TRUE(EndPaint(m_desktop, &paint));
    EXPECT_FALSE(EndPaint(m_desktop, &paint));
    EXPECT_EQ(BeginPaint(m_desktop, nullptr), nullptr);
}

}  // namespace
