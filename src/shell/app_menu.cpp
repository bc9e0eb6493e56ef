// SPDX-License-Identifier: MIT
#include "shell/app_menu.h"

namespace wrenfold {

AppMenu::AppMenu(const MenuActions &actions)
    : m_actions(actions)
    , m_menu(QStringLiteral("Wren Fold"))
    , m_editMenu(QStringLiteral("編集"))
{
    m_menu.setAccessibleName(m_menu.title());
    constexpr auto globalKeys = Qt::CTRL | Qt::ALT | Qt::META;
    addEntry(m_menu, QStringLiteral("Wren Fold を表示"), m_actions.onShowPanel, globalKeys | Qt::Key_P);
    addEntry(m_menu, QStringLiteral("Wren Fold を隠す"), m_actions.onHidePanel, globalKeys | Qt::Key_H);
    addEntry(m_menu, QStringLiteral("設定..."), m_actions.onShowSettings, Qt::CTRL | Qt::Key_Comma);
    addEntry(m_menu, QStringLiteral("AIチャット"), m_actions.onShowAIChat);
    m_menu.addMenu(&m_editMenu);
    m_menu.addSeparator();
    addEntry(m_menu, QStringLiteral("Wren Fold を終了"), m_actions.onQuit, Qt::CTRL | Qt::Key_Q);

    m_undo = addEntry(m_editMenu, QStringLiteral("取り消す"), m_actions.onUndo, Qt::CTRL | Qt::Key_Z);
    m_redo = addEntry(m_editMenu, QStringLiteral("やり直す"), m_actions.onRedo, Qt::CTRL | Qt::Key_Y);
    QObject::connect(&m_editMenu, &QMenu::aboutToShow, &m_editMenu, [this] { validate(); });
    // Always enabled as far as keys go: the operations do nothing when there is nothing to do.
    QObject::connect(&m_editMenu, &QMenu::aboutToHide, &m_editMenu, [this] {
        m_undo->setEnabled(static_cast<bool>(m_actions.onUndo));
        m_redo->setEnabled(static_cast<bool>(m_actions.onRedo));
    });
}

QAction *AppMenu::addEntry(QMenu &menu, const QString &title, const std::function<void()> &action,
                           const QKeySequence &keys)
{
    QAction *entry = menu.addAction(title, [action] { action(); });
    entry->setEnabled(static_cast<bool>(action));
    entry->setShortcut(keys);
    return entry;
}

void AppMenu::validate()
{
    m_undo->setEnabled(m_actions.canUndo && m_actions.canUndo());
    m_redo->setEnabled(m_actions.canRedo && m_actions.canRedo());
}

void AppMenu::addTo(QWidget &window)
{
    window.addActions(m_menu.actions());
    window.addActions(m_editMenu.actions());
}

void AppMenu::popup(const QPoint &position)
{
    m_menu.popup(position);
}

} // namespace wrenfold
