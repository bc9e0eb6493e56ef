// SPDX-License-Identifier: MIT
#include "views/minutes_box.h"

#include "look/line_edit.h"

#include <QContextMenuEvent>
#include <QWheelEvent>

namespace wrenfold {

MinutesBox::MinutesBox(const QString &name, int maximum, QWidget *parent)
    : QSpinBox(parent)
    , m_field(new LineEdit(this))
{
    setLineEdit(m_field);
    setAccessibleName(name);
    setPrefix(name + QStringLiteral(": "));
    setSuffix(QStringLiteral(" 分"));
    setRange(1, maximum);
    // On the way to 90, the 9 would cut short a phase that has not begun.
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_field->commit();
    // A number that was not typed is no typing to be undone.
    connect(this, &QSpinBox::valueChanged, m_field, [this] {
        if (!m_field->isModified())
            m_field->commit();
    });
    connect(this, &QSpinBox::editingFinished, m_field, &LineEdit::commit);
}

void MinutesBox::contextMenuEvent(QContextMenuEvent *event)
{
    m_field->openMenu(event->globalPos());
}

void MinutesBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QSpinBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace wrenfold
