// SPDX-License-Identifier: MIT
// Windows whose messages are recorded and answered by tests of the host layer.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace test {

struct Message {
    HWND window;
    UINT number;
    WPARAM wParam;
    LPARAM lParam;
};

class RecordedWindows : public testing::Test {
public:
    // Gets every message before DefWindowProcW, and handles it by returning true.
    std::function<bool(const Message&, LRESULT&)> onMessage;
    std::vector<Message> messages;  // all but WM_ERASEBKGND, in order of arrival

    // Returns the messages with these numbers, in order, and clears the recording.
    std::vector<Message> Take(std::initializer_list<int> numbers) {
        std::vector<Message> wanted = std::exchange(messages, {});
        std::erase_if(wanted, [&](const Message& message) {
            return std::count(numbers.begin(), numbers.end(), static_cast<int>(message.number)) == 0;
        });
        return wanted;
    }

    // Creates a window of class "Plain", or "Taps" with CS_DBLCLKS. Coordinates as for CreateWindowExW.
    static HWND Create(RECT place, HWND parent = nullptr, LPCWSTR name = TEXT("Plain"),
                       DWORD style = WS_VISIBLE, DWORD extendedStyle = 0) {
        return CreateWindowExW(extendedStyle, name, nullptr, style | (parent ? WS_CHILD : WS_POPUP),
                               place.left, place.top, place.right - place.left, place.bottom - place.top,
                               parent, nullptr, nullptr, nullptr);
    }

protected:
    void SetUp() override {
        m_current = this;
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Record;
        windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        windowClass.lpszClassName = TEXT("Plain");
        ASSERT_NE(RegisterClassW(&windowClass), 0);
        windowClass.style = CS_DBLCLKS;
        windowClass.lpszClassName = TEXT("Taps");
        ASSERT_NE(RegisterClassW(&windowClass), 0);
        m_desktop = CreateTop({0, 0, 240, 320});
    }

    void TearDown() override {
        onMessage = nullptr;
        for (const HWND window : m_tops)
            DestroyWindow(window);  // fails if the test has done it
        m_current = nullptr;
    }

    // Creates a top-level window, destroyed with the test.
    HWND CreateTop(RECT place, LPCWSTR name = TEXT("Plain"), DWORD extendedStyle = 0) {
        m_tops.push_back(Create(place, nullptr, name, WS_VISIBLE, extendedStyle));
        return m_tops.back();
    }

    HWND m_desktop = nullptr;  // as large as the screen, below all others

private:
    static LRESULT CALLBACK Record(HWND window, UINT number, WPARAM wParam, LPARAM lParam) {
        const Message message{window, number, wParam, lParam};
        if (m_current && number != WM_ERASEBKGND) m_current->messages.push_back(message);
        LRESULT result = 0;
        if (m_current && m_current->onMessage && m_current->onMessage(message, result)) return result;
        return DefWindowProcW(window, number, wParam, lParam);
    }

    inline static RecordedWindows* m_current = nullptr;
    std::vector<HWND> m_tops;
};

}  // namespace test
