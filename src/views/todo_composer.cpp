// SPDX-License-Identifier: MIT
#include "views/todo_composer.h"

#include "look/painting.h"
#include "look/text_field.h"

#include <QKeyEvent>
#include <QPainter>

namespace wrenfold {

TodoComposer::TodoComposer(QWidget *parent)
    : QWidget(parent)
    , m_field(new TextField(QStringLiteral("TODOを追加"), this))
{
    m_field->setFont(Fonts::body());
    m_field->installEventFilter(this);
    setFixedHeight(Metrics::fieldHeight);
}

void TodoComposer::focusInput()
{
    m_field->setFocus(Qt::OtherFocusReason);
}

bool TodoComposer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::FocusIn)
        Q_EMIT focused();
    if (watched == m_field && event->type() == QEvent::KeyPress && !m_field->isComposing()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            submit(key->modifiers() & Qt::ControlModifier);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TodoComposer::submit(bool makeActive)
{
    const QString draft = m_field->text();
    m_field->setCommittedText({});
    Q_EMIT submitted(draft, makeActive);
}

void TodoComposer::mousePressEvent(QMouseEvent *)
{
    m_field->setFocus(Qt::MouseFocusReason);
}

void TodoComposer::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int left = Metrics::fieldPadding + Metrics::symbolSize + Metrics::fieldSpacing;
    m_field->setGeometry(left, 0, width() - left - Metrics::fieldPadding, height());
}

void TodoComposer::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    Painting::roundedCard(painter, rect(), Metrics::fieldRadius, {theme.hover, theme.fieldLine, {}});
    Painting::symbol(painter, QRectF(Metrics::fieldPadding, 0, Metrics::symbolSize, height()),
                     QStringLiteral("pin.circle.fill"), theme.accent);
}

} // namespace wrenfold
