// SPDX-License-Identifier: MIT
#include "shell/panel_geometry.h"

#include <algorithm>

namespace wrenfold {

namespace {

/// The start of a stretch of `length` kept within [first, end); its start comes first where it does not fit.
int clamped(int start, int length, int first, int end)
{
    return std::max(first, std::min(start, end - length));
}

} // namespace

PanelGeometry resizedPanel(const PanelGeometry &current, const std::optional<QRect> &visibleFrame,
                           bool isListHidden, bool isQuadrantBoardPresented)
{
    using namespace PanelSize;
    const int width = isQuadrantBoardPresented ? wideWidth : compactWidth;
    const int height = isListHidden && !isQuadrantBoardPresented ? foldedHeight : fullHeight;
    PanelGeometry resized;
    int x = current.frame.left();
    if (isQuadrantBoardPresented)
        resized.compactOriginX = current.compactOriginX.value_or(x);
    else
        x = current.compactOriginX.value_or(x);
    const int wanted = x;
    if (visibleFrame)
        x = clamped(x, width, visibleFrame->left(), visibleFrame->left() + visibleFrame->width());
    resized.frame = QRect(x, current.frame.top(), width, height);
    if (isQuadrantBoardPresented) {
        const bool wasPresented = current.compactOriginX.has_value();
        // On the side where the list moves less.
        const bool isLeft = wanted - x > (wideWidth - compactWidth) / 2;
        resized.isBoardLeftOfList = wasPresented ? current.isBoardLeftOfList : isLeft;
    }
    return resized;
}

QRect keptInSight(const QList<QRect> &visibleFrames, const QRect &frame)
{
    const auto covered = [&frame](const QRect &visible) {
        const QSize size = visible.intersected(frame).size();
        return size.width() * size.height();
    };
    const auto most =
        std::max_element(visibleFrames.begin(), visibleFrames.end(),
                         [&covered](const QRect &a, const QRect &b) { return covered(a) < covered(b); });
    if (most == visibleFrames.end())
        return frame;
    const int x = clamped(frame.left(), frame.width(), most->left(), most->left() + most->width());
    const int y = clamped(frame.top(), frame.height(), most->top(), most->top() + most->height());
    return {QPoint(x, y), frame.size()};
}

} // namespace wrenfold
