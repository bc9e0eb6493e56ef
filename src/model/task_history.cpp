// SPDX-License-Identifier: MIT
#include "model/task_history.h"

#include <utility>

namespace wrenfold {

void TaskHistory::registerChange(HistoryEntry entry)
{
    m_undo.push_back(std::move(entry));
    while (m_undo.size() > maxHistoryCount)
        m_undo.pop_front();
    m_redo.clear();
}

std::optional<HistoryEntry> TaskHistory::step(Stack &from, Stack &to, TaskSnapshot current)
{
    if (from.empty())
        return std::nullopt;
    HistoryEntry entry = std::move(from.back());
    from.pop_back();
    to.push_back({std::move(current), entry.actionName});
    return entry;
}

} // namespace wrenfold
