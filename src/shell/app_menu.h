// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include <functional>

namespace wrenfold {

/// The application's two menus: what concerns the program, and "編集". Their actions work by key in every
/// window that addTo() was called for.
class AppMenu
{
public:
    struct Actions
    {
        std::function<void()> hidePanel;
        std::function<void()> undo;
        std::function<void()> redo;
        std::function<void()> quit;
        std::function<bool()> canUndo;
        std::function<bool()> canRedo;
    };

    explicit AppMenu(const Actions &actions);

    void addTo(QWidget &window);

    /// Opens the menus as one, at a point of the screen. Undo and redo are enabled when there is something to
    /// take back or to do again.
    void popup(const QPoint &position);

private:
    Actions m_actions;
    QMenu m_menu;
    QAction *m_undo;
    QAction *m_redo;
};

} // namespace wrenfold
