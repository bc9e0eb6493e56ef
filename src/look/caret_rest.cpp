// SPDX-License-Identifier: MIT
#include "look/caret_rest.h"

#include "look/theme.h"

#include <QEvent>
#include <QGuiApplication>
#include <QStyleHints>
#include <QWidget>

namespace wrenfold {

CaretRest::CaretRest(QWidget *field)
    : QObject(field)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(Durations::caretRest);
    connect(&m_timer, &QTimer::timeout, this, &CaretRest::rest);
    field->installEventFilter(this);
}

CaretRest::~CaretRest()
{
    wake();
}

void CaretRest::setDelay(std::chrono::milliseconds delay)
{
    m_timer.setInterval(delay);
}

bool CaretRest::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
        wake();
        m_timer.start();
        break;
    case QEvent::FocusOut:
        m_timer.stop();
        wake();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void CaretRest::rest()
{
    // Qt blinks by a timer in each field that follows this one value; a field by itself cannot be told.
    QStyleHints *hints = QGuiApplication::styleHints();
    m_flashTime = hints->cursorFlashTime();
    hints->setCursorFlashTime(0);
}

void CaretRest::wake()
{
    if (!m_flashTime)
        return;
    QGuiApplication::styleHints()->setCursorFlashTime(*m_flashTime);
    m_flashTime.reset();
}

} // namespace wrenfold
