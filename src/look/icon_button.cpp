// SPDX-License-Identifier: MIT
#include "look/icon_button.h"

#include "look/painting.h"

#include <QPainter>

namespace wrenfold {

IconButton::IconButton(const QString &symbol, const QString &help, QWidget *parent)
    : PaintedButton(parent)
    , m_symbol(symbol)
{
    setHelp(help);
}

void IconButton::setSymbol(const QString &symbol)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    update();
}

void IconButton::setTint(Theme::Color tint)
{
    if (tint == m_tint)
        return;
    m_tint = tint;
    update();
}

void IconButton::setOn(bool isOn)
{
    if (isOn == m_isOn)
        return;
    m_isOn = isOn;
    update();
}

QSize IconButton::sizeHint() const
{
    return {Metrics::iconButtonSize, Metrics::iconButtonSize};
}

void IconButton::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    if (m_isOn)
        Painting::roundedCard(painter, rect(), Metrics::iconButtonRadius, {theme.accentSoft, {}, {}});
    if (isHovered() || isDown())
        Painting::roundedCard(painter, rect(), Metrics::iconButtonRadius, {theme.hover, {}, {}});
    if (showsFocus())
        Painting::focusRing(painter, rect(), Metrics::iconButtonRadius);
    if (!isEnabled())
        painter.setOpacity(Metrics::disabledOpacity);
    const Theme::Color tint = !isEnabled() ? &Theme::tertiaryInk : m_isOn ? &Theme::accent : m_tint;
    Painting::symbol(painter, rect(), m_symbol, theme.*tint);
}

} // namespace wrenfold
