// SPDX-License-Identifier: MIT
#include "views/timer_header.h"

#include "look/icon_button.h"
#include "look/text_label.h"
#include "views/timer_ring.h"

namespace wrenfold {

TimerHeader::TimerHeader(const Actions &actions, QWidget *parent)
    : QWidget(parent)
    , m_ring(new TimerRing(this))
    , m_time(new TextLabel({}, this))
    , m_subtitle(new TextLabel({}, this))
    , m_skip(
          new IconButton(QStringLiteral("forward.end.fill"), QStringLiteral("休憩をスキップ → 作業へ"), this))
    , m_reset(new IconButton(QStringLiteral("arrow.counterclockwise"), QStringLiteral("ポモドーロをリセット"),
                             this))
{
    setFixedHeight(Metrics::headerHeight);
    m_time->setFont(Fonts::time());
    m_subtitle->setFont(Fonts::small());
    m_subtitle->setColor(&Theme::secondaryInk);
    connect(m_ring, &TimerRing::clicked, this, actions.toggle);
    connect(m_skip, &IconButton::clicked, this, actions.skipBreak);
    connect(m_reset, &IconButton::clicked, this, actions.reset);
    setContent(timerHeaderContent({}));
}

void TimerHeader::setContent(const TimerHeaderContent &content)
{
    m_ring->setSymbol(content.playSymbol);
    m_ring->setHelp(content.playHelp);
    m_ring->setColor(content.ringColor);
    m_ring->setFraction(content.remainingFraction);
    m_time->setText(content.time);
    m_time->setColor(content.timeColor);
    m_subtitle->setText(content.subtitle);
    if (content.isSkipVisible == m_skip->isVisibleTo(this))
        return;
    // Not to the button beside it: the same key pressed once more would reset the timer.
    if (m_skip->hasFocus())
        m_ring->setFocus(Qt::TabFocusReason);
    m_skip->setVisible(content.isSkipVisible);
    placeChildren();
}

void TimerHeader::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void TimerHeader::placeChildren()
{
    const auto middle = [this](int itemHeight) { return (height() - itemHeight) / 2; };
    m_ring->setGeometry(0, middle(Metrics::ringSize), Metrics::ringSize, Metrics::ringSize);

    int right = width();
    const auto placeAtRight = [&](IconButton *button) {
        right -= Metrics::iconButtonSize;
        button->setGeometry(right, middle(Metrics::iconButtonSize), Metrics::iconButtonSize,
                            Metrics::iconButtonSize);
        right -= Metrics::stripSpacing;
    };
    placeAtRight(m_reset);
    if (m_skip->isVisibleTo(this))
        placeAtRight(m_skip);

    const int left = Metrics::ringSize + Metrics::headerSpacing;
    const int textWidth = right - left;
    const int top = middle(Metrics::timeHeight + Metrics::timeSpacing + Metrics::subtitleHeight);
    m_time->setGeometry(left, top, textWidth, Metrics::timeHeight);
    m_subtitle->setGeometry(left, top + Metrics::timeHeight + Metrics::timeSpacing, textWidth,
                            Metrics::subtitleHeight);
}

} // namespace wrenfold
