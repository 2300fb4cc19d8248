// SPDX-License-Identifier: MIT
#include "acts.h"

#include <sip_layout.h>

#include <algorithm>
#include <iterator>

#include "scale.h"
#include "skin_files.h"

namespace fs = std::filesystem;

namespace {

constexpr SIZE screens[] = {{240, 320}, {480, 640}, {240, 240}, {320, 320}, {480, 800}};

Words ScreenAct(SIZE size) { return {"screen", std::to_string(size.cx), std::to_string(size.cy)}; }

// The panel as high as a handheld with this screen has it from the start.
Words SipAct(SIZE screen) {
    const RECT sip = SipRectangle(screen, FirstSipHeight(screen));
    return {"sip", std::to_string(sip.left), std::to_string(sip.top), std::to_string(sip.right),
            std::to_string(sip.bottom)};
}

// A skin that ships carries its screen in its file's name.
std::string FileOf(const std::string& choice, const SkinFolder& skins, SIZE screen) {
    const std::string size =
        std::to_string(std::min(screen.cx, screen.cy)) + 'x' + std::to_string(std::max(screen.cx, screen.cy));
    const std::string ofScreen = choice + '-' + size + ".tlk";
    std::error_code error;
    return skins && fs::exists(*skins / size / ofScreen, error) ? ofScreen : choice + ".tlk";
}

void Append(Acts& acts, const Acts& more) { acts.insert(acts.end(), more.begin(), more.end()); }

}  // namespace

Acts SkinActs(const SkinFolder& skins, const std::string& choice, SIZE screen) {
    Acts acts;
    if (skins) acts.push_back({"skins", fs::absolute(*skins).string()});
    if (!choice.empty() && StoredSkin().empty()) {
        acts.push_back({"reg", "set", R"(HKLM\Software\Tolka\7.0)", "Skin", "sz",
                        R"(\windows\)" + FileOf(choice, skins, screen)});
    }
    return acts;
}

Acts StartActs(SIZE screen, const SkinFolder& skins, const std::string& choice) {
    Acts acts;
    if (!IsSameSize(screen, Session::Options().screen)) acts = {ScreenAct(screen), SipAct(screen)};
    acts.push_back({"setup"});
    Append(acts, SkinActs(skins, choice, screen));
    acts.push_back({"select"});
    return acts;
}

Acts ChangeSizeActs(SIZE screen, const SkinFolder& skins) {
    Acts acts{{"deselect"}, ScreenAct(screen), SipAct(screen)};
    Append(acts, SkinActs(skins, {}, screen));
    acts.push_back({"select"});
    return acts;
}

// The platform keeps the panel's height when the screen turns; where the other way round wants another one,
// it is put right as the platform does at the next showing.
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
    const auto found = std::find_if(std::begin(screens), std::end(screens),
                                    [upright](SIZE size) { return IsSameSize(size, upright); });
    return found == std::end(screens) || found + 1 == std::end(screens) ? screens[0] : found[1];
}
