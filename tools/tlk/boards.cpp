// SPDX-License-Identifier: MIT
#include "boards.h"

#include <algorithm>
#include <charconv>

namespace tlk {
namespace {

constexpr std::string_view kNames[] = {"portrait", "landscape", "digits"};

constexpr int kSmallestSide = 64;
constexpr int kLargestSide = 4096;

int PanelHeight(Size screen) { return screen.width > screen.height ? screen.height / 3 : screen.height / 4; }

}  // namespace

std::string_view BoardName(BoardKind board) { return kNames[static_cast<std::size_t>(board)]; }

Size PanelSize(BoardKind board, Size upright) {
    const Size turned{upright.height, upright.width};
    if (board == BoardKind::Portrait) return {upright.width, PanelHeight(upright)};
    if (board == BoardKind::Landscape) return {turned.width, PanelHeight(turned)};
    return {turned.width, std::max(PanelHeight(upright), PanelHeight(turned))};
}

std::optional<Size> ParseScreen(std::string_view text) {
    Size size;
    const char* const end = text.data() + text.size();
    const auto [times, widthError] = std::from_chars(text.data(), end, size.width);
    if (widthError != std::errc{} || times == end || *times != 'x') return std::nullopt;
    const auto [stop, heightError] = std::from_chars(times + 1, end, size.height);
    if (heightError != std::errc{} || stop != end) return std::nullopt;
    const auto isUsual = [](int side) { return side >= kSmallestSide && side <= kLargestSide; };
    if (!isUsual(size.width) || !isUsual(size.height)) return std::nullopt;
    return size;
}

std::string Text(Size size) { return std::to_string(size.width) + "x" + std::to_string(size.height); }

}  // namespace tlk
