// SPDX-License-Identifier: MIT
#include "look/overlay_scroll_bar.h"

#include "look/theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr int hitWidth = 8;
constexpr int thumbWidth = 4;
constexpr int shortestThumb = 24;

} // namespace

OverlayScrollBar::OverlayScrollBar(QScrollBar *bar, QWidget *area)
    : QWidget(area)
    , m_bar(bar)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
    connect(bar, &QScrollBar::rangeChanged, this, &OverlayScrollBar::follow);
    connect(bar, &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    area->installEventFilter(this);
    follow();
}

void OverlayScrollBar::follow()
{
    const QWidget *area = parentWidget();
    setGeometry(area->width() - hitWidth, 0, hitWidth, area->height());
    setVisible(m_bar->maximum() > m_bar->minimum());
    raise();
    update();
}

bool OverlayScrollBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        follow();
    else if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        update();
    return QWidget::eventFilter(watched, event);
}

QRect OverlayScrollBar::thumb() const
{
    const int range = std::max(1, m_bar->maximum() - m_bar->minimum());
    const int length =
        std::max(shortestThumb, int(qint64(height()) * m_bar->pageStep() / (range + m_bar->pageStep())));
    const int top = int(qint64(height() - length) * (m_bar->value() - m_bar->minimum()) / range);
    return {(width() - thumbWidth) / 2, top, thumbWidth, length};
}

int OverlayScrollBar::valueAt(int y) const
{
    const int way = std::max(1, height() - thumb().height());
    return m_bar->minimum() +
           int(qint64(std::clamp(y, 0, way)) * (m_bar->maximum() - m_bar->minimum()) / way);
}

void OverlayScrollBar::mousePressEvent(QMouseEvent *event)
{
    const int y = qRound(event->position().y());
    const QRect grabbed = thumb();
    const bool isOnThumb = y >= grabbed.top() && y <= grabbed.bottom();
    m_grabOffset = isOnThumb ? y - grabbed.top() : grabbed.height() / 2;
    m_bar->setValue(valueAt(y - m_grabOffset));
}

void OverlayScrollBar::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        m_bar->setValue(valueAt(qRound(event->position().y()) - m_grabOffset));
}

void OverlayScrollBar::paintEvent(QPaintEvent *)
{
    if (!parentWidget()->underMouse())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor color = Theme::current().tertiaryInk;
    color.setAlphaF(underMouse() ? 0.6F : 0.3F);
    painter.setBrush(color);
    painter.drawRoundedRect(thumb(), thumbWidth / 2.0, thumbWidth / 2.0);
}

} // namespace wrenfold
