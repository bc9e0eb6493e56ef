// SPDX-License-Identifier: MIT
#pragma once

#include "model/published.h"
#include "platform/midnight_call.h"
#include "views/panel_row_factory.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace wrenfold {

class FocusStore;
class NowCard;
class PanelHeader;
class QuadrantBoard;
class RowListView;
class StatusLine;
class TaskDrag;
class TodoComposer;

/// The content of the floating panel. Holds no task data: it shows the store's published state and calls its
/// operations.
///
/// When its window is hidden, what is being edited is committed; the draft of a new task stays in its field.
class FocusPanelView : public QWidget
{
    Q_OBJECT

public:
    struct Actions
    {
        std::function<void()> hide;       ///< Puts the panel away.
        std::function<void()> focusInput; ///< Brings the panel to the front with the keyboard focus.
        std::function<void(const QPoint &)> showAppMenu; ///< At a point of the screen.
        std::function<void(const QUrl &)> openLink;      ///< With the user's program for it.
        std::function<void()> openSettings;
        std::function<void()> openAIChat;
    };

    /// The store and the clock must outlive the view.
    FocusPanelView(FocusStore &store, Clock &clock, const Actions &actions, QWidget *parent = nullptr);
    ~FocusPanelView() override;

    /// Whether the corners outside the rounded background are left empty, for a window that can be seen
    /// through.
    void setRoundedByPainting(bool isRounded);

    /// On which side of the list the board lies, right at first.
    void setBoardLeftOfList(bool isLeft);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] NowCard *makeNowCard();
    [[nodiscard]] PanelHeader *makeHeader();
    void addDraft(const QString &draft, bool makeActive);
    void commitEditing();
    void beginAddSubtask(const TaskItem &task);
    void toggleTimer();
    void subscribe();
    void placeChildren();
    void paintSurface(QPainter &painter, const QRect &part, const QColor &color) const;

    /// Any number of changes in one turn of the event loop makes the rows anew once.
    void scheduleRowsUpdate();
    void flushRowsUpdate(); ///< Carries a scheduled update out now.
    void updateRows();
    void updateTimer();
    void updateNowCard();
    void updateStatusLine();
    void updateCompletedToday();
    void updateBoard();

    FocusStore &m_store;
    Actions m_actions;
    PanelRowFactory m_rowFactory;
    PanelHeader *m_header;
    NowCard *m_nowCard;
    TodoComposer *m_composer;
    RowListView *m_list;
    StatusLine *m_statusLine;
    QuadrantBoard *m_board;
    std::unique_ptr<TaskDrag> m_drag;
    bool m_isBoardLeftOfList = false;
    bool m_isRoundedByPainting = false;
    bool m_isRowsUpdateScheduled = false;
    std::optional<QUuid> m_shownComposerParentID;
    MidnightCall m_midnightCall;
    std::vector<Subscription> m_subscriptions;
};

} // namespace wrenfold
