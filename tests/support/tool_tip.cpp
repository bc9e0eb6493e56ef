// SPDX-License-Identifier: MIT
#include "support/tool_tip.h"

#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

namespace wrenfold {

namespace {

/// QToolTip::hideText() only starts to hide it.
void removeToolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->windowType() == Qt::ToolTip)
            delete window;
    }
}

QString toolTipAfterRest(QWidget &widget)
{
    removeToolTip();
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), widget.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&widget, &event);
    const QString text = QToolTip::text();
    removeToolTip();
    return text;
}

} // namespace

QString shownToolTip(QWidget &widget)
{
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()"); // The offscreen platform's.
    return toolTipAfterRest(widget);
}

bool showsNoToolTip(QWidget &widget)
{
    return toolTipAfterRest(widget).isEmpty();
}

} // namespace wrenfold
