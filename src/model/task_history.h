// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

#include <deque>

namespace wrenfold {

/// What undo and redo bring back: the whole list and the NOW task. Lists share their memory until one is
/// changed.
struct TaskSnapshot
{
    TaskList tasks;
    std::optional<QUuid> activeTaskID;

    friend bool operator==(const TaskSnapshot &, const TaskSnapshot &) = default;
};

/// The list and the NOW task as they were before a deletion.
struct DeletionSnapshot
{
    TaskList tasks;
    std::optional<QUuid> activeTaskID;

    friend bool operator==(const DeletionSnapshot &, const DeletionSnapshot &) = default;
};

struct HistoryEntry
{
    TaskSnapshot snapshot;
    QString actionName; ///< As shown to the user.
};

/// The two stacks of undo and redo.
class TaskHistory
{
public:
    static constexpr std::size_t maxHistoryCount = 50;

    /// Notes the state before a change. Keeps the newest 50 and forgets what could be redone.
    void registerChange(HistoryEntry entry);

    /// The state to go back to, or none; `current` becomes what redo brings back. Neither stack is trimmed
    /// here.
    [[nodiscard]] std::optional<HistoryEntry> undo(TaskSnapshot current)
    {
        return step(m_undo, m_redo, std::move(current));
    }
    [[nodiscard]] std::optional<HistoryEntry> redo(TaskSnapshot current)
    {
        return step(m_redo, m_undo, std::move(current));
    }

    [[nodiscard]] std::size_t undoCount() const { return m_undo.size(); }
    [[nodiscard]] std::size_t redoCount() const { return m_redo.size(); }

private:
    using Stack = std::deque<HistoryEntry>; ///< Newest last.

    static std::optional<HistoryEntry> step(Stack &from, Stack &to, TaskSnapshot current);

    Stack m_undo;
    Stack m_redo;
};

} // namespace wrenfold
