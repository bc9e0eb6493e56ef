// SPDX-License-Identifier: MIT
#pragma once

#include "platform/window_pull.h"
#include "views/timer_header.h"

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
        std::function<void()> toggleBoard;
        std::function<void()> toggleList;
        std::function<void()> toggleHardPin;
        std::function<void()> undo;
        std::function<void()> redo;
        std::function<void()> sort; ///< By AI.
        std::function<void()> openAIChat;
        std::function<void()> openSettings;
        std::function<void()> hide;
    };

    explicit PanelHeader(const Actions &actions, QWidget *parent = nullptr);

    void setTimer(const TimerHeaderContent &content) { m_timer->setContent(content); }
    void setBoard(bool isVisible, int deferredCount);
    void setListHidden(bool isHidden);
    void setHardPinned(bool isPinned);
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
    IconButton *addButton(const QString &symbol, const QString &help, const std::function<void()> &action);
    void placeChildren();

    TimerHeader *m_timer;
    // In the order of the strip, which is that of the Tab key.
    IconButton *m_board;
    CountBadge *m_completedToday;
    IconButton *m_list;
    IconButton *m_hardPin;
    IconButton *m_undo;
    IconButton *m_redo;
    IconButton *m_sort;
    IconButton *m_chat;
    IconButton *m_settings;
    IconButton *m_hide;
    WindowPull m_pull;
};

} // namespace wrenfold
