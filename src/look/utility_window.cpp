// SPDX-License-Identifier: MIT
#include "look/utility_window.h"

#include <QKeyEvent>

namespace wrenfold {

UtilityWindow::UtilityWindow(const QString &title, const QSize &size)
    : QWidget(nullptr, Qt::Window)
{
    setWindowTitle(title);
    resize(size);
}

void UtilityWindow::setContent(QWidget *content)
{
    m_content = content;
    m_content->setParent(this);
    m_content->setGeometry(rect());
}

void UtilityWindow::comeToFront()
{
    (void)winId(); // There is a native window from here on.
    Q_EMIT aboutToComeToFront(windowHandle());
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void UtilityWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

void UtilityWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_content)
        m_content->resize(size());
}

} // namespace wrenfold
