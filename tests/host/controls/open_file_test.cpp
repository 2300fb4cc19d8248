// SPDX-License-Identifier: MIT
#include <rectangles.h>
#include <test_support.h>

#include "controls/fixture.h"
#include "controls/open_file_dialog.h"

namespace {

constexpr WCHAR kFilter[] = TEXT("Skins (*.tlk)\0*.tlk\0Texts\0*.txt;*.md\0");
constexpr int kListId = 0x460;

using Names = std::vector<std::u16string>;

class OpenFile : public test::Dialogs {
protected:
    void SetUp() override {
        Dialogs::SetUp();
        for (const char* file : {"My Documents/b.tlk", "My Documents/A.TLK", "My Documents/read.me",
                                 "My Documents/Deep/deep.tlk", "root.tlk"})
            test::WriteDeviceFile(file, "");
        m_request.lStructSize = sizeof m_request;
        m_request.hwndOwner = m_desktop;
        m_request.lpstrFilter = kFilter;
        m_request.lpstrFile = m_path;
        m_request.nMaxFile = static_cast<DWORD>(std::size(m_path));
        m_request.lpstrFileTitle = m_title;
        m_request.nMaxFileTitle = static_cast<DWORD>(std::size(m_title));
        m_request.lpstrDefExt = TEXT("tlk");
        m_request.Flags = OFN_EXPLORER;
    }

    // The chosen path; empty if none.
    std::u16string Choose(std::vector<Step> steps) {
        Follow(std::move(steps));
        m_path[0] = u'\0';
        return GetOpenFileNameW(&m_request) ? m_path : u"";
    }

    // The middle of a row of the list, counted from 0.
    POINT RowCenter(int row) const {
        const int height = host::FindSystemWindow<host::FileList>(Item(kListId))->ItemHeight();
        return {60, row * height + height / 2};
    }
    Step TapRow(int row) const {
        return [this, row] { Tap(Item(kListId), RowCenter(row)); };
    }
    Step PenOnRow(host::Pen event, int row) const {
        return [=, this] { Pen(event, Item(kListId), RowCenter(row)); };
    }

    OPENFILENAMEW m_request{};
    WCHAR m_path[MAX_PATH] = {};
    WCHAR m_title[MAX_PATH] = {};
};

// \My Documents lists "..", "Deep", "A.TLK", "b.tlk".
TEST_F(OpenFile, PenSelectsAFileAndOkChoosesIt) {
    EXPECT_EQ(Choose({TapRow(3), TapOn(IDOK)}), u"\\My Documents\\b.tlk");
    EXPECT_EQ(std::u16string(m_title), u"b.tlk");
    EXPECT_EQ(m_request.nFileOffset, 14);
    EXPECT_EQ(m_request.nFileExtension, 16);
    EXPECT_EQ(GetFocus(), m_edit);
    EXPECT_TRUE(IsWindowEnabled(m_desktop));
}

TEST_F(OpenFile, PenOpensFolders) {
    EXPECT_EQ(Choose({TapRow(1), TapRow(1), TapOn(IDOK)}), u"\\My Documents\\Deep\\deep.tlk");
    // The root has no parent folder: "My Documents", "root.tlk".
    EXPECT_EQ(Choose({TapRow(0), TapRow(1), TapOn(IDOK)}), u"\\root.tlk");
    EXPECT_EQ(Choose({TapRow(1), TapRow(0), TapRow(2), TapOn(IDOK)}), u"\\My Documents\\A.TLK");
}

TEST_F(OpenFile, DoubleTapChoosesAFileAndOpensAFolderOnce) {
    const auto secondTap = [this](int row) {
        return Step([this, row] {
            PenOnRow(host::Pen::DoubleClick, row)();
            PenOnRow(host::Pen::Up, row)();
        });
    };
    const Step isNothingSelected = [this] { EXPECT_FALSE(IsWindowEnabled(Item(IDOK))); };
    EXPECT_EQ(Choose({TapRow(2), secondTap(2)}), u"\\My Documents\\A.TLK");
    EXPECT_EQ(Choose({TapRow(0), secondTap(0), TapRow(1), TapOn(IDOK)}), u"\\root.tlk");
    EXPECT_EQ(Choose({TapRow(1), secondTap(1), isNothingSelected, TapRow(1), TapOn(IDOK)}),
              u"\\My Documents\\Deep\\deep.tlk");
}

TEST_F(OpenFile, KeysDoTheSame) {
    const Step down = Press(VK_DOWN), enter = Press(VK_RETURN);
    EXPECT_EQ(Choose({down, down, enter, down, down, enter}), u"\\My Documents\\Deep\\deep.tlk");
    EXPECT_EQ(Choose({Press(VK_ESCAPE)}), u"");
}

TEST_F(OpenFile, WithoutASelectionOkIsDisabled) {
    EXPECT_EQ(Choose({TapOn(IDOK), Press(VK_RETURN), TapRow(9), TapOn(IDOK), TapOn(IDCANCEL)}), u"");
    // If the pen is lifted elsewhere, the last row that it was on stays selected.
    EXPECT_EQ(Choose({PenOnRow(host::Pen::Down, 1), PenOnRow(host::Pen::Move, 2),
                      PenOn(host::Pen::Up, kListId, {-20, 5}), TapOn(IDOK)}),
              u"\\My Documents\\A.TLK");
}

TEST_F(OpenFile, ListsFoldersFirstAndFilesThatMatch) {
    const auto list = [](const std::u16string& folder, const Names& patterns) {
        Names names;
        for (const host::FileItem& item : host::ListFiles(folder, patterns))
            names.push_back(item.name);
        return names;
    };
    test::WriteDeviceFile("My Documents/z folder.tlk/x.tlk", "");
    EXPECT_EQ(list(u"\\My Documents", {u"*.tlk"}),
              (Names{u"..", u"Deep", u"z folder.tlk", u"A.TLK", u"b.tlk"}));
    EXPECT_EQ(list(u"\\My Documents", {u"*.me", u"*"}),
              (Names{u"..", u"Deep", u"z folder.tlk", u"read.me", u"A.TLK", u"b.tlk"}));
    EXPECT_EQ(list(u"", {u"*.me"}), (Names{u"My Documents"}));
    EXPECT_EQ(list(u"\\absent", {u"*"}), (Names{u".."}));
}

TEST_F(OpenFile, TheDriverIsToldAndAnswers) {
    Names heard;
    host::SetOpenFileHandler([&](const std::u16string& extension, const std::u16string& filter) {
        EXPECT_EQ(host::TopmostModalWindow(), nullptr);
        heard = {extension, filter};
    });
    const auto answer = [](const WCHAR* name) {
        return Step([name] { EXPECT_TRUE(host::AnswerOpenFile(name)); });
    };
    EXPECT_EQ(Choose({answer(u"\\Absent\\New.Skin.tlk")}), u"\\Absent\\New.Skin.tlk");
    EXPECT_EQ(heard, (Names{u"tlk", u"Skins (*.tlk)|*.tlk|Texts|*.txt;*.md"}));
    EXPECT_EQ(Choose({answer(u"/my documents/b")}), u"\\my documents\\b.tlk");
    EXPECT_EQ(std::u16string(m_title), u"b.tlk");
    EXPECT_EQ(Choose({answer(u"c.tlk")}), u"\\My Documents\\c.tlk");
    EXPECT_EQ(Choose({answer(u"\\My Documents\\Deep"), TapRow(1), TapOn(IDOK)}),
              u"\\My Documents\\Deep\\deep.tlk");
    EXPECT_EQ(Choose({[] { EXPECT_TRUE(host::CancelOpenFile()); }}), u"");
    EXPECT_FALSE(host::AnswerOpenFile(u"\\a.tlk"));
    EXPECT_FALSE(host::CancelOpenFile());
}

TEST_F(OpenFile, SmallBuffersGetNothing) {
    constexpr WORD needed = 20;  // "\My Documents\b.tlk" and its null
    m_request.nMaxFile = needed - 1;
    EXPECT_EQ(Choose({TapRow(3), TapOn(IDOK)}), u"");
    EXPECT_EQ(m_path[0], needed);
    m_request.nMaxFile = needed;
    EXPECT_EQ(Choose({TapRow(3), TapOn(IDOK)}), u"\\My Documents\\b.tlk");
    m_request.nMaxFileTitle = 5;
    EXPECT_EQ(Choose({TapRow(3), TapOn(IDOK)}), u"");
}

TEST_F(OpenFile, RefusesUnsupportedRequests) {
    const auto isRefused = [this](auto change) {
        OPENFILENAMEW request = m_request;
        change(request);
        return !GetOpenFileNameW(&request);
    };
    using Request = OPENFILENAMEW&;
    EXPECT_TRUE(isRefused([](Request request) { request.lStructSize = 76; }));
    EXPECT_TRUE(isRefused([](Request request) { request.Flags |= 0x200; }));
    EXPECT_TRUE(isRefused([](Request request) { request.lpstrFile = nullptr; }));
    EXPECT_FALSE(GetOpenFileNameW(nullptr));
    host::FailCall(host::Call::CreateWindow, 3);
    EXPECT_TRUE(isRefused([](Request) {}));
    EXPECT_TRUE(IsWindowEnabled(m_desktop));
}

TEST_F(OpenFile, HookSeesMessagesFirst) {
    static std::vector<UINT> hookMessages;
    hookMessages.clear();
    m_request.Flags |= OFN_ENABLEHOOK;
    m_request.lpfnHook = [](HWND, UINT message, WPARAM wParam, LPARAM) -> UINT_PTR {
        hookMessages.push_back(message);
        return message == WM_COMMAND && LOWORD(wParam) == IDCANCEL;
    };
    EXPECT_EQ(Choose({TapOn(IDCANCEL), TapRow(3), TapOn(IDOK)}), u"\\My Documents\\b.tlk");
    EXPECT_EQ(hookMessages.front(), static_cast<UINT>(WM_INITDIALOG));
}

TEST_F(OpenFile, CoversTheFreePartOfTheScreen) {
    CreateSip(214);
    MoveWindow(m_desktop, 10, 20, 100, 100, FALSE);
    const Step look = [this] {
        RECT place{};
        GetWindowRect(Item(0), &place);
        EXPECT_EQ(place, (RECT{0, 0, 240, 214}));
    };
    Choose({look, TapOn(IDCANCEL)});
}

TEST_F(OpenFile, OpeningItManyTimesLeaksNothing) {
    const Step look = [] {
        host::DeliverMessages();
        EXPECT_EQ(host::CountHandles().fonts, 0) << "the platform's own";
    };
    const int windows = host::CountHandles().windows;
    for (int i = 0; i < 100; ++i)
        Choose({look, TapRow(1), TapRow(1), TapOn(i % 2 == 0 ? IDOK : IDCANCEL)});
    const host::LiveHandles after = host::CountHandles();
    EXPECT_EQ(after.windows, windows);
    EXPECT_EQ(after.finds + after.fonts + after.dcs, 0);
}

}  // namespace
