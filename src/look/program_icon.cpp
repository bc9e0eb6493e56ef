// SPDX-License-Identifier: MIT
#include "look/program_icon.h"

#include "app/application_id.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace wrenfold {

QIcon programIcon()
{
    QSvgRenderer renderer(QStringLiteral(":/icons/%1.svg").arg(applicationID()));
    QIcon icon;
    // What window managers draw: in the title bar, and in the list of windows to choose from.
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace wrenfold
