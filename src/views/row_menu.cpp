// SPDX-License-Identifier: MIT
#include "views/row_menu.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QWidget>

namespace wrenfold {

QString deleteHelp()
{
    return QStringLiteral("削除（元に戻せます）");
}

void addQuadrantEntries(QMenu &menu, std::optional<TaskQuadrant> current,
                        std::function<void(TaskQuadrant)> chosen)
{
    for (const TaskQuadrant quadrant : allQuadrants) {
        QAction *action = menu.addAction(label(quadrant), [quadrant, current, chosen] {
            if (quadrant != current)
                chosen(quadrant);
        });
        action->setCheckable(current.has_value());
        action->setChecked(quadrant == current);
    }
}

void showRowMenu(QMenu *menu, const QWidget &row, const QContextMenuEvent &event)
{
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isByKey = event.reason() == QContextMenuEvent::Keyboard;
    menu->popup(isByKey ? row.mapToGlobal(QPoint(row.width() / 4, row.height())) : event.globalPos());
}

} // namespace wrenfold
