// SPDX-License-Identifier: MIT
#include "model/focus_store.h"

namespace wrenfold {

using namespace std::chrono_literals;

void FocusStore::registerTaskUndo(const QString &actionName, std::optional<TaskSnapshot> before)
{
    pendingUndo.set(std::nullopt);
    m_history.registerChange({before ? std::move(*before) : snapshot(), actionName});
    followHistory();
}

void FocusStore::undo()
{
    whenNotReordering([this] { undoNow(); });
}

void FocusStore::redo()
{
    whenNotReordering([this] { redoNow(); });
}

void FocusStore::undoNow()
{
    const std::optional<HistoryEntry> entry = m_history.undo(snapshot());
    if (!entry)
        return;
    const ChangeGroup::Scope scope(m_changes);
    restore(entry->snapshot);
    flashStatus(entry->actionName + QStringLiteral("を元に戻しました"));
}

void FocusStore::redoNow()
{
    const std::optional<HistoryEntry> entry = m_history.redo(snapshot());
    if (!entry)
        return;
    const ChangeGroup::Scope scope(m_changes);
    restore(entry->snapshot);
    flashStatus(entry->actionName + QStringLiteral("をやり直しました"));
}

void FocusStore::restore(const TaskSnapshot &snapshot)
{
    pendingUndo.set(std::nullopt);
    setTasks(snapshot.tasks);
    activeTaskID.set(snapshot.activeTaskID);
    followHistory();
}

void FocusStore::followHistory()
{
    canUndo.set(m_history.undoCount() > 0);
    canRedo.set(m_history.redoCount() > 0);
}

void FocusStore::setSortStatus(const QString &text)
{
    m_statusClearCall.reset();
    sortStatus.set(text);
}

void FocusStore::flashStatus(const QString &text)
{
    constexpr auto shown = 6s;
    setSortStatus(text);
    m_statusClearCall = m_clock.after(shown, [this] {
        const ChangeGroup::Scope scope(m_changes);
        sortStatus.set({});
        pendingUndo.set(std::nullopt);
    });
    // Of its own, as a text that was set meanwhile calls the first one off.
    m_pendingUndoClearCall = m_clock.after(shown, [this] { pendingUndo.set(std::nullopt); });
}

} // namespace wrenfold
