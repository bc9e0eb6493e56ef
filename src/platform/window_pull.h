// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <optional>

class QMouseEvent;
class QWindow;

namespace wrenfold {

/// The pointer pulling at a window without a frame. Belongs to a widget in it, which hands its mouse events on.
class WindowPull
{
public:
    /// The window is moved; with an edge, or two that meet, it is resized by them within its bounds.
    explicit WindowPull(Qt::Edges edges = {})
        : m_edges(edges)
    {
    }

    void press(const QMouseEvent &event, const QWindow &window);
    void move(const QMouseEvent &event, QWindow &window);
    void release(const QMouseEvent &event);

private:
    struct Press
    {
        QPoint pointer; ///< On the screen.
        QRect frame;    ///< The window's, then.
    };

    Qt::Edges m_edges;
    std::optional<Press> m_press; ///< None once the window manager has taken over.
};

/// The frame with these edges, or without any the whole of it, pulled that far. What would get too small or too large
/// stops at its bound.
[[nodiscard]] QRect pulledFrame(const QRect &frame, Qt::Edges edges, const QPoint &way, const QSize &least,
                                const QSize &most);

} // namespace wrenfold
