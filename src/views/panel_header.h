// SPDX-License-Identifier: MIT
#pragma once

#include "views/timer_header.h"

#include <optional>

namespace wrenfold {

class CountBadge;
class IconButton;

/// The top of the panel: the grip by which it is moved, the timer, and the strip of icons.
class PanelHeader : public QWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        TimerHeader::Actions timer;
        std::function<void()> undo;
        std::function<void()> redo;
        std::function<void()> sort; ///< By AI.
        std::function<void()> hide;
    };

    explicit PanelHeader(const Actions &actions, QWidget *parent = nullptr);

    void setTimer(const TimerHeaderContent &content) { m_timer->setContent(content); }
    void setCompletedTodayCount(int count);
    void setCanUndo(bool canUndo);
    void setCanRedo(bool canRedo);
    void setCanSort(bool canSort);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void placeChildren();

    TimerHeader *m_timer;
    CountBadge *m_completedToday;
    IconButton *m_undo;
    IconButton *m_redo;
    IconButton *m_sort;
    IconButton *m_hide;
    std::optional<QPoint> m_pressPosition; ///< Of a press that may become a move of the window.
};

} // namespace wrenfold
