// SPDX-License-Identifier: MIT
#include "look/utility_window.h"

#include "look/bring_to_front.h"
#include "look/program_icon.h"

#include <QKeyEvent>
#include <QVBoxLayout>

namespace wrenfold {

UtilityWindow::UtilityWindow(const QString &title, const QSize &size)
    : QWidget(nullptr, Qt::Window)
{
    setWindowTitle(title);
    setWindowIcon(programIcon());
    resize(size);
}

void UtilityWindow::setContent(QWidget *content)
{
    m_content = content;
    // The layout keeps the window from getting smaller than what it holds.
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
}

void UtilityWindow::comeToFront()
{
    (void)winId(); // There is a native window from here on.
    Q_EMIT aboutToComeToFront(windowHandle());
    setWindowState(windowState() & ~Qt::WindowMinimized);
    bringToFront(*this);
}

void UtilityWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

} // namespace wrenfold
