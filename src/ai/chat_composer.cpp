// SPDX-License-Identifier: MIT
#include "ai/chat_composer.h"

#include "look/painting.h"
#include "look/text_button.h"
#include "look/text_field.h"

#include <QPainter>

namespace wrenfold {

ChatComposer::ChatComposer(QWidget *parent)
    : QWidget(parent)
    , m_field(new TextField(QStringLiteral("AIに相談"), this))
    , m_send(new TextButton(QStringLiteral("送信"), TextButton::Kind::Primary, this))
{
    setFixedHeight(Metrics::fieldHeight);
    connect(m_field, &TextField::returnPressed, this, &ChatComposer::submitted);
    connect(m_send, &TextButton::clicked, this, &ChatComposer::submitted);
}

QString ChatComposer::draft() const
{
    return m_field->text();
}

void ChatComposer::setDraft(const QString &draft)
{
    m_field->setCommittedText(draft);
}

void ChatComposer::setSendEnabled(bool isEnabled)
{
    // Its focus would wander off.
    if (!isEnabled && m_send->hasFocus())
        focusInput();
    m_send->setEnabled(isEnabled);
}

void ChatComposer::focusInput()
{
    m_field->setFocus(Qt::OtherFocusReason);
}

QSize ChatComposer::sizeHint() const
{
    return {Metrics::chatWidth, Metrics::fieldHeight};
}

QRect ChatComposer::fieldRect() const
{
    return rect().adjusted(0, 0, -m_send->sizeHint().width() - Metrics::bubbleSpacing, 0);
}

void ChatComposer::mousePressEvent(QMouseEvent *)
{
    m_field->setFocus(Qt::MouseFocusReason);
}

void ChatComposer::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_field->setGeometry(fieldRect().adjusted(Metrics::fieldPadding, 0, -Metrics::fieldPadding, 0));
    const int sendWidth = m_send->sizeHint().width();
    m_send->setGeometry(width() - sendWidth, 0, sendWidth, height());
}

void ChatComposer::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    Painting::roundedCard(painter, fieldRect(), Metrics::fieldRadius, {theme.hover, theme.fieldLine, {}});
}

} // namespace wrenfold
