// SPDX-License-Identifier: MIT
#include "look/count_badge.h"

#include "look/accessibility.h"
#include "look/painting.h"
#include "look/plain_text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace wrenfold {

namespace {

/// As much of the number as the badge has room for.
QString shortText(int count)
{
    constexpr int most = 999;
    return count > most ? QString::number(most) + QLatin1Char('+') : QString::number(count);
}

} // namespace

CountBadge::CountBadge(const QString &help, QWidget *parent)
    : QWidget(parent)
    , m_help(help)
{
    installAccessibility();
    setFont(Fonts::smallStrong());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    updateName();
}

void CountBadge::setHelp(const QString &help)
{
    m_help = help;
    updateName();
}

void CountBadge::setCount(int count)
{
    if (count == m_count)
        return;
    m_count = count;
    updateName();
    updateGeometry();
    update();
}

QSize CountBadge::sizeHint() const
{
    const int text = fontMetrics().horizontalAdvance(shortText(m_count));
    return {2 * Metrics::badgePadding + Metrics::symbolSize + Metrics::badgeSpacing + text,
            Metrics::badgeHeight};
}

bool CountBadge::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(m_help), this);
        return true;
    }
    return QWidget::event(event);
}

void CountBadge::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    Painting::roundedCard(painter, rect(), height() / 2.0, {theme.greenSoft, {}, {}});
    const QRect symbol(Metrics::badgePadding, 0, Metrics::symbolSize, height());
    Painting::symbol(painter, symbol, QStringLiteral("checkmark.circle"), theme.green);
    const QRect number = rect().adjusted(symbol.right() + 1 + Metrics::badgeSpacing, 0, 0, 0);
    Painting::text(painter, number, shortText(m_count), font(), theme.green);
}

void CountBadge::updateName()
{
    setAccessibleName(QStringLiteral("%1 %2").arg(m_help, QString::number(m_count)));
}

} // namespace wrenfold
