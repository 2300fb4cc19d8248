// SPDX-License-Identifier: MIT
#include "keyboard_menu.h"

#include "session.h"

namespace {

constexpr UINT kOptionsItem = kFirstKeyboardCommand;
constexpr UINT kFirstMethodItem = kFirstKeyboardCommand + 1;

}  // namespace

void KeyboardMenu::ToggleKeyboard() {
    SipShell& sip = m_session.Sip();
    const bool shown = IsWindowVisible(sip.Window()) != FALSE;
    sip.SetVisibility(shown ? SipVisibility::Hidden : SipVisibility::Shown);
}

std::vector<MenuItem> KeyboardMenu::MenuItems() {
    m_listed = ListInputMethods();
    const SipShell& sip = m_session.Sip();
    std::vector<MenuItem> items;
    for (std::size_t i = 0; i < m_listed.size(); ++i) {
        const bool current = IsEqualCLSID(m_listed[i].clsid, sip.CurrentIM()) != FALSE;
        items.push_back({kFirstMethodItem + static_cast<UINT>(i), m_listed[i].name, true, current});
    }
    if (!items.empty()) items.emplace_back();
    items.push_back({kOptionsItem, u"Options...", sip.HasInputMethod()});
    return items;
}

void KeyboardMenu::ChooseKeyboardItem(UINT id) {
    if (m_session.Sip().IsCalling()) return;
    if (id == kOptionsItem)
        m_session.Sip().OpenOptions(m_session.GetApplication().Handle());
    else if (id - kFirstMethodItem < m_listed.size())
        Choose(m_listed[id - kFirstMethodItem]);
}

// Does nothing if it is selected already.
void KeyboardMenu::Choose(const RegisteredInputMethod& method) {
    SipShell& sip = m_session.Sip();
    const bool same = IsEqualCLSID(method.clsid, sip.InputMethod()) && sip.HasInputMethod();
    if (same && sip.IsSelected()) return;
    const HRESULT result = same ? sip.Select() : sip.SwitchTo(method.clsid);
    if (SUCCEEDED(result)) return;
    const std::u16string text = u"\"" + method.name + u"\" cannot be started. The keyboard stays as it is.";
    MessageBoxW(m_session.GetApplication().Handle(), text.c_str(), TEXT("Input method"), MB_OK | MB_ICONHAND);
}
