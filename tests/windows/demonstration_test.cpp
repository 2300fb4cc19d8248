// SPDX-License-Identifier: MIT
// Runs the simulator's demonstration with the real library, and compares the trace and the pictures of the
// panel with those of the host.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "edit_text.h"
#include "handheld.h"
#include "script.h"
#include "sip_trace.h"
#include "test_support.h"
#include "text.h"
#include "windows/import_patch.h"

namespace {

namespace fs = std::filesystem;

// The application with the focus: a text edited by keys.
class Notes final : public SipKeySink {
public:
    const std::u16string& Text() const { return m_text.Text(); }

    void SendVirtualKey(BYTE virtualKey, DWORD flags) override {
        const bool down = (flags & KEYEVENTF_KEYUP) == 0;
        if (virtualKey == VK_CONTROL) m_control = down;
        if (!down) return;
        if (virtualKey == VK_BACK) m_text.DeleteBackward();
        if (virtualKey == VK_DELETE) m_text.DeleteForward();
        if (virtualKey == VK_RETURN) m_text.Insert(u"\n");
        if (virtualKey == VK_SPACE) m_text.Insert(u" ");
        if (virtualKey == VK_LEFT) m_text.MoveLeft(Selecting::No);
        if (virtualKey == VK_RIGHT) m_text.MoveRight(Selecting::No);
    }

    void SendCharEvent(UINT, UINT shiftState, WCHAR character) override {
        const bool types = (shiftState & KeyStateDownFlag) && !(shiftState & KeyShiftNoCharacterFlag);
        if (!types || m_control || (shiftState & KeyShiftAnyCtrlFlag)) return;
        const auto unit = static_cast<char16_t>(character);
        if (unit == u'\b')
            m_text.DeleteBackward();
        else if (unit == u'\r')
            m_text.Insert(u"\n");
        else if (unit == u'\t' || (unit >= u' ' && unit != 0x7F))
            m_text.Insert({&unit, 1});
    }

private:
    EditText m_text;
    bool m_control = false;
};

// Used where the library takes and releases the capture.
Trace* g_trace = nullptr;
decltype(&SetCapture) g_setCapture = nullptr;
decltype(&ReleaseCapture) g_releaseCapture = nullptr;

void TraceChange(HWND before) {
    const HWND now = GetCapture();
    if ((before != nullptr) != (now != nullptr)) g_trace->Write(now ? "Capture on" : "Capture off");
}

HWND WINAPI TracedSetCapture(HWND window) {
    const HWND before = GetCapture();
    const HWND result = g_setCapture(window);
    TraceChange(before);
    return result;
}

BOOL WINAPI TracedReleaseCapture() {
    const HWND before = GetCapture();
    const BOOL result = g_releaseCapture();
    TraceChange(before);
    return result;
}

class Demonstration : public testing::Test {
protected:
    void SetUp() override {
        test::LetComSeeClasses();
        InstallFiles();
        m_library = std::make_unique<LoadedLibrary>();
        g_trace = &m_trace;
        g_setCapture = test::ReplaceImport(m_library->Get(), "SetCapture", &TracedSetCapture);
        g_releaseCapture = test::ReplaceImport(m_library->Get(), "ReleaseCapture", &TracedReleaseCapture);
        ASSERT_EQ(m_library->Call("DllRegisterServer"), S_OK);
        SipShell::Options options;
        options.inputMethod = kInputMethod;
        options.observer = &m_sipTrace;
        options.keys = &m_notes;
        m_sip = SipShell::Create(options);
        ASSERT_NE(m_sip, nullptr);
    }

    void TearDown() override {
        m_sip.reset();
        m_library.reset();
        test::UnloadUnusedLibraries();
        EXPECT_FALSE(LoadedLibrary::IsLoaded());
    }

    // Runs the commands of the demonstration; any other is a test failure.
    void Run(const std::vector<std::string>& words) {
        const std::string& name = words[0];
        if (name == "setup") return;  // the library is registered, and missing settings have the same effect
        if (name == "select") {
            if (!m_sip->HasInputMethod()) m_sip->CreateInputMethod();
            m_sip->Select();
        } else if (name == "deselect") {
            m_sip->Deselect();
        } else if (name == "show" || name == "hide") {
            m_sip->SetVisibility(name == "show" ? SipVisibility::Shown : SipVisibility::Hidden);
        } else if (name == "text") {
            m_trace.Write("Text " + Quoted(m_notes.Text()));
        } else if (name == "screen") {
            test::SetScreenSize(Number(words[1]), Number(words[2]));
            m_sip->OnScreenChanged();
        } else if (name == "screenshot") {
            ComparePicture(words.back());
        } else {
            RunPen(words);
        }
        DeliverMessages();
    }

    void RunPen(const std::vector<std::string>& words) {
        const std::string& name = words[0];
        ASSERT_EQ(words.size(), 3u) << "no command of this test: " << name;
        const POINT point{Number(words[1]), Number(words[2])};
        const auto send = [&](std::initializer_list<UINT> messages) {
            for (const UINT message : messages)
                SendPen(m_sip->Panel(), message, point);
        };
        if (name == "tap") return send({WM_LBUTTONDOWN, WM_LBUTTONUP});
        if (name == "double") return send({WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP});
        if (name == "dblclk") return send({WM_LBUTTONDBLCLK});
        if (name == "down") return send({WM_LBUTTONDOWN});
        if (name == "move") return send({WM_MOUSEMOVE});
        if (name == "up") return send({WM_LBUTTONUP});
        ADD_FAILURE() << "no command of this test: " << name;
    }

    static LONG Number(const std::string& word) { return static_cast<LONG>(ParseNumber(word, -4096, 4096)); }

    // Compares with the host's picture, and saves this one beside it.
    void ComparePicture(const std::string& file) {
        const fs::path name = fs::path(file).replace_extension(".ppm");
        const PanelPicture picture = PictureOf(m_sip->Panel());
        const PanelPicture expected = ReadPicture(fs::path(EXPECTED) / name);
        WritePicture(picture, fs::path(EXPECTED) / ("windows-" + name.string()));
        ASSERT_FALSE(expected.pixels.empty()) << name << ": none from the host";
        EXPECT_EQ(CountDifferences(picture, expected), 0) << "pixels of " << name;
        ++m_pictures;
    }

    Trace m_trace;
    SipTrace m_sipTrace{m_trace};
    Notes m_notes;
    std::unique_ptr<LoadedLibrary> m_library;
    std::unique_ptr<SipShell> m_sip;
    int m_pictures = 0;
};

std::string ReadText(const fs::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST_F(Demonstration, GivesTheTraceAndThePicturesOfTheHost) {
    std::ifstream script(DEMONSTRATION);
    ASSERT_TRUE(script);
    testing::internal::CaptureStdout();
    for (std::string line; std::getline(script, line);) {
        const std::vector<std::string> words = SplitWords(line);
        if (!words.empty()) Run(words);
    }
    m_trace.Flush();
    const std::string trace = testing::internal::GetCapturedStdout();
    const std::string expected = ReadText(fs::path(EXPECTED) / "trace.txt");
    EXPECT_FALSE(expected.empty()) << "none from the host";
    EXPECT_EQ(trace, expected);
    EXPECT_GT(m_pictures, 0);
}

}  // namespace
