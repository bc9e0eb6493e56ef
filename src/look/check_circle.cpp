// SPDX-License-Identifier: MIT
#include "look/check_circle.h"

#include "look/accessibility.h"
#include "look/painting.h"

#include <QPainter>

namespace wrenfold {

CheckCircle::CheckCircle(const QString &help, QWidget *parent)
    : PaintedButton(parent)
    , m_circleSize(Metrics::checkSize)
{
    installAccessibility();
    setCheckable(true);
    setHelp(help);
}

void CheckCircle::setNow(bool isNow)
{
    if (isNow == m_isNow)
        return;
    m_isNow = isNow;
    update();
}

void CheckCircle::setCircleSize(int size)
{
    m_circleSize = size;
    update();
}

QSize CheckCircle::sizeHint() const
{
    return {Metrics::checkHitSize, Metrics::checkHitSize};
}

void CheckCircle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isHovered())
        Painting::roundedCard(painter, rect(), width() / 2.0, {Theme::current().hover, {}, {}});
    if (showsFocus())
        Painting::focusRing(painter, rect(), width() / 2.0);
    if (!isEnabled())
        painter.setOpacity(Metrics::disabledOpacity);
    const Painting::Check state = isChecked() ? Painting::Check::Done
                                  : m_isNow   ? Painting::Check::Now
                                              : Painting::Check::Open;
    Painting::check(painter, rect(), state, m_circleSize);
}

} // namespace wrenfold
