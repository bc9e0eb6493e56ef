// SPDX-License-Identifier: MIT
#include "views/panel_rows.h"

#include "look/theme.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace wrenfold {

namespace {

/// Collects the rows in one walk over the list, so that ten thousand tasks stay a matter of a few
/// milliseconds.
class PanelRowsBuilder
{
public:
    explicit PanelRowsBuilder(const PanelRowsInput &input)
        : m_input(input)
    {
        for (const TaskItem &task : input.tasks) {
            if (task.parentID)
                m_children[*task.parentID].append(&task);
            else if (task.isDeferred && !task.isDone)
                m_deferredParents.insert(task.id);
            if (task.isTopLevel() && task.isOpen())
                m_openParents.insert(task.id);
            if (task.isTopLevel() && task.isDone)
                m_doneParents.insert(task.id);
        }
    }

    QList<PanelRow> build()
    {
        m_rows.reserve(m_input.tasks.size() + m_input.inboxItems.size() + 5);
        addInboxSection();
        addOpenSection();
        addDeferredSection();
        addCompletedSection();
        return std::move(m_rows);
    }

    QuadrantBoardRows buildBoard()
    {
        QuadrantBoardRows rows;
        for (const TaskItem *task : deferredTasks()) {
            PanelRow &row = rows[std::size_t(task->quadrant)].emplaceBack();
            row.kind = PanelRow::Kind::BoardTask;
            row.task = *task;
            row.childCount = waitingChildCount(*task);
        }
        return rows;
    }

private:
    void addInboxSection()
    {
        if (m_input.inboxItems.isEmpty())
            return;
        addRow(PanelRow::Kind::InboxHeader).count = int(m_input.inboxItems.size());
        for (const InboxItem &item : m_input.inboxItems)
            addRow(PanelRow::Kind::InboxCandidate).inboxItem = item;
    }

    void addOpenSection()
    {
        const qsizetype header = m_rows.size();
        addRow(PanelRow::Kind::TodoHeader);
        int count = 0;
        for (const TaskItem &task : m_input.tasks) {
            // Under a done parent it is shown among the completed.
            if (!task.isOpen() || (task.parentID && m_doneParents.contains(*task.parentID)))
                continue;
            ++count;
            // Also a subtask that has no open parent to be shown under: what is open is in sight.
            if (!task.parentID || !m_openParents.contains(*task.parentID))
                addOpenTask(task);
        }
        m_rows[header].count = count;
        if (count == 0)
            addEmptyState();
    }

    void addOpenTask(const TaskItem &task)
    {
        const QList<const TaskItem *> children = m_children.value(task.id);
        const bool isExpanded = task.isExpanded && !children.isEmpty();
        PanelRow &parent = addTaskRow(PanelRow::Kind::Task, task);
        parent.childCount = int(children.size());
        parent.isExpanded = isExpanded;
        parent.isReorderHinted = m_input.isReorderKeyPressed && task.isTopLevel();
        if (isExpanded)
            addSubtaskRows(task, [](const TaskItem &child) { return !child.isDeferred; });
        if (m_input.subtaskComposerParentID == task.id)
            addTaskRow(PanelRow::Kind::SubtaskComposer, task);
    }

    template<typename Condition>
    void addSubtaskRows(const TaskItem &parent, Condition isShown)
    {
        const QList<const TaskItem *> children = m_children.value(parent.id);
        for (qsizetype i = 0; i < children.size(); ++i) {
            if (!isShown(*children[i]))
                continue;
            PanelRow &child = addTaskRow(PanelRow::Kind::Task, *children[i]);
            child.isSubtask = true;
            child.subtaskNumber = int(i) + 1;
            child.subtaskTotal = int(children.size());
        }
    }

    void addEmptyState()
    {
        PanelRow &empty = addRow(PanelRow::Kind::EmptyState);
        const bool isAnyDeferred = !deferredTasks().isEmpty();
        empty.title = m_input.tasks.isEmpty() ? QStringLiteral("TODOはまだありません")
                                              : QStringLiteral("今やるTODOはありません");
        empty.hint = isAnyDeferred ? QStringLiteral("下の「あとでやる」からTODOへ戻せます")
                                   : QStringLiteral("上の入力欄からTODOを追加できます");
    }

    void addDeferredSection()
    {
        const QList<const TaskItem *> deferred = deferredTasks();
        addSection(PanelRow::Kind::DeferredHeader, PanelRow::Kind::DeferredTask, deferred,
                   m_input.isDeferredSectionExpanded);
    }

    void addCompletedSection()
    {
        QList<const TaskItem *> completed;
        for (const TaskItem &task : m_input.tasks) {
            if (task.isDone)
                completed.append(&task);
        }
        addSection(PanelRow::Kind::CompletedHeader, PanelRow::Kind::CompletedTask, completed,
                   m_input.isCompletedSectionExpanded);
    }

    void addSection(PanelRow::Kind headerKind, PanelRow::Kind rowKind, const QList<const TaskItem *> &tasks,
                    bool isExpanded)
    {
        if (tasks.isEmpty())
            return;
        PanelRow &header = addRow(headerKind);
        header.count = int(tasks.size());
        header.isExpanded = isExpanded;
        header.isBoardVisible =
            headerKind == PanelRow::Kind::DeferredHeader && m_input.isQuadrantBoardVisible;
        if (!isExpanded)
            return;
        for (const TaskItem *task : tasks) {
            addTaskRow(rowKind, *task).childCount = waitingChildCount(*task);
            if (rowKind == PanelRow::Kind::CompletedTask)
                addSubtaskRows(*task, [](const TaskItem &child) { return child.isOpen(); });
            if (rowKind == PanelRow::Kind::CompletedTask && m_input.subtaskComposerParentID == task->id)
                addTaskRow(PanelRow::Kind::SubtaskComposer, *task);
        }
    }

    /// How many subtasks wait with a deferred task.
    int waitingChildCount(const TaskItem &task) const
    {
        const QList<const TaskItem *> children = m_children.value(task.id);
        return int(std::count_if(children.begin(), children.end(),
                                 [](const TaskItem *child) { return child->isDeferred && !child->isDone; }));
    }

    /// The deferred tasks that are not shown with a deferred parent.
    QList<const TaskItem *> deferredTasks() const
    {
        QList<const TaskItem *> result;
        for (const TaskItem &task : m_input.tasks) {
            if (task.isDeferred && !task.isDone &&
                !(task.parentID && m_deferredParents.contains(*task.parentID)))
                result.append(&task);
        }
        return result;
    }

    /// Made in their place, as each copy of a row counts at ten thousand. Good until the next row is added.
    PanelRow &addRow(PanelRow::Kind kind)
    {
        PanelRow &row = m_rows.emplaceBack();
        row.kind = kind;
        return row;
    }

    PanelRow &addTaskRow(PanelRow::Kind kind, const TaskItem &task)
    {
        PanelRow &row = addRow(kind);
        row.task = task;
        row.isActive = kind == PanelRow::Kind::Task && m_input.activeTaskID == task.id;
        row.canSplit = kind == PanelRow::Kind::Task && !m_input.isSortingTasks;
        row.isDragging = m_input.draggingTaskID &&
                         (m_input.draggingTaskID == task.id || m_input.draggingTaskID == task.parentID);
        return row;
    }

    const PanelRowsInput &m_input;
    QHash<QUuid, QList<const TaskItem *>> m_children;
    QSet<QUuid> m_deferredParents;
    QSet<QUuid> m_openParents;
    QSet<QUuid> m_doneParents;
    QList<PanelRow> m_rows;
};

} // namespace

PanelRow::Identity PanelRow::identity() const
{
    return {kind, task.id, inboxItem.id};
}

size_t qHash(const PanelRow::Identity &identity, size_t seed)
{
    return qHashMulti(seed, int(identity.kind), identity.taskID, identity.inboxID);
}

int PanelRow::height() const
{
    switch (kind) {
    case Kind::TodoHeader:
    case Kind::DeferredHeader:
    case Kind::CompletedHeader:
        return Metrics::sectionHeaderHeight;
    case Kind::InboxHeader:
        return Metrics::iconButtonSize;
    case Kind::EmptyState:
        return 3 * Metrics::rowHeight;
    case Kind::DeferredTask:
        return childCount > 0 ? Metrics::twoLineRowHeight : Metrics::rowHeight;
    case Kind::BoardTask:
        return Metrics::chipHeight + Metrics::cellSpacing;
    case Kind::SubtaskComposer:
        return Metrics::subtaskRowHeight;
    case Kind::InboxCandidate:
    case Kind::Task:
    case Kind::CompletedTask:
        break;
    }
    return isSubtask ? Metrics::subtaskRowHeight : Metrics::rowHeight;
}

bool PanelRow::takesFocus() const
{
    return kind != Kind::TodoHeader && kind != Kind::EmptyState;
}

bool PanelRow::canExpand() const
{
    return kind == Kind::Task ? childCount > 0
                              : kind == Kind::DeferredHeader || kind == Kind::CompletedHeader;
}

QList<PanelRow> panelRows(const PanelRowsInput &input)
{
    return PanelRowsBuilder(input).build();
}

QuadrantBoardRows quadrantBoardRows(const TaskList &tasks)
{
    const PanelRowsInput input = {.tasks = tasks};
    return PanelRowsBuilder(input).buildBoard();
}

} // namespace wrenfold
