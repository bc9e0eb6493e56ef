// SPDX-License-Identifier: MIT
#pragma once

#include "model/inbox_item.h"
#include "model/task_item.h"

#include <array>

namespace wrenfold {

/// One row of the panel's list: what it shows, nothing of how.
struct PanelRow
{
    enum class Kind {
        InboxHeader,
        InboxCandidate,
        TodoHeader,
        EmptyState,
        Task,
        SubtaskComposer,
        DeferredHeader,
        DeferredTask,
        CompletedHeader,
        CompletedTask,
        BoardTask, ///< A deferred task in a cell of the quadrant board.
    };

    Kind kind = Kind::Task;
    TaskItem task;          ///< Of the four task kinds; the parent of a SubtaskComposer.
    InboxItem inboxItem;    ///< Of an InboxCandidate.
    bool isActive = false;  ///< Task: it is NOW.
    bool isSubtask = false; ///< Task: shown under its parent.
    int subtaskNumber = 0;  ///< Task that is a subtask: counted from 1 among the parent's.
    int subtaskTotal = 0;   ///< Task that is a subtask: how many the parent has.
    int childCount = 0; ///< Task: how many subtasks it has. DeferredTask, BoardTask: how many wait with it.
    bool canSplit = false;        ///< Task: no other AI work is under way.
    bool isReorderHinted = false; ///< Task that can be dragged: now by any place of its row.
    bool isDragging = false;      ///< Task: it or its parent is being dragged.
    bool isExpanded = false;      ///< Task: subtasks are shown. A header: its section is.
    bool isBoardVisible = false;  ///< DeferredHeader: the board shows its tasks.
    int count = 0;                ///< A header: how many its section holds.
    QString title;                ///< EmptyState.
    QString hint;                 ///< EmptyState.

    /// Two rows of equal identity are the same row in two states.
    struct Identity
    {
        Kind kind;
        QUuid taskID = {};    ///< Null where there is one row of the kind.
        QString inboxID = {}; ///< Of an InboxCandidate.

        friend bool operator==(const Identity &, const Identity &) = default;
    };
    [[nodiscard]] Identity identity() const;

    [[nodiscard]] int height() const;      ///< In device-independent pixels.
    [[nodiscard]] bool takesFocus() const; ///< Whether the arrow keys stop here.
    [[nodiscard]] bool canExpand() const;  ///< Whether there is something to fold and unfold.

    friend bool operator==(const PanelRow &, const PanelRow &) = default;
};

[[nodiscard]] size_t qHash(const PanelRow::Identity &identity, size_t seed = 0);

/// The part of the state that decides what the list shows.
struct PanelRowsInput
{
    TaskList tasks;
    QList<InboxItem> inboxItems = {};
    std::optional<QUuid> activeTaskID = {};
    std::optional<QUuid> subtaskComposerParentID = {};
    bool isDeferredSectionExpanded = true;
    bool isCompletedSectionExpanded = false;
    bool isQuadrantBoardVisible = false;
    bool isSortingTasks = false; ///< AI work is under way.
    bool isReorderKeyPressed = false;
    std::optional<QUuid> draggingTaskID = {};
};

/// The rows from top to bottom: candidates, open tasks with their subtasks, deferred tasks, completed tasks. A deferred
/// task that no deferred parent speaks for has a row of its own among the deferred, so that each can be
/// restored.
[[nodiscard]] QList<PanelRow> panelRows(const PanelRowsInput &input);

/// The same deferred tasks for the cells of the board, by quadrant.
using QuadrantBoardRows = std::array<QList<PanelRow>, allQuadrants.size()>;
[[nodiscard]] QuadrantBoardRows quadrantBoardRows(const TaskList &tasks);

} // namespace wrenfold
