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
        return Paint(m_skin, {latches, false, std::move(pressed)});
    }

    const SkinModule m_skin = ReadSkin(OpenModule(STANDARD_SKIN));
    const std::uint16_t m_keyQ = FindKey(m_skin, BoardKind::Portrait, "q");
};

TEST_F(Preview, ShowsLatchedAndNamedKeysPressed) {
    EXPECT_NE(Painted(0, {m_keyQ}), Painted(0));
    EXPECT_EQ(Painted(latch::kLanguage2, {function_key::kLanguage}), Painted(latch::kLanguage2))
        << "it looks pressed already";
    EXPECT_EQ(Painted(latch::kDigits).GetSize(), (Size{240, 80})) << "of a picture 320 pixels wide";
    EXPECT_EQ(Paint(m_skin, {latch::kDigits, true, {}}).GetSize(), (Size{320, 80}));
    EXPECT_THROW((void)FindKey(m_skin, BoardKind::Digits, "q"), FileError);
}

TEST_F(Preview, FindsTheLatchesInThePictureAndSelectsThemAgain) {
    const Moves moves(m_skin.KeyboardOf(BoardKind::Portrait), MapHits(m_skin, BoardKind::Portrait, {240, 80}),
                      MapHits(m_skin, BoardKind::Digits, {240, 80}));
    for (const Latches latches :
         {Latches{0}, latch::kShift, latch::kCaps, latch::kControl, latch::kLanguage2, latch::kDigits,
          latch::kUmlauts, latch::kShift | latch::kUmlauts | latch::kLanguage2,
          latch::kShift | latch::kControl}) {
        const auto view = FindView(m_skin, Painted(latches));
        ASSERT_TRUE(view) << latches;
        EXPECT_EQ(view->latches, latches);
        for (const auto& [from, to] : {std::pair{Latches{0}, latches}, {latches, Latches{0}}}) {
            const std::vector<Move> path = moves.PathTowards(from, to);
            EXPECT_EQ(path.empty() ? from : path.back().after, to);
            EXPECT_TRUE(std::ranges::none_of(path, &Move::sends)) << "types something";
        }
    }
    EXPECT_EQ(moves.PathTowards(0, latch::kCaps).front().gesture, Gesture::DoubleTap);
    EXPECT_FALSE(FindView(m_skin, Painted(0, {m_keyQ}))) << "while a key is pressed";
}

}  // namespace
}  // namespace tlk
