// SPDX-License-Identifier: MIT
#include "check.h"

#include <algorithm>

#include "check_parts.h"
#include "name_list.h"

namespace tlk {
std::string FormatRemark(const Remark& remark, const std::string& file, const std::string& label) {
    std::string subject;
    if (remark.board) AppendName(subject, BoardName(*remark.board));
    for (const std::string& plane : remark.planes)
        AppendName(subject, plane);
    if (!remark.key.empty()) AppendName(subject, remark.key);
    std::string line = file;
    if (remark.place) line = remark.place->file + ":" + std::to_string(remark.place->line);
    return line + ": " + label + subject + (subject.empty() ? "" : ": ") + remark.text;
}

Remark& RemarkList::Append(std::string text) {
    m_remarks.push_back({{}, {}, {}, std::move(text), {}});
    return m_remarks.back();
}

void RemarkList::Add(std::string text) {
    if (HasRoom()) Append(std::move(text));
}

void RemarkList::Add(BoardKind board, std::string text) { Add(board, PlaneSet{}, std::move(text)); }

void RemarkList::Add(BoardKind board, std::uint16_t key, std::string text) {
    Add(board, PlaneSet{}, key, std::move(text));
}

void RemarkList::Add(BoardKind board, const PlaneSet& planes, std::string text) {
    if (!HasRoom()) return;
    Remark& remark = Append(std::move(text));
    remark.board = board;
    for (std::size_t plane : planes)
        remark.planes.emplace_back(PlaneName(plane));
}

void RemarkList::Add(BoardKind board, const PlaneSet& planes, std::uint16_t key, std::string text) {
    if (!HasRoom()) return;
    Add(board, planes, std::move(text));
    m_remarks.back().key = m_skin.Describe(key);
    if (!m_places) return;
    const auto place = m_places->find({board, key});
    if (place != m_places->end()) m_remarks.back().place = place->second;
}

std::vector<Remark> RemarkList::Take() {
    if (!HasRoom()) Append("and more, which are left out");
    return std::move(m_remarks);
}

bool KeysCoverTooMuch(const SkinBoard& board) {
    constexpr std::int64_t kMostCover = 16;
    const Size picture = board.picture.GetSize();
    std::int64_t covered = 0;
    for (const auto& [key, rects] : board.layout) {
        const Rect bounds = BoundsOf(rects, picture);
        covered += std::int64_t{std::max(bounds.Width(), 0)} * std::max(bounds.Height(), 0);
    }
    return covered > kMostCover * picture.width * picture.height;
}

bool IsMaskOf(const SkinBitmap& mask, const SkinBoard& board) {
    return mask.depth == 1 && mask.GetSize() == board.picture.GetSize();
}

std::string Text(const Rect& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + " to " + std::to_string(rect.right) +
           "," + std::to_string(rect.bottom);
}

std::vector<Remark> Check(const Module& module, Size size, const SourcePlaces* places) {
    const Screen screen{{std::min(size.width, size.height), std::max(size.width, size.height)}};
    const SkinModule skin = ReadSkin(module, screen.upright);
    CheckedSkin checked{module, skin, screen, {}};
    RemarkList remarks(skin, places);
    CheckLoading(checked, remarks);
    if (!skin.engine->Upright().TakesSkin()) return remarks.Take();
    for (BoardKind board : kBoards)
        checked.hits[static_cast<std::size_t>(board)] =
            MapHits(skin, board, Clip(skin.Board(board).picture.GetSize(), screen.Panel(board)));
    CheckLayout(checked, remarks);
    CheckCapsRect(checked, remarks);
    // Without a picture it is unknown what can be tapped.
    for (const SkinBoard& board : skin.boards)
        if (board.picture.isPresent && !board.picture.IsReadable()) return remarks.Take();
    const Reach reach = CheckStatus(checked, remarks);
    CheckPlanes(checked, reach, remarks);
    CheckContrast(checked, reach, remarks);
    return remarks.Take();
}

}  // namespace tlk
