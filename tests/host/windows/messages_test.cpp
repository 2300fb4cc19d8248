// SPDX-License-Identifier: MIT
#include <host_control.h>

#include "windows/recorder.h"

namespace {

class MessageLoop : public test::RecordedWindows {
protected:
    void SetUp() override {
        RecordedWindows::SetUp();
        host::DeliverMessages();
        messages.clear();
    }

    // Runs a message loop until the idle handler returns false or WM_QUIT comes; returns its code.
    static WPARAM RunLoop() {
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
        return message.wParam;
    }
};

TEST_F(MessageLoop, CallsTheDriverWhenNoMessageWaits) {
    int asked = 0;
    host::SetIdleHandler([&] {
        if (++asked <= 3) PostMessageW(m_desktop, WM_USER + static_cast<UINT>(asked), 0, 0);
        return asked < 5;
    });
    EXPECT_EQ(RunLoop(), 0u);
    EXPECT_EQ(asked, 5);
    const std::vector<test::Message> got = Take({WM_USER + 1, WM_USER + 2, WM_USER + 3});
    EXPECT_EQ(got.size(), 3u);
}

TEST_F(MessageLoop, TheIdleHandlerMayReplaceItself) {
    bool second = false;
    host::SetIdleHandler([&second, marker = std::vector<int>(100, 7)] {
        host::SetIdleHandler([&second] {
            second = true;
            return false;
        });
        return marker.back() == 7;
    });
    RunLoop();
    EXPECT_TRUE(second);
}

TEST_F(MessageLoop, QuitIsLeftToTheMessageLoop) {
    PostQuitMessage(9);
    host::DeliverMessages();
    EXPECT_EQ(RunLoop(), 9u);
}

TEST_F(MessageLoop, AMessageForNobodyIsDeliveredToNobody) {
    PostMessageW(nullptr, WM_USER, 0, 0);
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, m_desktop, 0, 0, PM_REMOVE)) << "filters are not there";
    EXPECT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(DispatchMessageW(&message), 0);
}

TEST_F(MessageLoop, QueueIsBounded) {
    int posted = 0;
    while (posted < 20000 && PostMessageW(m_desktop, WM_USER, 0, 0))
        ++posted;
    EXPECT_EQ(posted, 10000);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NOT_ENOUGH_QUOTA));
    host::DeliverMessages();
    EXPECT_TRUE(PostMessageW(m_desktop, WM_USER, 0, 0));
}

TEST_F(MessageLoop, MessagesAreStampedWithClockAndPen) {
    Sleep(20);
    host::PostPen(host::Pen::Move, {3, 4});
    host::AdvanceClock(5);
    EXPECT_EQ(host::Now(), 25u);
    MSG message;
    ASSERT_TRUE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.time, 20u);
    EXPECT_EQ(message.pt.x, 3);
    EXPECT_EQ(message.pt.y, 4);
}

}  // namespace
