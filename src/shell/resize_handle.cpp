// SPDX-License-Identifier: MIT
#include "shell/resize_handle.h"

#include <QMouseEvent>
#include <QWindow>

namespace wrenfold {

namespace {

constexpr int thickness = 5; ///< Enough to be hit, and less than the content's own margin.
constexpr int corner = 10;

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge))
        return Qt::SizeFDiagCursor;
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge))
        return Qt::SizeBDiagCursor;
    return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace

QRect resizeHandleRect(Qt::Edges edges, const QSize &window)
{
    const bool isCorner =
        (edges & (Qt::LeftEdge | Qt::RightEdge)) && (edges & (Qt::TopEdge | Qt::BottomEdge));
    const int size = isCorner ? corner : thickness;
    QRect rect(QPoint(), window);
    if (edges & Qt::LeftEdge)
        rect.setWidth(size);
    else if (edges & Qt::RightEdge)
        rect.setLeft(window.width() - size);
    else
        rect.adjust(corner, 0, -corner, 0);
    if (edges & Qt::TopEdge)
        rect.setHeight(size);
    else if (edges & Qt::BottomEdge)
        rect.setTop(window.height() - size);
    else
        rect.adjust(0, corner, 0, -corner);
    return rect;
}

ResizeHandle::ResizeHandle(Qt::Edges edges, QWidget *window)
    : QWidget(window)
    , m_edges(edges)
    , m_pull(edges)
{
    setCursor(cursorFor(edges));
}

void ResizeHandle::place()
{
    setGeometry(resizeHandleRect(m_edges, window()->size()));
    raise();
}

void ResizeHandle::mousePressEvent(QMouseEvent *event)
{
    m_pull.press(*event, *window()->windowHandle());
}

void ResizeHandle::mouseMoveEvent(QMouseEvent *event)
{
    m_pull.move(*event, *window()->windowHandle());
}

void ResizeHandle::mouseReleaseEvent(QMouseEvent *event)
{
    m_pull.release(*event);
}

} // namespace wrenfold
