// SPDX-License-Identifier: MIT
// The interface for a client written in C: a table of function pointers.
#include <cstring>

#include "input_method_fixture.h"
#include "settings/settings_dlg.h"

namespace {

struct InputMethodTable {
    HRESULT(STDMETHODCALLTYPE* queryInterface)(void*, REFIID, void**);
    ULONG(STDMETHODCALLTYPE* addRef)(void*);
    ULONG(STDMETHODCALLTYPE* release)(void*);
    HRESULT(STDMETHODCALLTYPE* select)(void*, HWND);
    HRESULT(STDMETHODCALLTYPE* deselect)(void*);
    HRESULT(STDMETHODCALLTYPE* showing)(void*);
    HRESULT(STDMETHODCALLTYPE* hiding)(void*);
    HRESULT(STDMETHODCALLTYPE* getInfo)(void*, IMINFO*);
    HRESULT(STDMETHODCALLTYPE* receiveSipInfo)(void*, SIPINFO*);
    HRESULT(STDMETHODCALLTYPE* registerCallback)(void*, IIMCallback*);
    HRESULT(STDMETHODCALLTYPE* getImData)(void*, DWORD, void*);
    HRESULT(STDMETHODCALLTYPE* setImData)(void*, DWORD, void*);
    HRESULT(STDMETHODCALLTYPE* userOptionsDlg)(void*, HWND);
    HRESULT(STDMETHODCALLTYPE* setImmActiveContext)(void*, HWND, BOOL, DWORD, DWORD, DWORD);
    HRESULT(STDMETHODCALLTYPE* registerCallback2)(void*, IIMCallback2*);
};

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

TEST_F(InputMethodTest, SlotsOfTheTableAreInTheOrderOfTheInterfaces) {
    const InputMethodTable& table = **reinterpret_cast<const InputMethodTable**>(m_object);
    void* found = nullptr;
    EXPECT_EQ(table.queryInterface(m_object, IID_IInputMethod2, &found), S_OK);
    EXPECT_EQ(found, m_object);
    EXPECT_EQ(table.addRef(m_object), 3u);
    EXPECT_EQ(table.release(m_object), 2u);
    EXPECT_EQ(table.release(m_object), 1u);

    EXPECT_EQ(table.select(m_object, m_sip), S_OK);
    ASSERT_NE(Panel(), nullptr);
    EXPECT_EQ(table.showing(m_object), S_OK);
    EXPECT_EQ(WindowRect(m_sip), (RECT{0, 200, 240, 280}));
    SIPINFO sip{};
    EXPECT_EQ(table.receiveSipInfo(m_object, &sip), S_OK);
    EXPECT_EQ(WindowRect(Panel()), (RECT{0, 200, 0, 200}));
    IMINFO info{};
    EXPECT_EQ(table.getInfo(m_object, &info), S_OK);
    EXPECT_EQ(info.cbSize, 40u);
    EXPECT_EQ(table.registerCallback(m_object, &m_callback), S_OK);
    Keyboard().m_stKbStatus.m_bShift = 1;
    EXPECT_EQ(table.hiding(m_object), S_OK);
    EXPECT_EQ(m_callback.Take(), (test::Events{"vk 10 up"}));

    BYTE data[] = {1, 2};
    EXPECT_EQ(table.getImData(m_object, 2, data), S_OK);
    EXPECT_EQ(table.setImData(m_object, 2, data), S_OK);
    EXPECT_TRUE(data[0] == 1 && data[1] == 2);
    EXPECT_EQ(table.setImmActiveContext(m_object, m_sip, TRUE, 1, 2, 3), S_OK);
    EXPECT_EQ(table.registerCallback2(m_object, nullptr), S_OK);
    EXPECT_EQ(table.hiding(m_object), S_OK);
    EXPECT_EQ(m_callback.Take(), (test::Events{"vk 10 up"})) << "the second callback is not stored";
    EXPECT_EQ(table.deselect(m_object), S_OK);
    EXPECT_EQ(Panel(), nullptr);
}
