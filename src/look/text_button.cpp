// SPDX-License-Identifier: MIT
#include "look/text_button.h"

#include "look/painting.h"
#include "look/plain_text.h"

#include <QPainter>

namespace wrenfold {

TextButton::TextButton(const QString &label, Kind kind, QWidget *parent)
    : PaintedButton(parent)
    , m_kind(kind)
{
    setFont(kind == Kind::Link ? Fonts::smallStrong() : Fonts::control());
    setLabel(label);
}

void TextButton::setLabel(const QString &label)
{
    if (label == m_label)
        return;
    m_label = label;
    setAccessibleName(label);
    updateGeometry();
    update();
}

void TextButton::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    updateGeometry();
    update();
}

int TextButton::symbolWidth() const
{
    return m_symbol.isEmpty() ? 0 : Metrics::buttonSymbolSize + Metrics::buttonSymbolSpacing;
}

void TextButton::helpChanged()
{
    setAccessibleDescription(help());
}

QSize TextButton::sizeHint() const
{
    const bool isLink = m_kind == Kind::Link;
    const int padding = isLink ? Metrics::textButtonPadding : Metrics::buttonPadding;
    const int width =
        fontMetrics().horizontalAdvance(isolated(oneLine(m_label))) + symbolWidth() + 2 * padding;
    return {qMax(width, Metrics::checkHitSize), isLink ? Metrics::textButtonHeight : Metrics::buttonHeight};
}

void TextButton::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    const bool isLink = m_kind == Kind::Link;
    const int radius = isLink ? Metrics::textButtonRadius : Metrics::buttonRadius;
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(Metrics::disabledOpacity);
    if (m_kind == Kind::Primary)
        Painting::roundedCard(painter, rect(), radius, {theme.accent, {}, {}});
    if (isLink && (isHovered() || isDown()))
        Painting::roundedCard(painter, rect(), radius, {theme.hover, {}, {}});
    if (m_kind == Kind::Plain)
        Painting::roundedCard(painter, rect(), radius, {theme.hover, theme.fieldLine, {}});
    if (m_kind == Kind::Plain && isHovered())
        Painting::roundedCard(painter, rect(), radius, {QColor(Qt::transparent), theme.line, {}});
    QFont font = this->font();
    font.setUnderline(m_kind == Kind::Primary && isHovered());
    const QColor &ink = isLink ? theme.accent : m_kind == Kind::Primary ? theme.onAccent : theme.ink;
    QRect text = rect();
    if (!m_symbol.isEmpty()) {
        const int textWidth = fontMetrics().horizontalAdvance(isolated(oneLine(m_label)));
        const int left = (width() - symbolWidth() - textWidth) / 2;
        Painting::symbol(painter, QRect(left, 0, Metrics::buttonSymbolSize, height()), m_symbol, ink,
                         Metrics::buttonSymbolSize);
        text.setLeft(symbolWidth());
    }
    Painting::text(painter, text, m_label, font, ink, Qt::AlignHCenter);
    if (showsFocus() && m_kind == Kind::Primary)
        Painting::focusRingOnAccent(painter, rect(), radius);
    else if (showsFocus())
        Painting::focusRing(painter, rect(), radius);
}

} // namespace wrenfold
