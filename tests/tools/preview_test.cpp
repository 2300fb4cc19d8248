// SPDX-License-Identifier: MIT
#include "preview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "errors.h"
#include "file.h"
#include "moves.h"

namespace tlk {
namespace {

class Preview : public testing::Test {
protected:
    Picture Painted(Latches latches, std::vector<std::uint16_t> pressed = {}) const {
        return Paint(m_Skin, {latches, false, std::move(pressed)});
    }

    const SkinModule m_Skin = ReadSkin(OpenModule(STANDARD_SKIN));
    const std::uint16_t m_KeyQ = FindKey(m_Skin, BoardKind::Portrait, "q");
};

TEST_F(Preview, ShowsLatchedAndNamedKeysPressed) {
    EXPECT_NE(Painted(0, {m_KeyQ}), Painted(0));
    EXPECT_EQ(Painted(latch::kLanguage2, {function_key::kLanguage}), Painted(latch::kLanguage2))
        << "it looks pressed already";
    EXPECT_EQ(Painted(latch::kDigits).GetSize(), (Size{240, 80})) << "of a picture 320 pixels wide";
    EXPECT_EQ(Paint(m_Skin, {latch::kDigits, true, {}}).GetSize(), (Size{320, 80}));
    EXPECT_THROW((void)FindKey(m_Skin, BoardKind::Digits, "q"), FileError);
}

TEST_F(Preview, FindsTheLatchesInThePictureAndSelectsThemAgain) {
    const Moves moves(m_Skin.KeyboardOf(BoardKind::Portrait), MapHits(m_Skin, BoardKind::Portrait, {240, 80}),
                      MapHits(m_Skin, BoardKind::Digits, {240, 80}));
    for (const Latches latches :
         {Latches{0}, latch::kShift, latch::kCaps, latch::kControl, latch::kLanguage2, latch::kDigits,
          latch::kUmlauts, latch::kShift | latch::kUmlauts | latch::kLanguage2,
          latch::kShift | latch::kControl}) {
        const auto view = FindView(m_Skin, Painted(latches));
        ASSERT_TRUE(view) << latches;
        EXPECT_EQ(view->latches, latches);
        for (const auto& [from, to] : {std::pair{Latches{0}, latches}, {latches, Latches{0}}}) {
            const std::vector<Move> path = moves.PathTowards(from, to);
            EXPECT_EQ(path.empty() ? from : path.back().after, to);
            EXPECT_TRUE(std::ranges::none_of(path, &Move::sends)) << "types something";
        }
    }
    EXPECT_EQ(moves.PathTowards(0, latch::kCaps).front().gesture, Gesture::DoubleTap);
    EXPECT_FALSE(FindView(m_Skin, Painted(0, {m_KeyQ}))) << "while a key is pressed";
}

}  // namespace
}  // namespace tlk
