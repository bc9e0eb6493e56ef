// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <optional>

namespace wrenfold {

/// Where a window of this size opens: in the middle of the visible frame, or moved aside from there the shortest way on
/// which the panel covers none of it, with room for the windows' frames between them. Where there is no such way the
/// window stays in the middle; what does not fit into the visible frame begins at its left and top edge.
[[nodiscard]] QRect besidePanel(const QSize &size, const QRect &visibleFrame,
                                const std::optional<QRect> &panelFrame);

} // namespace wrenfold
