// SPDX-License-Identifier: MIT
#include "views/panel_header.h"

#include "look/count_badge.h"
#include "look/icon_button.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace wrenfold {

PanelHeader::PanelHeader(const Actions &actions, QWidget *parent)
    : QWidget(parent)
    , m_timer(new TimerHeader(actions.timer, this))
    , m_completedToday(new CountBadge(QStringLiteral("今日完了したタスク数"), this))
    , m_undo(new IconButton(QStringLiteral("arrow.uturn.backward"), QStringLiteral("元に戻す（⌘Z）"), this))
    , m_redo(new IconButton(QStringLiteral("arrow.uturn.forward"), QStringLiteral("やり直す（⌘Y）"), this))
    , m_sort(new IconButton(QStringLiteral("wand.and.stars"),
                            QStringLiteral("AIで優先順に並べ替え（GOALが基準）"), this))
    , m_hide(new IconButton(QStringLiteral("xmark"), QStringLiteral("Wren Fold を隠す"), this))
{
    setFixedHeight(Metrics::gripHeight + Metrics::headerHeight + Metrics::stripMargin + Metrics::stripHeight);
    connect(m_undo, &IconButton::clicked, this, actions.undo);
    connect(m_redo, &IconButton::clicked, this, actions.redo);
    connect(m_sort, &IconButton::clicked, this, actions.sort);
    connect(m_hide, &IconButton::clicked, this, actions.hide);
}

void PanelHeader::setCompletedTodayCount(int count)
{
    m_completedToday->setCount(count);
    placeChildren();
}

void PanelHeader::setCanUndo(bool canUndo)
{
    m_undo->setEnabled(canUndo);
}

void PanelHeader::setCanRedo(bool canRedo)
{
    m_redo->setEnabled(canRedo);
}

void PanelHeader::setCanSort(bool canSort)
{
    m_sort->setEnabled(canSort);
}

void PanelHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_pressPosition = event->position().toPoint();
}

void PanelHeader::mouseMoveEvent(QMouseEvent *event)
{
    // Moves with the button held also come from our own buttons, when the pointer leaves them: no press of ours.
    if (!m_pressPosition)
        return;
    // A move begun before the pointer has really gone somewhere would leave the window manager in move mode
    // after a mere click.
    const QPoint way = event->position().toPoint() - *m_pressPosition;
    if (way.manhattanLength() < QApplication::startDragDistance())
        return;
    // Once a press: the window manager keeps the release to itself, so that later moves still seem to have the
    // button held.
    m_pressPosition.reset();
    window()->windowHandle()->startSystemMove();
}

void PanelHeader::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_pressPosition.reset();
}

void PanelHeader::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void PanelHeader::placeChildren()
{
    m_timer->setGeometry(0, Metrics::gripHeight, width(), Metrics::headerHeight);
    const int top = Metrics::gripHeight + Metrics::headerHeight + Metrics::stripMargin;
    const auto place = [top](QWidget *widget, int left) {
        const QSize size = widget->sizeHint();
        widget->setGeometry(left, top + (Metrics::stripHeight - size.height()) / 2, size.width(),
                            size.height());
        return left + size.width() + Metrics::stripSpacing;
    };
    int left = place(m_completedToday, 0);
    left = place(m_undo, left);
    left = place(m_redo, left);
    place(m_sort, left);
    place(m_hide, width() - Metrics::iconButtonSize);
}

void PanelHeader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::current().line);
    const QRectF bar((width() - Metrics::gripBarWidth) / 2.0,
                     (Metrics::gripHeight - Metrics::gripBarHeight) / 2.0, Metrics::gripBarWidth,
                     Metrics::gripBarHeight);
    painter.drawRoundedRect(bar, Metrics::gripBarHeight / 2.0, Metrics::gripBarHeight / 2.0);
}

} // namespace wrenfold
