// SPDX-License-Identifier: MIT
#include "actions.h"

#include <sip_layout.h>
#include <unicode.h>

#include <algorithm>
#include <iterator>

#include "chosen_skin.h"
#include "scale.h"

namespace fs = std::filesystem;

namespace {

constexpr SIZE kScreens[] = {{240, 320}, {480, 640}, {240, 240}, {320, 320}, {480, 800}};

Words ScreenAction(SIZE size) { return {"screen", std::to_string(size.cx), std::to_string(size.cy)}; }

// Gives the panel its initial height on this screen.
Words SipAction(SIZE screen) {
    const RECT sip = SipRectangle(screen, FirstSipHeight(screen));
    return {"sip", std::to_string(sip.left), std::to_string(sip.top), std::to_string(sip.right),
            std::to_string(sip.bottom)};
}

void Append(Actions& actions, const Actions& more) {
    actions.insert(actions.end(), more.begin(), more.end());
}

// Which skins the keyboard accepts is known only once it is selected.
Actions SelectActions(const SkinOptions& skins) {
    Actions actions = SkinActions(skins);
    actions.push_back({"select"});
    const std::u16string chosen = ChosenSkin();
    if (skins.choice.empty() && !chosen.empty()) actions.push_back({"skin", "keep", unicode::ToUtf8(chosen)});
    return actions;
}

}  // namespace

Actions SkinActions(const SkinOptions& skins) {
    Actions actions;
    if (!skins.folder.empty()) actions.push_back({"skins", fs::absolute(skins.folder).string()});
    if (!skins.file.empty()) actions.push_back({"skin", "put", fs::absolute(skins.file).string()});
    if (!skins.choice.empty()) {
        actions.push_back({"skin", "choose", skins.choice});
        return actions;
    }
    Words preference{"skin", "prefer"};
    for (const std::string& name : {unicode::ToUtf8(ChosenSkin()), skins.preferred})
        if (!name.empty()) preference.push_back(name);
    if (preference.size() > 2) actions.push_back(preference);
    return actions;
}

Actions StartActions(SIZE screen, const SkinOptions& skins) {
    Actions actions;
    if (!IsSameSize(screen, Session::Options().screen)) actions = {ScreenAction(screen), SipAction(screen)};
    Append(actions, {{"setup"}, {"notes"}});
    Append(actions, SelectActions(skins));
    return actions;
}

Actions ChangeSizeActions(SIZE screen, SkinOptions skins) {
    skins.file = skins.choice = {};
    Actions actions{{"deselect"}, ScreenAction(screen), SipAction(screen)};
    Append(actions, SelectActions(skins));
    return actions;
}

// The platform keeps the panel's height when the screen turns. If the other orientation needs another one,
// sets it, as the platform does when it shows the panel again.
Actions TurnActions(Session& session, SIZE now) {
    const SIZE turned{now.cy, now.cx};
    if (IsSameSize(now, turned)) return {};
    RECT sip{};
    GetWindowRect(session.Sip().Window(), &sip);
    Actions actions{ScreenAction(turned)};
    if (sip.bottom - sip.top != FirstSipHeight(turned)) {
        actions.push_back(SipAction(turned));
        actions.push_back({"info"});
    }
    return actions;
}

Words ScreenshotAction() {
    for (int number = 1;; ++number) {
        const std::string name = "tolka-" + std::to_string(number) + ".png";
        std::error_code error;
        if (!fs::exists(name, error)) return {"screenshot", name};
    }
}

SIZE NextScreenSize(SIZE screen) {
    const SIZE upright{std::min(screen.cx, screen.cy), std::max(screen.cx, screen.cy)};
    const auto found = std::find_if(std::begin(kScreens), std::end(kScreens),
                                    [upright](SIZE size) { return IsSameSize(size, upright); });
    return found == std::end(kScreens) || found + 1 == std::end(kScreens) ? kScreens[0] : found[1];
}
