// SPDX-License-Identifier: MIT
#include "views/panel_row_factory.h"

#include "model/focus_store.h"
#include "model/task_list.h"
#include "views/completed_row.h"
#include "views/empty_state_row.h"
#include "views/inbox_header_row.h"
#include "views/inbox_row.h"
#include "views/link_question.h"
#include "views/section_header_row.h"
#include "views/subtask_composer_row.h"
#include "views/task_row.h"

namespace wrenfold {

PanelRowFactory::PanelRowFactory(FocusStore &store, const Actions &actions)
    : m_store(store)
    , m_actions(actions)
{
}

template<typename Operation>
auto PanelRowFactory::thenUpdate(Operation operation) const
{
    return [this, operation](const auto &...arguments) {
        operation(arguments...);
        m_actions.updateRows();
    };
}

PanelRowWidget *PanelRowFactory::make(PanelRow::Kind kind, QWidget *parent) const
{
    switch (kind) {
    case PanelRow::Kind::InboxHeader:
        return new InboxHeaderRow({.approveAll = thenUpdate([this] { m_store.approveAllInboxItems(); }),
                                   .dismissAll = thenUpdate([this] { m_store.dismissAllInboxItems(); })},
                                  parent);
    case PanelRow::Kind::InboxCandidate:
        return makeInboxRow(parent);
    case PanelRow::Kind::Task:
        return makeTaskRow(parent);
    case PanelRow::Kind::SubtaskComposer:
        return makeSubtaskComposer(parent);
    case PanelRow::Kind::DeferredTask:
        return new DeferredTaskRow(deferredTaskActions(), parent);
    case PanelRow::Kind::CompletedTask:
        return new CompletedRow(
            {.restore = thenUpdate([this](const TaskItem &task) { m_store.toggleDone(task); }),
             .deleteTask = thenUpdate([this](const TaskItem &task) { m_store.deleteTask(task); })},
            parent);
    case PanelRow::Kind::EmptyState:
        return new EmptyStateRow(parent);
    case PanelRow::Kind::TodoHeader:
    case PanelRow::Kind::DeferredHeader:
    case PanelRow::Kind::CompletedHeader:
    case PanelRow::Kind::BoardTask: // Stands in the board only.
        break;
    }
    return makeSectionHeader(parent);
}

DeferredTaskRow::Actions PanelRowFactory::deferredTaskActions() const
{
    return {.restore = thenUpdate([this](const TaskItem &task) { m_store.restoreDeferredTask(task); }),
            .setQuadrant = [this](const TaskItem &task,
                                  TaskQuadrant quadrant) { m_store.setQuadrant(quadrant, task); },
            .toggleDone = thenUpdate([this](const TaskItem &task) { m_store.toggleDone(task); }),
            .deleteTask = thenUpdate([this](const TaskItem &task) { m_store.deleteTask(task); })};
}

PanelRowWidget *PanelRowFactory::makeInboxRow(QWidget *parent) const
{
    const auto openLink = [this, parent](const QUrl &link) {
        const auto open = [this, link] { m_actions.openLink(link); };
        openForeignLink(link, open, parent->window());
    };
    return new InboxRow(
        {.approve = thenUpdate([this](const InboxItem &item) { m_store.approveInboxItem(item, false); }),
         .approveAndPin = thenUpdate([this](const InboxItem &item) { m_store.approveInboxItem(item, true); }),
         .dismiss = thenUpdate([this](const InboxItem &item) { m_store.removeInboxFile(item); }),
         .openLink = openLink},
        parent);
}

PanelRowWidget *PanelRowFactory::makeTaskRow(QWidget *parent) const
{
    return new TaskRow(
        {.toggleDone = thenUpdate([this](const TaskItem &task) { m_store.toggleDone(task); }),
         .setActive = thenUpdate([this](const TaskItem &task) { m_store.setActive(task); }),
         .toggleExpanded = thenUpdate([this](const TaskItem &task) { m_store.toggleExpanded(task); }),
         .updateTitle = [this](const TaskItem &task,
                               const QString &title) { m_store.updateTaskTitle(task, title); },
         .addSubtask = m_actions.beginAddSubtask,
         .splitTask = thenUpdate([this](const TaskItem &task) { m_store.splitTaskWithLLM(task); }),
         .deferTask = [this](const TaskItem &task,
                             TaskQuadrant quadrant) { m_store.deferTask(task, quadrant); },
         .deleteTask = thenUpdate([this](const TaskItem &task) { m_store.deleteTask(task); }),
         .moveBy =
             [this](const TaskItem &task, int step) {
                 moveBy(task, step);
                 m_actions.updateRows();
                 m_actions.focusTask(task); // Where it is in sight.
             }},
        parent);
}

PanelRowWidget *PanelRowFactory::makeSubtaskComposer(QWidget *parent) const
{
    return new SubtaskComposerRow({.addSubtask =
                                       [this](const TaskItem &task, const QString &title) {
                                           // Closes its composer, but none that was opened for another task.
                                           if (m_store.subtaskComposerParentID.value() == task.id)
                                               m_store.addTask(title, false, task.id);
                                           else
                                               m_store.addSubtask(task.id, title);
                                       },
                                   .close = thenUpdate([this](const TaskItem &task) {
                                       m_actions.focusTask(task);
                                       m_store.endAddSubtask();
                                   })},
                                  parent);
}

PanelRowWidget *PanelRowFactory::makeSectionHeader(QWidget *parent) const
{
    const auto flip = [](Setting<bool> &setting) { setting.set(!setting.value()); };
    return new SectionHeaderRow(
        {.toggleSection = thenUpdate([this, flip](PanelRow::Kind header) {
             flip(header == PanelRow::Kind::DeferredHeader ? m_store.isDeferredSectionExpanded
                                                           : m_store.isCompletedSectionExpanded);
         }),
         .clearCompleted = thenUpdate([this] { m_store.clearCompleted(); }),
         .toggleBoard = thenUpdate([this, flip] { flip(m_store.isQuadrantBoardVisible); })},
        parent);
}

void PanelRowFactory::moveBy(const TaskItem &task, int step) const
{
    const std::optional<QUuid> neighbour = openNeighbour(m_store.tasks.value(), task.id, step);
    if (!neighbour)
        return;
    m_store.beginTaskReorder();
    m_store.moveTask(task.id, *neighbour, step > 0);
    m_store.endTaskReorder();
}

} // namespace wrenfold
