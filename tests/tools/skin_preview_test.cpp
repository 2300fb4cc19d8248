// SPDX-License-Identifier: MIT
// What the preview composes is, pixel by pixel, what the engine paints.
#include "preview.h"

#include "bitmap.h"
#include "files.h"
#include "keyboard_fixture.h"
#include "keyboard_state.h"
#include "picture.h"

namespace {

using Pixels = std::vector<COLORREF>;

class SkinPreview : public KeyboardTest {
protected:
    void Start(LONG width, LONG height) {
        ASSERT_TRUE(test::SetScreenSize(width, height));
        test::CopyToDevice(STANDARD_SKIN, "Windows/a.tlk");
        ASSERT_TRUE(m_keyboard->Init(width, height));
        ASSERT_FALSE(m_keyboard->m_bNoSkin);
    }

    Pixels Painted(int width) {
        test::Picture target(test::MakeSection(24, width, 80));
        m_keyboard->Paint(target, &m_window);
        return target.Pixels();
    }

    Pixels Composed(const tlk::View& view) const {
        const tlk::Picture picture = tlk::Compose(m_skin, view);
        Pixels pixels;
        for (const tlk::Color& color : picture.Pixels())
            pixels.push_back(RGB(color.red, color.green, color.blue));
        return pixels;
    }

    void Press(WORD key) {
        const KbStatus& status = m_keyboard->m_stKbStatus;
        const KeyLayout& layout = status.m_bDigit ? m_keyboard->m_DigitLayout : m_keyboard->m_CharLayout;
        const RECT& r = layout.at(key).m_Rects[0];
        Down({r.left + 3, r.top + 3});
    }
    void Tap(WORD key) {
        Press(key);
        Up({m_keyboard->m_ptSwipeBegin.x, m_keyboard->m_ptSwipeBegin.y});
    }

    tlk::SkinModule m_skin = tlk::ReadSkin(tlk::Module::Parse(ReadBytes(STANDARD_SKIN)));
};

TEST_F(SkinPreview, IsWhatTheEnginePaintsInEveryPlane) {
    for (const bool landscape : {false, true}) {
        const LONG width = landscape ? 320 : 240;
        Start(width, landscape ? 240 : 320);
        for (std::size_t plane = 0; plane < 8; ++plane) {
            tlk::View view{plane, landscape, false, {}};
            const auto tap = [&](WORD key) {
                Tap(key);
                view.pressed.push_back(key);
            };
            if (plane >= 4 && m_keyboard->m_stKbStatus.m_bLng1) Tap(test::KeyLanguage);
            if (plane >= 4) view.pressed.push_back(test::KeyLanguage);
            if (plane % 4 >= 2) tap(test::KeyUmlaut);
            if (plane % 2 == 1) tap(test::KeyShift);
            Press(test::KeyQ);
            view.pressed.push_back(test::KeyQ);
            EXPECT_TRUE(Painted(width) == Composed(view)) << tlk::PlaneName(plane) << " " << landscape;
            Up({m_keyboard->m_ptSwipeBegin.x, m_keyboard->m_ptSwipeBegin.y});
        }
        Tap(test::KeyLanguage);
        Tap(test::KeyDigits);
        Press(test::KeyDigit7);
        EXPECT_TRUE(Painted(width) == Composed({tlk::kDigitPlane, landscape, false, {test::KeyDigit7}}));
        Up({0, 0});
    }
}

TEST_F(SkinPreview, SparesTheDigitRowFromCapsLock) {
    Start(240, 320);
    Tap(test::KeyShift);
    const POINT shift = m_keyboard->m_ptSwipeBegin;
    ASSERT_TRUE(m_keyboard->DblPressKey(shift, &m_window));
    for (const WORD key : {test::Key1, test::KeyQ}) {
        Press(key);
        EXPECT_TRUE(Painted(240) == Composed({1, false, true, {key}})) << key;
        Up({m_keyboard->m_ptSwipeBegin.x, m_keyboard->m_ptSwipeBegin.y});
    }
}

// Found by the picture that the engine paints, and brought up again by the taps that the state asks for.
TEST_F(SkinPreview, TellsWhatIsLatched) {
    Start(240, 320);
    const auto painted = [this] {
        test::Picture target(test::MakeSection(24, 240, 80));
        m_keyboard->Paint(target, &m_window);
        tlk::Picture picture({240, 80}, tlk::Color{});
        const Pixels pixels = target.Pixels();
        for (int i = 0; i < 240 * 80; ++i) {
            const COLORREF color = pixels[static_cast<std::size_t>(i)];
            picture.At(i % 240, i / 240) = {static_cast<BYTE>(color), static_cast<BYTE>(color >> 8),
                                            static_cast<BYTE>(color >> 16)};
        }
        return picture;
    };
    for (const WORD key : {test::KeyControl, test::KeyUmlaut, test::KeyShift, test::KeyLanguage}) {
        Tap(key);
        const auto state = tlk::FindState(m_skin, painted());
        ASSERT_TRUE(state) << key;
        const KbStatus& status = m_keyboard->m_stKbStatus;
        EXPECT_EQ(state->hasShift, status.m_bShift != 0) << key;
        EXPECT_EQ(state->hasUmlauts, !status.m_bCtrl && status.m_bUml) << key;
        EXPECT_EQ(state->isLanguage2, status.m_bLng1 == 0) << key;
        if (key == test::KeyControl) Tap(key);
    }
    Press(test::KeyQ);
    EXPECT_FALSE(tlk::FindState(m_skin, painted())) << "while a key is pressed";
    tlk::KeyboardState all{true, false, true, true, true, true, false};
    EXPECT_EQ(tlk::CommandsFor(m_skin, all).size(), 5u);
    all.hasCapsLock = true;
    EXPECT_EQ(tlk::CommandsFor(m_skin, all)[1].find("double "), 0u);
}

// Unlike the loaders of devices, the host's takes the skins of all of them.
TEST_F(SkinPreview, LoadsForWhicheverProcessorItWasBuilt) {
    const tlk::Bytes picture = tlk::EncodePicture(tlk::Picture({240, 80}, tlk::Color{}));
    for (const auto processor : {tlk::Processor::Arm, tlk::Processor::X86, tlk::Processor::X64}) {
        const tlk::Bytes file =
            tlk::WriteModule({{tlk::ResourceKind::Bitmap, "char_keyboard_bitmap", picture}}, processor);
        test::WriteDeviceFile("Windows/a.tlk", {file.begin(), file.end()});
        EXPECT_TRUE(CKeyboard::IsValidSkin(TEXT("\\windows\\a.tlk")));
    }
}

}  // namespace
