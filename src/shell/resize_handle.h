// SPDX-License-Identifier: MIT
#pragma once

#include "platform/window_pull.h"

#include <QWidget>

namespace wrenfold {

/// A strip along one edge, or a square in one corner, of a window without a frame: pulled, it resizes the window. Paints
/// nothing.
class ResizeHandle : public QWidget
{
    Q_OBJECT

public:
    /// `window` has to be a window; `edges` are one, or two that meet.
    ResizeHandle(Qt::Edges edges, QWidget *window);

    /// To be called whenever the window has another size.
    void place();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    const Qt::Edges m_edges;
    WindowPull m_pull;
};

/// Where the handle for these edges lies in a window of this size.
[[nodiscard]] QRect resizeHandleRect(Qt::Edges edges, const QSize &window);

} // namespace wrenfold
