// SPDX-License-Identifier: MIT
#include "signs.h"

namespace tlk {
namespace {

// Small letters with accents need more pixels than a word in capitals to look equally large.
constexpr int kMoreForAccents = 2;

const Label* LabelOf(const Skin& skin, const Key& key, const Plane& plane) {
    if (key.label) return &*key.label;
    for (const auto* labels : {&skin.languageLabels[plane.Language()], &skin.labels})
        if (const auto found = labels->find(key.key); found != labels->end()) return &found->second;
    return nullptr;
}

// Without a Caps key, the Shift key shows four states of Shift and caps lock: the engine inverts it while
// Shift is on, and shows a large plane if one of the two is on. So the icon for caps lock is in the large
// planes: by itself it means caps lock, inverted Shift. With a Caps key, inverted keys are enough.
Icon ShiftIcon(const Skin& skin, const Plane& plane) {
    return plane.IsLarge() && !skin.HasKey(function_key::kCaps) ? Icon::CapsFilled : Icon::Shift;
}

std::optional<Icon> IconOf(const Skin& skin, std::uint16_t key, const Plane& plane) {
    const bool deletes = plane.IsLarge() && plane.backspaceFollowsShift;
    switch (key) {
        case function_key::kShift:
            return ShiftIcon(skin, plane);
        case function_key::kCaps:
            return Icon::Caps;
        case function_key::kBackspace:
            return deletes ? Icon::Delete : Icon::Backspace;
        case function_key::kEnter:
            return Icon::Enter;
        case function_key::kSpace:
            return Icon::Space;
        case function_key::kTab:
            return Icon::Tab;
        case function_key::kLeft:
            return Icon::Left;
        case function_key::kUp:
            return Icon::Up;
        case function_key::kRight:
            return Icon::Right;
        case function_key::kDown:
            return Icon::Down;
        default:
            return std::nullopt;
    }
}

std::u16string WordOf(const Skin& skin, std::uint16_t key, const Plane& plane) {
    switch (key) {
        case function_key::kControl:
            return u"Ctrl";
        case function_key::kLanguage:
            return skin.languageNames[plane.Language()];
        case function_key::kDigits:
            return plane.digits ? u"abc" : u"123";
        case function_key::kUmlaut:
            return u"áü";
        case function_key::kEscape:
            return u"Esc";
        default:
            return {};
    }
}

}  // namespace

Sign SignOf(const Skin& skin, const Key& key, const Plane& plane) {
    Sign sign;
    sign.isWord = true;
    if (key.key == function_key::kUmlaut) sign.enlarged = kMoreForAccents;
    if (const Label* label = LabelOf(skin, key, plane)) {
        sign.text = label->word;
        sign.icon = label->icon;
    } else if (IsFunction(key.key)) {
        sign.icon = IconOf(skin, key.key, plane);
        sign.text = WordOf(skin, key.key, plane);
    } else {
        sign.isWord = false;
        if (const char16_t character = skin.characters[key.key][plane.slot]) sign.text.assign(1, character);
    }
    return sign;
}

}  // namespace tlk
