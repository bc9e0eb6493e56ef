// SPDX-License-Identifier: MIT
#pragma once

#include "model/store_on_fakes.h"

#include <QRandomGenerator>

#include <deque>

namespace wrenfold {

/// A store under random operations, beside a second, much simpler account of what it should hold: which
/// identifiers, what undo and redo bring back, and what is written and shown.
class StoreMachine
{
public:
    explicit StoreMachine(quint32 seed);

    /// Performs one random operation. The answer is empty, or says what is wrong now.
    [[nodiscard]] QString step();

    [[nodiscard]] const StoreOnFakes &fakes() const { return m_fakes; }
    [[nodiscard]] TaskSnapshot state() const
    {
        return {m_fakes.store.tasks.value(), m_fakes.store.activeTaskID.value()};
    }

private:
    struct State
    {
        TaskSnapshot snapshot;
        QSet<QUuid> ids;
    };
    struct Operation
    {
        const char *name;
        int weight; ///< How often it comes, among the others.
        void (StoreMachine::*perform)();
    };

    // What is drawn at random.
    [[nodiscard]] const Operation &anyOperation();
    [[nodiscard]] bool oneIn(int count) { return m_random.bounded(count) == 0; }
    [[nodiscard]] TaskItem anyTask();
    [[nodiscard]] QString anyTitle();
    [[nodiscard]] TaskQuadrant anyQuadrant() { return allQuadrants[m_random.bounded(4U)]; }

    // Each performs one operation of the store and notes what it should have done.
    void addTask();
    void addSubtask();
    void beginAddSubtask();
    void endAddSubtask();
    void toggleDone();
    void setActive();
    void toggleExpanded();
    void updateTaskTitle();
    void deleteTask();
    void deferTask();
    void restoreDeferredTask();
    void setQuadrant();
    void clearCompleted();
    void undo();
    void redo();
    void undoAndRedo();
    void redoAndUndo();
    void applyPriorityOrder();
    void moveTask();
    void beginTaskReorder();
    void endTaskReorder();
    void cancelTaskReorder();
    void setSortStatus();
    void letTimePass();

    void expectUndoEntry(const State &before);
    void expectUndoEntry() { expectUndoEntry(m_before); }
    void expectDeletion(const QSet<QUuid> &removed);
    void expectFlash();
    void expectState(const State &state);
    void expectNoChange() { m_expected = m_before.snapshot; }
    /// Moves the newest entry of one stack to the other; none when there is nothing to move.
    void expectStep(std::deque<State> &from, std::deque<State> &to);

    [[nodiscard]] QString wrongness();
    [[nodiscard]] QString wrongList() const;

    QRandomGenerator m_random;
    const qsizetype m_mostTasks; ///< From here on tasks are deleted.
    StoreOnFakes m_fakes{TaskList{}};
    FocusStore &m_store = m_fakes.store;
    TaskItem m_unknown =
        madeTask(QStringLiteral("unknown")); ///< Never in the list, or deleted and out of date.

    // As before the operation under way, and what it is expected to do.
    State m_before;
    std::optional<TaskSnapshot> m_expected; ///< None: whatever keeps the rules.
    int m_expectedNewTasks = 0;
    std::optional<int> m_expectedWrites; ///< None: one when the list or the NOW task has changed.

    // What the store should hold now.
    QSet<QUuid> m_ids;
    std::deque<State> m_undo;
    std::deque<State> m_redo;
    std::optional<State> m_dragStart;
    std::optional<QUuid> m_composer;
    std::optional<DeletionSnapshot> m_pendingUndo;
    bool m_isStatusShown = false;
    qint64 m_now = 0;            ///< Milliseconds since the start.
    qint64 m_statusEnd = -1;     ///< -1: not to be cleared.
    qint64 m_pendingUndoEnd = 0; ///< When the record of a deletion goes.
};

} // namespace wrenfold
