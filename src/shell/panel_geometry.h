// SPDX-License-Identifier: MIT
#pragma once

#include "look/theme.h"

#include <QList>
#include <QRect>

#include <optional>

namespace wrenfold {

/// Where the panel stands, and where it goes back to when it gets narrow again.
struct PanelGeometry
{
    QRect frame;                       ///< In device-independent pixels of the screen.
    std::optional<int> compactOriginX; ///< The left edge before it was widened; only while it is wide.
    /// Of a wide panel: the list keeps its place under the pointer as far as the screen allows, so the board goes where
    /// there is room.
    bool isBoardLeftOfList = false;

    friend bool operator==(const PanelGeometry &, const PanelGeometry &) = default;
};

namespace PanelSize {
inline constexpr int compactWidth = Metrics::panelWidth, wideWidth = compactWidth + Metrics::boardWidth;
inline constexpr int fullHeight = 500, foldedHeight = 268;
inline constexpr int leastWidth = compactWidth, leastHeight = 250, mostWidth = 760, mostHeight = 760;
} // namespace PanelSize

/// The panel with or without its list and its board: its top edge stays, and so does its left one as far as the screen
/// allows. `visibleFrame` is the part of the screen that windows may use; without one nothing is clamped.
[[nodiscard]] PanelGeometry resizedPanel(const PanelGeometry &current,
                                         const std::optional<QRect> &visibleFrame, bool isListHidden,
                                         bool isQuadrantBoardPresented);

/// The frame moved to where all of it can be seen, as far as it fits: on that one of the screens' visible frames of which
/// it covers most, or else the first. Without screens it stays.
[[nodiscard]] QRect keptInSight(const QList<QRect> &visibleFrames, const QRect &frame);

} // namespace wrenfold
