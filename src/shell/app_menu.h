// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include <functional>

namespace wrenfold {

/// What the application's menus do. An entry whose action is empty is disabled.
struct MenuActions
{
    std::function<void()> onShowPanel;
    std::function<void()> onShowSettings;
    std::function<void()> onShowAIChat;
    std::function<void()> onHidePanel;
    std::function<void()> onUndo;
    std::function<void()> onRedo;
    std::function<bool()> canUndo; ///< Empty: there is never anything to take back.
    std::function<bool()> canRedo; ///< Empty: there is never anything to do again.
    std::function<void()> onQuit;
};

/// The application's two menus: what concerns the program, and "編集". Their keys work in every window that addTo() was
/// called for.
class AppMenu
{
public:
    explicit AppMenu(const MenuActions &actions);
    Q_DISABLE_COPY_MOVE(AppMenu)

    void addTo(QWidget &window);

    /// Opens the menus as one, at a point of the screen. Undo and redo are enabled when there is something to
    /// take back or to do again.
    void popup(const QPoint &position);

private:
    static QAction *addEntry(QMenu &menu, const QString &title, const std::function<void()> &action,
                             const QKeySequence &keys = {});
    void validate();

    MenuActions m_actions;
    QMenu m_menu;
    QMenu m_editMenu;
    QAction *m_undo;
    QAction *m_redo;
};

} // namespace wrenfold
