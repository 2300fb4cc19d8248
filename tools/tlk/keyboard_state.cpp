// SPDX-License-Identifier: MIT
#include "keyboard_state.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <iterator>
#include <utility>

#include "errors.h"
#include "preview.h"

namespace tlk {
namespace {

constexpr unsigned kFlagCount = 7;

KeyboardState StateOf(unsigned flags) {
    const auto has = [flags](unsigned bit) { return (flags >> bit & 1) != 0; };
    return {has(0), has(1), has(2), has(3), has(4), has(5), has(6)};
}

// As the engine chooses the mask.
std::size_t PlaneOf(const KeyboardState& state) {
    if (state.hasControl) return 0;
    if (state.showsDigits) return kDigitPlane;
    return (state.isLanguage2 ? 4U : 0U) + (state.hasUmlauts ? 2U : 0U) +
           (state.hasShift != state.hasCapsLock ? 1U : 0U);
}

View ViewOf(const SkinModule& skin, const KeyboardState& state) {
    View view;
    view.plane = PlaneOf(state);
    view.isLandscape = state.isLandscape;
    view.hasCapsLock = state.hasCapsLock && !state.hasControl;
    const KeyLayout& layout = skin.Board(view.Board()).layout;
    for (const auto& [isLatched, key] : {std::pair{state.hasShift, function_key::kShift},
                                         {state.hasCapsLock, function_key::kCaps},
                                         {state.hasControl, function_key::kControl},
                                         {state.isLanguage2, function_key::kLanguage},
                                         {state.hasUmlauts, function_key::kUmlaut}})
        if (isLatched && layout.contains(key)) view.pressed.push_back(key);
    return view;
}

bool IsOn(const Picture& keyboard, const Picture& panel) {
    const Size size{std::min(keyboard.GetSize().width, panel.GetSize().width),
                    std::min(keyboard.GetSize().height, panel.GetSize().height)};
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            if (keyboard.At(x, y) != panel.At(x, y)) return false;
    return true;
}

bool LooksLike(const SkinModule& skin, const KeyboardState& state, const Picture& panel) {
    try {
        return IsOn(Compose(skin, ViewOf(skin, state)), panel);
    } catch (const FileError&) {
        return false;  // the skin has no such plane
    }
}

BoardKind BoardOf(const KeyboardState& shown) {
    if (shown.showsDigits) return BoardKind::Digits;
    return shown.isLandscape ? BoardKind::Landscape : BoardKind::Portrait;
}

std::vector<std::string> Send(const char* command, const KeyLayout& layout, std::uint16_t key) {
    const auto found = layout.find(key);
    if (found == layout.end()) return {};
    const Rect& rect = found->second.front();
    return {std::string(command) + " " + std::to_string((rect.left + rect.right) / 2) + " " +
            std::to_string((rect.top + rect.bottom) / 2)};
}

}  // namespace

std::optional<KeyboardState> FindState(const SkinModule& skin, const Picture& panel) {
    // Of states that look alike, the one that takes the fewest taps.
    for (int count = 0; count <= static_cast<int>(kFlagCount); ++count)
        for (unsigned flags = 0; flags < 1U << kFlagCount; ++flags)
            if (std::popcount(flags) == count && LooksLike(skin, StateOf(flags), panel))
                return StateOf(flags);
    return std::nullopt;
}

std::vector<std::string> TapOn(const SkinModule& skin, const KeyboardState& shown, std::uint16_t key) {
    return Send("tap", skin.Board(BoardOf(shown)).layout, key);
}

std::vector<std::string> CommandsFor(const SkinModule& skin, const KeyboardState& state) {
    std::vector<std::string> commands;
    KeyboardState shown = state;
    shown.showsDigits = false;
    const KeyLayout& layout = skin.Board(BoardOf(shown)).layout;
    const auto send = [&](bool isLatched, const char* command, std::uint16_t key) {
        if (isLatched) std::ranges::copy(Send(command, layout, key), std::back_inserter(commands));
    };
    // Without a key of its own, caps lock is two taps on Shift, and a third one releases it.
    const bool hasCapsKey = layout.contains(function_key::kCaps);
    send(state.isLanguage2, "tap", function_key::kLanguage);
    send(state.hasCapsLock, hasCapsKey ? "tap" : "double",
         hasCapsKey ? function_key::kCaps : function_key::kShift);
    send(state.hasUmlauts, "tap", function_key::kUmlaut);
    send(state.hasControl, "tap", function_key::kControl);
    send(state.hasShift && (hasCapsKey || !state.hasCapsLock), "tap", function_key::kShift);
    send(state.showsDigits, "tap", function_key::kDigits);  // last, as other keys follow
    return commands;
}

}  // namespace tlk
