// SPDX-License-Identifier: MIT
#pragma once

#include "views/timer_header_content.h"

#include <QWidget>

#include <functional>

namespace wrenfold {

class IconButton;
class TextLabel;
class TimerRing;

/// The row of the timer in the panel's header: the ring with the play button, the time, and what can be done
/// with it. Each second changes the time and the ring and repaints nothing else.
class TimerHeader : public QWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void()> toggle; ///< Starts or stops.
        std::function<void()> reset;
        std::function<void()> skipBreak;
    };

    explicit TimerHeader(const Actions &actions, QWidget *parent = nullptr);

    void setContent(const TimerHeaderContent &content);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeChildren();

    TimerRing *m_ring;
    TextLabel *m_time;
    TextLabel *m_subtitle;
    IconButton *m_skip;
    IconButton *m_reset;
};

} // namespace wrenfold
