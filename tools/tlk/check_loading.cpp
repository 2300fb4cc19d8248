// SPDX-License-Identifier: MIT
// Checks the resources: would the engine load the skin, and do they fit the screen and each other?
#include <algorithm>
#include <cctype>

#include "check_parts.h"

namespace tlk {
namespace {

class LoadingCheck {
public:
    LoadingCheck(const CheckedSkin& checked, RemarkList& remarks)
        : m_Module(checked.module), m_Skin(checked.skin), m_Screen(checked.screen), m_Remarks(remarks) {}

    void Run() {
        CheckTypes();
        CheckPortraitWidth();
        // The engine tried the skin on this screen.
        const bool isTried =
            m_Skin.Board(BoardKind::Portrait).picture.GetSize().width == m_Screen.upright.width;
        if (isTried && m_Screen.Uses(BoardKind::Landscape)) CheckLandscapeWidth();
        for (const SkinBoard& board : m_Skin.boards) {
            if (!m_Screen.Uses(board.kind)) continue;
            CheckPicture(board);
            CheckMasks(board);
            CheckRecords(board);
        }
        CheckSecondLanguage();
    }

private:
    // The engine looks for data of the type named "RC_DATA"; for resource compilers RCDATA is the standard
    // type 10, which it never finds.
    void CheckTypes() {
        for (const Module::Entry& entry : m_Module.Entries())
            if (entry.type == "#10")
                m_Remarks.Add("data " + entry.name +
                              " has the standard type RCDATA and is not found: name its type \"RC_DATA\", "
                              "in quotes where the resource compiler asks for them");
    }

    void CheckPortraitWidth() {
        const SkinBitmap& picture = m_Skin.Board(BoardKind::Portrait).picture;
        const int width = m_Screen.upright.width;
        if (!picture.isPresent)
            m_Remarks.Add(BoardKind::Portrait, "the picture of the keyboard is missing" +
                                                   m_Remarks.Called(PictureResource(BoardKind::Portrait)) +
                                                   ": the file is no skin");
        else if (picture.IsReadable() && picture.GetSize().width != width)
            m_Remarks.Add(BoardKind::Portrait, "the picture is " + std::to_string(picture.GetSize().width) +
                                                   " pixels wide: the skin is for no screen of " +
                                                   Text(m_Screen.upright) + ", whose narrow side has " +
                                                   std::to_string(width));
    }

    void CheckLandscapeWidth() {
        const SkinBitmap& picture = m_Skin.Board(BoardKind::Landscape).picture;
        const Size screen = m_Screen.Turned();
        const std::string refused = ": the skin does not load when the screen is turned to " + Text(screen);
        const std::string width = std::to_string(picture.GetSize().width);
        if (!picture.isPresent)
            m_Remarks.Add(BoardKind::Landscape, "the picture of the turned keyboard is missing" +
                                                    m_Remarks.Called(PictureResource(BoardKind::Landscape)) +
                                                    refused);
        else if (!picture.IsReadable())
            return;
        else if (!m_Skin.pEngine->Turned().TakesSkin())
            m_Remarks.Add(BoardKind::Landscape, "the picture is " + width + " pixels wide" + refused);
        else if (picture.GetSize().width < screen.width)
            m_Remarks.Add(BoardKind::Landscape, "the picture is as wide as the narrow side of the screen: " +
                                                    std::to_string(screen.width - picture.GetSize().width) +
                                                    " pixels beside it stay empty");
    }

    void CheckPicture(const SkinBoard& board) {
        if (!board.picture.isPresent) return;
        if (!board.picture.IsReadable()) {
            m_Remarks.Add(board.kind,
                          "the picture is damaged or compressed and cannot be checked: use 1, 4, "
                          "8, 16, 24 or 32 bits without compression");
            return;
        }
        const Size picture = board.picture.GetSize();
        // If the skin does not load there, its digit keyboard is never seen.
        const bool isUprightOnly =
            board.kind == BoardKind::Digits && !m_Skin.Board(BoardKind::Landscape).picture.isPresent;
        const Size panel = m_Screen.Panel(isUprightOnly ? BoardKind::Portrait : board.kind);
        if (picture.height > panel.height)
            m_Remarks.Add(board.kind, "the picture is " + std::to_string(picture.height) +
                                          " pixels high, the panel " + std::to_string(panel.height) +
                                          ": the lowest " + std::to_string(picture.height - panel.height) +
                                          " rows are cut off");
        if (picture.height < panel.height)
            m_Remarks.Add(board.kind,
                          "the picture is " + std::to_string(picture.height) + " pixels high, the panel " +
                              std::to_string(panel.height) +
                              (board.kind == BoardKind::Digits ? ": letters stay visible below it"
                                                               : ": a strip below it stays empty"));
        if (board.kind == BoardKind::Digits &&
            (picture.width < panel.width || (picture.width > panel.width && !isUprightOnly)))
            m_Remarks.Add(
                board.kind,
                "the picture is " + std::to_string(picture.width) + " pixels wide, the screen's wider side " +
                    std::to_string(panel.width) + ": " +
                    (picture.width < panel.width ? "letters stay visible beside it when the screen is turned"
                                                 : "the rest is never seen"));
    }

    // Missing masks are reported with the planes.
    void CheckMasks(const SkinBoard& board) {
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane) {
            const SkinBitmap& mask = board.masks[plane];
            if (!mask.isPresent) continue;
            const PlaneSet planes{plane};
            if (mask.depth != 1)
                m_Remarks.Add(board.kind, planes,
                              "the mask is no bitmap of one bit per pixel, black and white: the plane "
                              "cannot be drawn");
            else if (board.picture.IsReadable() && mask.GetSize() != board.picture.GetSize())
                m_Remarks.Add(board.kind, planes,
                              "the mask is " + Text(mask.GetSize()) + " pixels large, its picture " +
                                  Text(board.picture.GetSize()));
        }
    }

    void CheckRecords(const SkinBoard& board) {
        if (!board.picture.isPresent) return;
        const auto records = m_Module.Find(ResourceKind::Data, LayoutResource(board.kind));
        if (!records && board.kind == BoardKind::Landscape)
            m_Remarks.Add(board.kind, "its own layout is missing" +
                                          m_Remarks.Called(LayoutResource(board.kind)) +
                                          ": the keys are where portrait has them");
        if (board.recordCount == 0)
            m_Remarks.Add(board.kind, "the layout is missing or empty: no tap hits a key");
        if (board.readCount < board.recordCount)
            m_Remarks.Add(board.kind, "the layout has " + std::to_string(board.recordCount) +
                                          " records, too many or too large ones: only the first " +
                                          std::to_string(board.readCount) + " were checked");
        if (!records) return;
        if (records->size() % kRecordSize != 0)
            m_Remarks.Add(board.kind, "the layout ends with " +
                                          std::to_string(records->size() % kRecordSize) +
                                          " bytes that fill no record of 16");
    }

    void CheckSecondLanguage() {
        const auto locale = m_Module.Find(ResourceKind::Data, "LOCALE_CHARSET");
        if (locale && (locale->size() < 2 || (locale->size() - 2) % 8 != 0))
            m_Remarks.Add("the characters of language 2" + m_Remarks.Called("LOCALE_CHARSET") + " have " +
                          std::to_string(locale->size()) +
                          " bytes, which is not 2 and a multiple of 8: the rest is ignored");
        const auto caps = m_Module.Find(ResourceKind::Data, "CAPS_RECT");
        if (caps && caps->size() != 16)
            m_Remarks.Add("the area that caps lock leaves alone" + m_Remarks.Called("CAPS_RECT") + " has " +
                          std::to_string(caps->size()) + " bytes instead of 16");
    }

    const Module& m_Module;
    const SkinModule& m_Skin;
    const Screen& m_Screen;
    RemarkList& m_Remarks;
};

}  // namespace

void CheckLoading(const CheckedSkin& checked, RemarkList& remarks) { LoadingCheck(checked, remarks).Run(); }

}  // namespace tlk
