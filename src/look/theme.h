// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>

#include <array>
#include <chrono>

namespace wrenfold {

/// The colours of every window of ours. Which theme holds follows the desktop, so painting code asks for
/// current() each time and keeps no colour. Each text colour reaches 4.5 : 1 on the surfaces it stands on; with
/// high contrast 7 : 1, and lines 3 : 1.
struct Theme
{
    /// Names a colour that is looked up only when painting: `theme.*color`.
    using Color = QColor Theme::*;

    // Surfaces. Those with an alpha lie on another surface.
    QColor background; ///< The panel and the other windows.
    QColor board;      ///< The pane of the four quadrants.
    QColor card;       ///< The NOW card, the quadrants' cells, the assistant's messages.
    QColor line;       ///< Hairlines.
    QColor fieldLine;  ///< The outline of fields and plain buttons; invalid, so none, without high contrast.
    QColor ringTrack;  ///< The unfilled part of the timer's ring: a hairline, opaque.
    QColor ringHover;  ///< The ring's button under the pointer, opaque.
    QColor hover;      ///< A row under the pointer; also fields, chips and plain buttons.
    QColor accentSoft; ///< The active row, a switched-on icon, a proposal.
    QColor accentLine; ///< The outline of a proposal.
    QColor greenSoft;  ///< The badge of the tasks done today.

    // Texts and symbols.
    QColor ink;
    QColor secondaryInk;
    QColor tertiaryInk;
    QColor accent;
    QColor onAccent; ///< On a surface of the accent or of green.
    QColor green;
    QColor orange;
    QColor pink;

    // The four quadrants.
    QColor urgentAndImportant;
    QColor important;
    QColor urgent;
    QColor neither;

    qreal focusRingWidth = 2.0; ///< In device-independent pixels.

    /// The quadrants' colours in the board's reading order.
    static constexpr std::array<Color, 4> quadrants();

    /// The opaque surface of a tag of this text colour; opaque so that a hovered row does not dim its text.
    [[nodiscard]] QColor tagSurface(const QColor &text) const;
    /// The surface of the quadrant cell of this colour while a task is dragged over it.
    [[nodiscard]] QColor dropSurface(const QColor &text) const;

    static const Theme &light();
    static const Theme &dark();
    static const Theme &lightHighContrast();
    static const Theme &darkHighContrast();
    /// The theme of the application's palette: Qt repaints all widgets when that changes, as it does whenever
    /// ApplicationLook changes the theme.
    static const Theme &current() { return inScheme(isPaletteDark()); }
    static const Theme &inScheme(bool isDark);
    static bool isPaletteDark();
    /// For ApplicationLook.
    static void setHighContrast(bool isHighContrast);
};

constexpr std::array<Theme::Color, 4> Theme::quadrants()
{
    return {&Theme::urgentAndImportant, &Theme::important, &Theme::urgent, &Theme::neither};
}

/// Lengths in device-independent pixels.
namespace Metrics {
inline constexpr int panelRadius = 14, panelPadding = 12, panelWidth = 344, boardWidth = 372;
inline constexpr int chatWidth = 440, chatHeight = 520;

inline constexpr int gripHeight = 14, gripBarWidth = 36, gripBarHeight = 4;
inline constexpr int headerHeight = 46, headerSpacing = 10;
inline constexpr int ringSize = 42, ringRadius = 18;
inline constexpr qreal ringWidth = 3.5;
inline constexpr int timeHeight = 24, timeSpacing = 4, subtitleHeight = 15;
inline constexpr int stripHeight = 30, stripSpacing = 3, stripMargin = 2;

inline constexpr int iconButtonSize = 26, iconButtonRadius = 7, symbolSize = 16;
inline constexpr int checkHitSize = 24, checkSize = 16, chipCheckSize = 13;
inline constexpr qreal checkLineWidth = 1.5, disabledOpacity = 0.55, draggedOpacity = 0.35;
inline constexpr int badgeHeight = 20, badgePadding = 6, badgeSpacing = 3;
inline constexpr int tagHeight = 17, tagRadius = 8, tagPadding = 6;
inline constexpr int textButtonHeight = 24, textButtonPadding = 4, textButtonRadius = 6;
inline constexpr int buttonHeight = 28, buttonPadding = 12, buttonRadius = 8;
inline constexpr int buttonSymbolSize = 14, buttonSymbolSpacing = 5;

inline constexpr int cardRadius = 11, cardPadding = 8, cardAccentWidth = 3, sectionSpacing = 8;
inline constexpr int fieldHeight = 34, fieldRadius = 9, fieldPadding = 9, fieldSpacing = 7;
inline constexpr int listMargin = 6, sectionHeaderHeight = 24, sectionHeaderSpacing = 5;
inline constexpr int rowHeight = 32, rowRadius = 8, rowSpacing = 6, rowLeftPadding = 6, rowRightPadding = 4;
inline constexpr int subtaskRowHeight = 28, twoLineRowHeight = 40, subtaskIndent = 30, rowLeadWidth = 16;
inline constexpr int statusHeight = 26, statusSpacing = 8;
inline constexpr int applicationIconSize = 24, chooserWidth = 420, chooserHeight = 480;

inline constexpr int boardPadding = 12, boardTitleHeight = 26, boardAxisWidth = 32, boardGap = 7;
inline constexpr int cellRadius = 10, cellPadding = 8, cellSpacing = 5, chipRadius = 7, chipPadding = 7;
inline constexpr int boardAxisHeight = 18, cellTitleHeight = 17, cellLabelHeight = 14, chipHeight = 44;
inline constexpr int bubbleRadius = 13, bubbleTailRadius = 4, bubblePadding = 11, bubbleVerticalPadding = 8;
inline constexpr int bubbleSpacing = 8, proposalRadius = 12, proposalPadding = 12,
                     proposalVerticalPadding = 10;

inline constexpr int settingsWidth = 520, settingsHeight = 430, settingsPadding = 16,
                     settingsSectionSpacing = 20;
inline constexpr int settingsSpacing = 6;
} // namespace Metrics

namespace Durations {
inline constexpr std::chrono::milliseconds caretRest{10000}; ///< A field left alone this long stops blinking.
/// How long a motion takes that begins now: folding, the board, a row that makes way. Zero, so none, when the user
/// asks for less motion.
[[nodiscard]] std::chrono::milliseconds motion();
/// For ApplicationLook.
void setMotionReduced(bool isReduced);
} // namespace Durations

/// The application's font in the sizes of our windows. Only what differs is set, so that a widget given one
/// of these still follows the desktop's font family.
namespace Fonts {
QFont body();        ///< Rows, fields, messages.
QFont strong();      ///< A proposal's title.
QFont subtask();     ///< Subtask rows, chips.
QFont small();       ///< Subtitles, the status line.
QFont smallStrong(); ///< Section headers, text buttons, the badge.
QFont tiny();        ///< Subtask numbers, axis labels.
QFont tinyStrong();  ///< Tags, the word GOAL.
QFont control();     ///< Plain buttons, the board's title, a quadrant's title.
QFont title();       ///< The NOW task.
QFont windowTitle(); ///< The chat's title.
QFont time();        ///< The timer.
QFont note();        ///< Explanations among the desktop's own controls: a little smaller than its font.
} // namespace Fonts

} // namespace wrenfold
