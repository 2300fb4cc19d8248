// SPDX-License-Identifier: MIT
#include "acts.h"

#include <sip_layout.h>
#include <unicode.h>

#include <algorithm>
#include <iterator>

#include "chosen_skin.h"
#include "scale.h"

namespace fs = std::filesystem;

namespace {

constexpr SIZE kScreens[] = {{240, 320}, {480, 640}, {240, 240}, {320, 320}, {480, 800}};

Words ScreenAct(SIZE size) { return {"screen", std::to_string(size.cx), std::to_string(size.cy)}; }

// Gives the panel its initial height on this screen.
Words SipAct(SIZE screen) {
    const RECT sip = SipRectangle(screen, FirstSipHeight(screen));
    return {"sip", std::to_string(sip.left), std::to_string(sip.top), std::to_string(sip.right),
            std::to_string(sip.bottom)};
}

void Append(Acts& acts, const Acts& more) { acts.insert(acts.end(), more.begin(), more.end()); }

// Which skins the keyboard accepts is known only once it is selected.
Acts SelectActs(const SkinOptions& skins) {
    Acts acts = SkinActs(skins);
    acts.push_back({"select"});
    const std::u16string chosen = ChosenSkin();
    if (skins.choice.empty() && !chosen.empty()) acts.push_back({"skin", "keep", unicode::ToUtf8(chosen)});
    return acts;
}

}  // namespace

Acts SkinActs(const SkinOptions& skins) {
    Acts acts;
    if (!skins.folder.empty()) acts.push_back({"skins", fs::absolute(skins.folder).string()});
    if (!skins.file.empty()) acts.push_back({"skin", "put", fs::absolute(skins.file).string()});
    if (!skins.choice.empty()) {
        acts.push_back({"skin", "choose", skins.choice});
        return acts;
    }
    Words preference{"skin", "prefer"};
    for (const std::string& name : {unicode::ToUtf8(ChosenSkin()), skins.preferred}) {
        if (!name.empty()) preference.push_back(name);
    }
    if (preference.size() > 2) acts.push_back(preference);
    return acts;
}

Acts StartActs(SIZE screen, const SkinOptions& skins) {
    Acts acts;
    if (!IsSameSize(screen, Session::Options().screen)) acts = {ScreenAct(screen), SipAct(screen)};
    Append(acts, {{"setup"}, {"notes"}});
    Append(acts, SelectActs(skins));
    return acts;
}

Acts ChangeSizeActs(SIZE screen, SkinOptions skins) {
    skins.file = skins.choice = {};
    Acts acts{{"deselect"}, ScreenAct(screen), SipAct(screen)};
    Append(acts, SelectActs(skins));
    return acts;
}

// The platform keeps the panel's height when the screen turns. If the other orientation needs another one,
// sets it, as the platform does when it shows the panel again.
Acts TurnActs(Session& session, SIZE now) {
    const SIZE turned{now.cy, now.cx};
    if (IsSameSize(now, turned)) return {};
    RECT sip{};
    GetWindowRect(session.Sip().Window(), &sip);
    Acts acts{ScreenAct(turned)};
    if (sip.bottom - sip.top != FirstSipHeight(turned)) {
        acts.push_back(SipAct(turned));
        acts.push_back({"info"});
    }
    return acts;
}

Words ScreenshotAct() {
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
