// SPDX-License-Identifier: MIT
#include "shell/companion_place.h"

#include "look/theme.h"

#include <QPoint>

#include <algorithm>
#include <array>

namespace wrenfold {

QRect besidePanel(const QSize &size, const QRect &visibleFrame, const std::optional<QRect> &panelFrame)
{
    const QRect centred(visibleFrame.left() + std::max(0, (visibleFrame.width() - size.width()) / 2),
                        visibleFrame.top() + std::max(0, (visibleFrame.height() - size.height()) / 2),
                        size.width(), size.height());
    constexpr int gap = Metrics::panelPadding;
    if (!panelFrame || !centred.intersects(panelFrame->marginsAdded({gap, gap, gap, gap})))
        return centred;

    std::array<QPoint, 4> ways = {
        QPoint(panelFrame->left() - gap - size.width() - centred.left(), 0),
        QPoint(panelFrame->left() + panelFrame->width() + gap - centred.left(), 0),
        QPoint(0, panelFrame->top() - gap - size.height() - centred.top()),
        QPoint(0, panelFrame->top() + panelFrame->height() + gap - centred.top()),
    };
    std::stable_sort(ways.begin(), ways.end(), [](const QPoint &a, const QPoint &b) {
        return a.manhattanLength() < b.manhattanLength();
    });
    const auto *way = std::find_if(ways.begin(), ways.end(), [&](const QPoint &candidate) {
        return visibleFrame.contains(centred.translated(candidate));
    });
    return way == ways.end() ? centred : centred.translated(*way);
}

} // namespace wrenfold
