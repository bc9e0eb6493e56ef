// SPDX-License-Identifier: MIT
#include "look/painted_button.h"

#include "look/double_press.h"
#include "look/plain_text.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

namespace wrenfold {

PaintedButton::PaintedButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    resize(0, 0); // Shown before it is placed, it must not be under a pointer at its parent's corner.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void PaintedButton::setHelp(const QString &help)
{
    if (help == m_help)
        return;
    m_help = help;
    helpChanged();
}

void PaintedButton::helpChanged()
{
    setAccessibleName(m_help);
}

bool PaintedButton::showsFocus() const
{
    return hasFocus() && m_keyboardFocus.isShown();
}

bool PaintedButton::isHovered() const
{
    return isEnabled() && underMouse();
}

bool PaintedButton::event(QEvent *event)
{
    // Not by the toolTip property: Qt also reads that one out as the description, where our escapes would be
    // heard.
    if (event->type() == QEvent::ToolTip && !m_help.isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(m_help), this);
        return true;
    }
    // A disabled button would swallow it, and with it the menu of what lies around.
    if (event->type() == QEvent::ContextMenu) {
        event->ignore();
        return false;
    }
    return QAbstractButton::event(event);
}

void PaintedButton::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if ((event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier && !event->isAutoRepeat())
            click();
        else
            event->ignore();
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
        // For the list around us; Qt's buttons would move the focus by them.
        event->ignore();
        break;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void PaintedButton::mousePressEvent(QMouseEvent *event)
{
    if (!isSecondPressMeantElsewhere(*event, *this))
        QAbstractButton::mousePressEvent(event);
}

void PaintedButton::focusInEvent(QFocusEvent *event)
{
    m_keyboardFocus.arrived(event->reason());
    QAbstractButton::focusInEvent(event);
}

} // namespace wrenfold
