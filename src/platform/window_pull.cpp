// SPDX-License-Identifier: MIT
#include "platform/window_pull.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWindow>

#include <algorithm>

namespace wrenfold {
namespace {

/// Whether the window manager does the rest. It knows nothing of a window that goes round it.
bool handOver(QWindow &window, Qt::Edges edges)
{
    if (window.flags().testFlag(Qt::BypassWindowManagerHint))
        return false;
    return edges ? window.startSystemResize(edges) : window.startSystemMove();
}

} // namespace

QRect pulledFrame(const QRect &frame, Qt::Edges edges, const QPoint &way, const QSize &least,
                  const QSize &most)
{
    if (!edges)
        return frame.translated(way);
    QSize size = frame.size();
    if (edges & Qt::LeftEdge)
        size.rwidth() -= way.x();
    else if (edges & Qt::RightEdge)
        size.rwidth() += way.x();
    if (edges & Qt::TopEdge)
        size.rheight() -= way.y();
    else if (edges & Qt::BottomEdge)
        size.rheight() += way.y();
    size = size.expandedTo(least).boundedTo(most);
    QRect pulled(frame.topLeft(), size);
    if (edges & Qt::LeftEdge)
        pulled.moveRight(frame.right());
    if (edges & Qt::TopEdge)
        pulled.moveBottom(frame.bottom());
    return pulled;
}

void WindowPull::press(const QMouseEvent &event, const QWindow &window)
{
    if (event.button() == Qt::LeftButton)
        m_press = {event.globalPosition().toPoint(), window.geometry()};
}

void WindowPull::move(const QMouseEvent &event, QWindow &window)
{
    // Moves with the button held also come from a child whose press it was, when the pointer leaves it.
    if (!m_press)
        return;
    const QPoint way = event.globalPosition().toPoint() - m_press->pointer;
    // Begun before the pointer has really gone somewhere, it would go on without the button held after a mere click.
    if (way.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
        return;
    const auto pulled = [&](Qt::Edges edges) {
        return pulledFrame(m_press->frame, edges, way, window.minimumSize(), window.maximumSize());
    };
    // The window manager counts from where the pointer is now. Unless the way up to here is made first, the edge stays
    // behind by it, and the pointer ends beside the panel. Only for the right and lower edges: they leave the
    // window's place, from which Qt works out for the window manager where the pointer is.
    if (const Qt::Edges edges = m_edges & (Qt::RightEdge | Qt::BottomEdge))
        window.resize(pulled(edges).size());
    // Once a press: the window manager keeps the release to itself, so that later moves still seem to have the button
    // held.
    if (handOver(window, m_edges))
        m_press.reset();
    else
        window.setGeometry(pulled(m_edges));
}

void WindowPull::release(const QMouseEvent &event)
{
    if (event.button() == Qt::LeftButton)
        m_press.reset();
}

} // namespace wrenfold
