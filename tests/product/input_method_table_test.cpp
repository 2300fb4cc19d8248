// SPDX-License-Identifier: MIT
// The interface for a client written in C: a table of function pointers.
#include <cstring>

#include "input_method_fixture.h"
#include "settings/settings_dlg.h"

namespace {

// A pointer to a virtual member function is the offset of its slot in the table, plus one.
template <typename Member>
std::ptrdiff_t SlotOf(Member member) {
    std::ptrdiff_t distance;
    std::memcpy(&distance, &member, sizeof distance);
    return (distance - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

}  // namespace

// The destructor has two slots.
TEST(WindowTable, IsMessageMapDestructorProcedureFinalMessage) {
    EXPECT_EQ(SlotOf(&CMainWnd::ProcessWindowMessage), 0);
    EXPECT_EQ(SlotOf(&CMainWnd::GetWindowProc), 3);
    EXPECT_EQ(SlotOf(&CMainWnd::OnFinalMessage), 4);
    EXPECT_EQ(SlotOf(&CSettingsDlg::ProcessWindowMessage), 0);
    EXPECT_EQ(SlotOf(&CSettingsDlg::GetDialogProc), 3);
    EXPECT_EQ(SlotOf(&CSettingsDlg::OnFinalMessage), 4);
}

// After the three slots of IUnknown.
TEST(InputMethodTable, SlotsAreInTheOrderOfTheInterfaces) {
    using Table = IInputMethod2;
    const std::ptrdiff_t slots[] = {
        SlotOf(&Table::Select),
        SlotOf(&Table::Deselect),
        SlotOf(&Table::Showing),
        SlotOf(&Table::Hiding),
        SlotOf(&Table::GetInfo),
        SlotOf(&Table::ReceiveSipInfo),
        SlotOf(&Table::RegisterCallback),
        SlotOf(&Table::GetImData),
        SlotOf(&Table::SetImData),
        SlotOf(&Table::UserOptionsDlg),
        SlotOf(&Table::SetIMMActiveContext),
        SlotOf(&Table::RegisterCallback2),
    };
    for (std::ptrdiff_t i = 0; i < 12; ++i) {
        EXPECT_EQ(slots[i], i + 3);
    }
}

TEST_F(InputMethodTest, CallsWithoutMeaningSucceed) {
    SelectWithSkin();
    Keyboard().m_stKbStatus.m_bShift = 1;
    BYTE data[] = {1, 2};
    EXPECT_EQ(m_object->GetImData(2, data), S_OK);
    EXPECT_EQ(m_object->SetImData(2, data), S_OK);
    EXPECT_TRUE(data[0] == 1 && data[1] == 2);
    EXPECT_EQ(m_object->SetIMMActiveContext(m_sip, TRUE, 1, 2, 3), S_OK);
    EXPECT_EQ(m_object->RegisterCallback2(nullptr), S_OK);
    EXPECT_EQ(m_object->Hiding(), S_OK);
    EXPECT_EQ(m_callback.Take(), test::Events{"vk 10 up"}) << "the second callback is not stored";
}
