// SPDX-License-Identifier: MIT
#include "look/copy_menu.h"

#include <QMenu>

namespace wrenfold {

void openCopyMenu(QWidget &text, const QPoint &position, const CopyMenuActions &actions)
{
    auto *menu = new QMenu(&text);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("コピー"), actions.copy);
    menu->addAction(QStringLiteral("すべて選択"), actions.selectAll);
    menu->popup(position);
}

} // namespace wrenfold
