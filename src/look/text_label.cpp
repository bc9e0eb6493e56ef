// SPDX-License-Identifier: MIT
#include "look/text_label.h"

#include "look/accessibility.h"
#include "look/double_press.h"
#include "look/painting.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

namespace wrenfold {

TextLabel::TextLabel(const QString &text, QWidget *parent)
    : QWidget(parent)
{
    installAccessibility();
    setFont(Fonts::body());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setText(text);
}

void TextLabel::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void TextLabel::setColor(Theme::Color color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void TextLabel::setStruckOut(bool isStruckOut)
{
    if (isStruckOut == m_isStruckOut)
        return;
    m_isStruckOut = isStruckOut;
    update();
}

void TextLabel::setTextDirection(Qt::LayoutDirection direction)
{
    m_textDirection = direction;
    update();
}

void TextLabel::setMaximumLines(int lines)
{
    m_maximumLines = lines;
    // A fixed height would hold the label to the one line of its size hint.
    QSizePolicy policy(sizePolicy().horizontalPolicy(),
                       lines > 1 ? QSizePolicy::Preferred : QSizePolicy::Fixed);
    policy.setHeightForWidth(lines > 1);
    setSizePolicy(policy);
    updateGeometry();
    update();
}

void TextLabel::setHelp(const QString &help)
{
    m_help = help;
    setAccessibleDescription(help);
}

void TextLabel::setClickable(bool isClickable)
{
    m_isClickable = isClickable;
    setFocusPolicy(isClickable ? Qt::TabFocus : Qt::NoFocus);
}

bool TextLabel::isElided() const
{
    return shown(width()).isElided;
}

QSize TextLabel::sizeHint() const
{
    // One pixel more than the advance, so that rounding never elides a text that fits.
    return QSize(fontMetrics().horizontalAdvance(oneLine(m_text)) + 1, fontMetrics().height())
        .grownBy(contentsMargins());
}

QSize TextLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

int TextLabel::heightForWidth(int width) const
{
    return m_maximumLines > 1 ? static_cast<int>(shown(width).lines.size()) * fontMetrics().height() : -1;
}

bool TextLabel::event(QEvent *event)
{
    // As in PaintedButton: the toolTip property would be read out as the description.
    if (event->type() == QEvent::ToolTip) {
        const QString tip = toolTipText();
        if (!tip.isEmpty()) {
            QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(tip), this);
            return true;
        }
    }
    return QWidget::event(event);
}

void TextLabel::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(Metrics::disabledOpacity);
    QFont lineFont = font();
    lineFont.setStrikeOut(m_isStruckOut);
    const QStringList lines = shown(width()).lines;
    const int lineHeight = fontMetrics().height();
    qreal top = (height() - lineHeight * static_cast<int>(lines.size())) / 2.0;
    for (const QString &line : lines) {
        const QRectF place(contentsRect().left(), top, contentsRect().width(), lineHeight);
        Painting::text(painter, place, line, lineFont, theme.*m_color, Qt::AlignLeft, m_textDirection);
        top += lineHeight;
    }
    if (hasFocus() && m_keyboardFocus.isShown())
        Painting::focusRing(painter, rect(), Metrics::textButtonRadius);
}

void TextLabel::mousePressEvent(QMouseEvent *event)
{
    if (!m_isClickable || event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_isPressed = !isSecondPressMeantElsewhere(*event, *this);
}

void TextLabel::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_isPressed || event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_isPressed = false;
    if (rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

void TextLabel::keyPressEvent(QKeyEvent *event)
{
    const bool isActivation =
        event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (m_isClickable && isActivation && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        if (!event->isAutoRepeat())
            Q_EMIT clicked();
        return;
    }
    event->ignore();
}

void TextLabel::focusInEvent(QFocusEvent *event)
{
    m_keyboardFocus.arrived(event->reason());
    QWidget::focusInEvent(event);
}

ElidedText TextLabel::shown(int width) const
{
    const QMargins margins = contentsMargins();
    return elided(m_text, font(), width - margins.left() - margins.right(), m_maximumLines);
}

QString TextLabel::toolTipText() const
{
    if (!isElided())
        return m_help;
    return m_help.isEmpty() ? m_text : m_text + QLatin1Char('\n') + m_help;
}

} // namespace wrenfold
