// SPDX-License-Identifier: MIT
#include "shell/app_menu.h"

namespace wrenfold {

AppMenu::AppMenu(const Actions &actions)
    : m_actions(actions)
{
    m_menu.addAction(QStringLiteral("Wren Fold を隠す"), m_actions.hidePanel);
    QMenu *edit = m_menu.addMenu(QStringLiteral("編集"));
    // Always enabled as far as keys go: the operations do nothing when there is nothing to do.
    m_undo = edit->addAction(QStringLiteral("取り消す"), m_actions.undo);
    m_undo->setShortcut(Qt::CTRL | Qt::Key_Z);
    m_redo = edit->addAction(QStringLiteral("やり直す"), m_actions.redo);
    m_redo->setShortcut(Qt::CTRL | Qt::Key_Y);
    QObject::connect(edit, &QMenu::aboutToShow, edit, [this] {
        m_undo->setEnabled(m_actions.canUndo());
        m_redo->setEnabled(m_actions.canRedo());
    });
    QObject::connect(edit, &QMenu::aboutToHide, edit, [this] {
        m_undo->setEnabled(true);
        m_redo->setEnabled(true);
    });
    m_menu.addSeparator();
    QAction *quit = m_menu.addAction(QStringLiteral("Wren Fold を終了"), m_actions.quit);
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
}

void AppMenu::addTo(QWidget &window)
{
    window.addActions(m_menu.actions());
    window.addActions({m_undo, m_redo});
}

void AppMenu::popup(const QPoint &position)
{
    m_menu.popup(position);
}

} // namespace wrenfold
