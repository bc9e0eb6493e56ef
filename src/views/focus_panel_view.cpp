// SPDX-License-Identifier: MIT
#include "views/focus_panel_view.h"

#include "look/painting.h"
#include "model/focus_store.h"
#include "model/task_list.h"
#include "views/editable_label.h"
#include "views/now_card.h"
#include "views/panel_header.h"
#include "views/quadrant_board.h"
#include "views/row_list_view.h"
#include "views/status_line.h"
#include "views/subtask_composer_row.h"
#include "views/task_drag.h"
#include "views/todo_composer.h"

#include <QContextMenuEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace wrenfold {

namespace {

std::function<void()> toggle(Setting<bool> &setting)
{
    return [&setting] { setting.set(!setting.value()); };
}

} // namespace

FocusPanelView::FocusPanelView(FocusStore &store, Clock &clock, const Actions &actions, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_actions(actions)
    , m_rowFactory(store, {.updateRows = [this] { flushRowsUpdate(); },
                           .beginAddSubtask = [this](const TaskItem &task) { beginAddSubtask(task); },
                           .focusTask =
                               [this](const TaskItem &task) {
                                   m_list->focusRow({PanelRow::Kind::Task, task.id}, Qt::TabFocusReason);
                               },
                           .openLink = m_actions.openLink})
    , m_midnightCall(clock, [this] { updateCompletedToday(); })
{
    // Made in the order of the Tab key: typing is wanted most.
    m_composer = new TodoComposer(this);
    m_list = new RowListView(
        [this](PanelRow::Kind kind, QWidget *owner) { return m_rowFactory.make(kind, owner); }, this);
    m_list->setScrollBarMargin(Metrics::listMargin);
    m_statusLine = new StatusLine([this] { m_store.undo(); }, this);
    m_nowCard = makeNowCard();
    m_board = new QuadrantBoard(
        {.task = m_rowFactory.deferredTaskActions(), .close = toggle(m_store.isQuadrantBoardVisible)}, this);
    m_header = makeHeader();
    m_drag = std::make_unique<TaskDrag>(m_store, clock, *m_list, *m_board, *this);
    connect(m_drag.get(), &TaskDrag::changed, this, [this] {
        scheduleRowsUpdate();
        flushRowsUpdate();
    });

    connect(m_composer, &TodoComposer::submitted, this, &FocusPanelView::addDraft);
    // What is typed there must not become a subtask.
    connect(m_composer, &TodoComposer::focused, this, [this] { m_store.endAddSubtask(); });
    connect(m_nowCard, &NowCard::heightChanged, this, &FocusPanelView::placeChildren);
    subscribe();
    updateRows();
}

NowCard *FocusPanelView::makeNowCard()
{
    return new NowCard({.toggleDone = [this](const TaskItem &task) { m_store.toggleDone(task); },
                        .addSubtask = [this](const TaskItem &task) { beginAddSubtask(task); },
                        .deleteTask = [this](const TaskItem &task) { m_store.deleteTask(task); },
                        .setGoal = [this](const QString &goal) { m_store.mediumGoal.set(goal.trimmed()); },
                        .requestTodoInput = [this] { m_store.requestTodoInput(); }},
                       this);
}

PanelHeader *FocusPanelView::makeHeader()
{
    return new PanelHeader({.timer = {.toggle = [this] { toggleTimer(); },
                                      .reset = [this] { m_store.resetPomodoro(); },
                                      .skipBreak = [this] { m_store.skipBreakToWork(); }},
                            .toggleBoard = toggle(m_store.isQuadrantBoardVisible),
                            .toggleList = toggle(m_store.isTodoListHidden),
                            .toggleHardPin = toggle(m_store.isHardPinned),
                            .undo = [this] { m_store.undo(); },
                            .redo = [this] { m_store.redo(); },
                            .sort = [this] { m_store.prioritizeTasksWithLLM(); },
                            .openAIChat = m_actions.openAIChat,
                            .openSettings = m_actions.openSettings,
                            .hide = m_actions.hide},
                           this);
}

FocusPanelView::~FocusPanelView()
{
    m_drag->cancel();
    // A row that goes may still speak to what made it.
    delete m_list;
    delete m_board;
}

void FocusPanelView::subscribe()
{
    const auto rows = [this](const auto &) { scheduleRowsUpdate(); };
    const auto nowCard = [this](const auto &) { updateNowCard(); };
    const auto statusLine = [this](const auto &) { updateStatusLine(); };
    const auto count = [this](const auto &) { updateCompletedToday(); };
    const auto timer = [this](const auto &) { updateTimer(); };
    const auto board = [this](const auto &) { updateBoard(); };
    const auto keep = [this](Subscription subscription) {
        m_subscriptions.push_back(std::move(subscription));
    };

    keep(m_store.tasks.onChange(rows));
    keep(m_store.activeTaskID.onChange(rows));
    keep(m_store.subtaskComposerParentID.onChange(rows));
    keep(m_store.inboxItems.onChange(rows));
    keep(m_store.isReorderKeyPressed.onChange(rows));
    keep(m_store.isDeferredSectionExpanded.onChange(rows));
    keep(m_store.isCompletedSectionExpanded.onChange(rows));
    keep(m_store.tasks.onChange(nowCard));
    keep(m_store.activeTaskID.watch(nowCard));
    keep(m_store.mediumGoal.watch([this](const QString &goal) { m_nowCard->setGoal(goal); }));
    keep(m_store.sortStatus.watch(statusLine));
    keep(m_store.pendingUndo.onChange(statusLine));
    keep(m_store.canUndo.watch([this](bool canUndo) { m_header->setCanUndo(canUndo); }));
    keep(m_store.canRedo.watch([this](bool canRedo) { m_header->setCanRedo(canRedo); }));
    keep(m_store.isSortingTasks.onChange(rows));
    keep(m_store.isSortingTasks.watch([this](bool isSorting) { m_header->setCanSort(!isSorting); }));
    keep(m_store.tasks.watch(count));
    keep(m_store.tasks.onChange(board));
    keep(m_store.isQuadrantDropActive.onChange(board));
    keep(m_store.isQuadrantBoardVisible.watch(board));
    keep(m_store.isQuadrantBoardVisible.onChange(rows));
    keep(m_store.isTodoListHidden.watch([this](bool isHidden) {
        m_header->setListHidden(isHidden);
        placeChildren();
        if (isHidden)
            m_store.endAddSubtask(); // What is typed elsewhere must not go where nobody sees it.
    }));
    keep(m_store.isHardPinned.watch([this](bool isPinned) { m_header->setHardPinned(isPinned); }));
    keep(m_store.remainingSeconds.watch(timer));
    keep(m_store.isTimerRunning.onChange(timer));
    keep(m_store.timerPhase.onChange(timer));
    keep(m_store.workDurationMinutes.onChange(timer));
    keep(m_store.breakDurationMinutes.onChange(timer));
    keep(m_store.composerFocusToken.onChange([this](int) {
        m_actions.focusInput();
        m_composer->focusInput();
    }));
}

void FocusPanelView::setRoundedByPainting(bool isRounded)
{
    m_isRoundedByPainting = isRounded;
    update();
}

void FocusPanelView::addDraft(const QString &draft, bool makeActive)
{
    const qsizetype countBefore = m_store.tasks.value().size();
    m_store.addTask(draft, makeActive);
    flushRowsUpdate();
    // A task at the end of the list is to be seen to have come.
    if (const TaskList &tasks = m_store.tasks.value();
        tasks.size() > countBefore && tasks.last().isTopLevel())
        m_list->reveal({PanelRow::Kind::Task, tasks.last().id});
}

void FocusPanelView::beginAddSubtask(const TaskItem &task)
{
    m_store.isTodoListHidden.set(false); // The field for it stands in the list.
    m_store.beginAddSubtask(task);
    const std::optional<QUuid> parentID = m_store.subtaskComposerParentID.value();
    const TaskItem *parent = parentID ? findTask(m_store.tasks.value(), *parentID) : nullptr;
    if (parent && parent->isDone)
        m_store.isCompletedSectionExpanded.set(true);
    flushRowsUpdate();
    // The caret goes into one that is open already too, of which nothing is announced.
    if (m_shownComposerParentID && m_shownComposerParentID == m_store.subtaskComposerParentID.value())
        m_list->focusRow({PanelRow::Kind::SubtaskComposer, *m_shownComposerParentID}, Qt::TabFocusReason);
}

void FocusPanelView::toggleTimer()
{
    if (m_store.isTimerRunning.value())
        m_store.pauseTimer();
    else
        m_store.startPomodoro();
}

void FocusPanelView::scheduleRowsUpdate()
{
    if (m_isRowsUpdateScheduled)
        return;
    m_isRowsUpdateScheduled = true;
    QMetaObject::invokeMethod(this, &FocusPanelView::flushRowsUpdate, Qt::QueuedConnection);
}

void FocusPanelView::flushRowsUpdate()
{
    if (std::exchange(m_isRowsUpdateScheduled, false))
        updateRows();
}

void FocusPanelView::updateRows()
{
    const std::optional<QUuid> composerParentID = m_store.subtaskComposerParentID.value();
    m_list->setRows(panelRows(
        {m_store.tasks.value(), m_store.inboxItems.value(), m_store.activeTaskID.value(), composerParentID,
         m_store.isDeferredSectionExpanded.value(), m_store.isCompletedSectionExpanded.value(),
         m_store.isQuadrantBoardVisible.value(), m_store.isSortingTasks.value(),
         m_store.isReorderKeyPressed.value(), m_drag->draggingTaskID()}));
    m_drag->followRows();
    if (composerParentID == m_shownComposerParentID && !composerParentID)
        return;

    const PanelRow::Identity composer = {PanelRow::Kind::SubtaskComposer, composerParentID.value_or(QUuid())};
    const bool isShown = composerParentID && m_list->contains(composer);
    if (isShown && composerParentID != m_shownComposerParentID)
        m_list->focusRow(composer, Qt::TabFocusReason);
    m_shownComposerParentID = isShown ? composerParentID : std::nullopt;
    // Its task is no longer among the open ones: what is typed elsewhere must not go there.
    if (composerParentID && !isShown)
        m_store.endAddSubtask();
}

void FocusPanelView::updateTimer()
{
    m_header->setTimer(timerHeaderContent(m_store.timerState()));
}

void FocusPanelView::updateNowCard()
{
    m_nowCard->setTask(m_store.activeTask());
}

void FocusPanelView::updateStatusLine()
{
    m_statusLine->setStatus(m_store.sortStatus.value(), m_store.pendingUndo.value().has_value());
}

void FocusPanelView::updateCompletedToday()
{
    m_header->setCompletedTodayCount(m_store.completedTodayCount());
}

void FocusPanelView::updateBoard()
{
    const bool isVisible = m_store.isQuadrantBoardVisible.value();
    const bool isPresented = isVisible || m_store.isQuadrantDropActive.value();
    m_header->setBoard(isVisible, int(m_store.deferredTasks().size()));
    if (isPresented)
        m_board->setRows(quadrantBoardRows(m_store.tasks.value()));
    m_board->setVisible(isPresented);
    placeChildren();
}

void FocusPanelView::setBoardLeftOfList(bool isLeft)
{
    m_isBoardLeftOfList = isLeft;
    placeChildren();
}

void FocusPanelView::contextMenuEvent(QContextMenuEvent *event)
{
    m_actions.showAppMenu(event->globalPos());
}

void FocusPanelView::mousePressEvent(QMouseEvent *)
{
    setFocus(Qt::MouseFocusReason); // A click beside a field ends its editing; one on a button does not.
}

void FocusPanelView::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return; // Iconified: the field is there again when the window is.
    commitEditing();
    setFocus(); // When it is shown again, the Tab key starts anew.
}

void FocusPanelView::commitEditing()
{
    // Not left to the focus: a field of a window that is not active keeps what is typed when it loses it.
    const QList<EditableLabel *> labels = findChildren<EditableLabel *>();
    for (EditableLabel *label : labels)
        label->commitEditing();
    const QList<SubtaskComposerRow *> composers = findChildren<SubtaskComposerRow *>();
    for (SubtaskComposerRow *composer : composers)
        composer->commitDraft();
}

void FocusPanelView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void FocusPanelView::placeChildren()
{
    const bool hasBoard = !m_board->isHidden();
    const int paneWidth = hasBoard ? std::max(Metrics::panelWidth, width() - Metrics::boardWidth) : width();
    const int boardWidth = width() - paneWidth;
    const int paneLeft = m_isBoardLeftOfList ? boardWidth : 0;
    m_board->setGeometry(m_isBoardLeftOfList ? 0 : paneWidth, 0, boardWidth, height());
    const int left = paneLeft + Metrics::panelPadding;
    const int contentWidth = paneWidth - 2 * Metrics::panelPadding;
    int top = 0;
    m_header->setGeometry(left, top, contentWidth, m_header->height());
    top += m_header->height() + Metrics::sectionSpacing;
    m_nowCard->setGeometry(left, top, contentWidth, m_nowCard->heightForWidth(contentWidth));
    top += m_nowCard->height() + Metrics::sectionSpacing;
    m_composer->setGeometry(left, top, contentWidth, m_composer->height());
    top += m_composer->height() + Metrics::sectionSpacing;
    const int bottom = height() - Metrics::statusHeight;
    // Where not one row has room, the Tab key must not lead to rows that nobody sees.
    m_list->setVisible(!m_store.isTodoListHidden.value() && bottom - top >= Metrics::rowHeight);
    m_statusLine->setGeometry(left, bottom, contentWidth, Metrics::statusHeight);
    m_drag->setMainPaneFrame(QRect(paneLeft, 0, paneWidth, height()));
    m_list->setGeometry(left, top, contentWidth + Metrics::listMargin, bottom - top);
}

void FocusPanelView::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    paintSurface(painter, rect(), theme.background);
    if (m_board->isHidden())
        return;
    const QRect board = m_board->geometry();
    paintSurface(painter, board, theme.board);
    painter.fillRect(QRect(m_isBoardLeftOfList ? board.right() : board.left(), 0, 1, height()), theme.line);
}

/// A part of the background that reaches from top to bottom, with the panel's corners where it meets them.
void FocusPanelView::paintSurface(QPainter &painter, const QRect &part, const QColor &color) const
{
    painter.save();
    painter.setClipRect(part);
    if (m_isRoundedByPainting)
        Painting::roundedCard(painter, rect(), Metrics::panelRadius, {color, {}, {}});
    else
        painter.fillRect(part, color);
    painter.restore();
}

} // namespace wrenfold
