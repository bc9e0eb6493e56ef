// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/focus_store.h"
#include "model/task_list.h"
#include "platform/preferences.h"

#include <QObject>

namespace wrenfold {

namespace {

/// Calls `copy` with each persisted property of the store and its member of the document, save those that
/// loading does more with than to copy: the list, the durations and the launch switch. One list serves
/// loading and saving, so that neither can forget a member.
template<typename Store, typename State, typename Copy>
void forEachPlainMember(Store &store, State &state, Copy copy)
{
    copy(store.activeTaskID, state.activeTaskID);
    copy(store.mediumGoal, state.mediumGoal);
    copy(store.isTodoListHidden, state.isTodoListHidden);
    copy(store.isFocusGuardEnabled, state.isFocusGuardEnabled);
    copy(store.blockedApps, state.blockedApps);
    copy(store.selectedAIProvider, state.selectedAIProvider);
    copy(store.apiKeyOverride, state.apiKeyOverride);
    copy(store.openRouterModel, state.openRouterModel);
    copy(store.codexIntegrationEnabled, state.codexIntegrationEnabled);
    copy(store.chatGPTIntegrationEnabled, state.chatGPTIntegrationEnabled);
    copy(store.ollamaIntegrationEnabled, state.ollamaIntegrationEnabled);
    copy(store.ollamaBaseURL, state.ollamaBaseURL);
    copy(store.autoSortAfterAdding, state.autoSortAfterAdding);
    copy(store.isCompletedSectionExpanded, state.isCompletedSectionExpanded);
    copy(store.isDeferredSectionExpanded, state.isDeferredSectionExpanded);
    copy(store.isQuadrantBoardVisible, state.isQuadrantBoardVisible);
    copy(store.isHardPinned, state.isHardPinned);
    copy(store.sprintNudgesEnabled, state.sprintNudgesEnabled);
    copy(store.alwaysShowMenubarTimer, state.alwaysShowMenubarTimer);
}

/// The NOW task is open; a stored one that is not gives way to the first open task.
std::optional<QUuid> repairedActiveTaskID(const TaskList &tasks, const std::optional<QUuid> &stored)
{
    if (!stored)
        return std::nullopt;
    const TaskItem *task = findTask(tasks, *stored);
    return task && task->isOpen() ? stored : nextOpenTaskID(tasks, -1);
}

} // namespace

FocusStore::FocusStore(const Services &services, Options options)
    : m_changes([this] { save(); })
    , m_preferences(services.preferences)
    , m_clock(services.clock)
    , m_notifier(services.notifier)
    , m_sounds(services.sounds)
    , m_sorter(services.sorter)
    , m_loginItem(services.loginItem)
    , m_isPersistenceEnabled(options.loadSavedState)
    , m_answersOwner(std::make_unique<QObject>())
{
    if (m_isPersistenceEnabled)
        load();
    if (options.monitorInbox)
        monitorInbox(services.folderWatch);
}

FocusStore::~FocusStore() = default;

void FocusStore::load()
{
    m_isRestoringState = true;
    const Preferences::ReadResult stored = m_preferences.read(storageKey());
    std::optional<SavedState> state;
    if (stored.status == Preferences::ReadStatus::Found)
        state = decodeSavedState(stored.bytes);
    followLoginItem();
    if (state) {
        apply(*state);
        qCInfo(DebugLog::store).noquote()
            << QStringLiteral("loaded tasks=%1 open=%2 work=%3m break=%4m login=%5")
                   .arg(tasks.value().size())
                   .arg(openTopLevelTasks(tasks.value()).size())
                   .arg(workDurationMinutes.value())
                   .arg(breakDurationMinutes.value())
                   .arg(DebugLog::word(launchAtLogin.value()));
    } else {
        m_mustKeepDocumentAside = stored.status != Preferences::ReadStatus::Absent;
        const ChangeGroup::Scope scope(m_changes);
        const Timestamp created = now();
        setTasks({TaskItem::make(QStringLiteral("今やることをここに固定"), created),
                  TaskItem::make(QStringLiteral("忘れたくない小タスクを追加"), created)});
        activeTaskID.set(tasks.value().first().id);
        mediumGoal.set(QStringLiteral("今週の軸を決める"));
        qCInfo(DebugLog::store) << "loaded defaults (first launch)";
    }
    m_isRestoringState = false;
}

void FocusStore::apply(const SavedState &state)
{
    const ChangeGroup::Scope scope(m_changes);
    setTasks(repaired(state.tasks));
    forEachPlainMember(*this, state, [](auto &property, const auto &member) { property.set(member); });
    activeTaskID.set(repairedActiveTaskID(tasks.value(), state.activeTaskID));
    setWorkDurationMinutes(state.workDurationMinutes);
    setBreakDurationMinutes(state.breakDurationMinutes);
    remainingSeconds.set(phaseDurationSeconds());
}

SavedState FocusStore::savedState() const
{
    SavedState state;
    state.tasks = tasks.value();
    forEachPlainMember(*this, state, [](const auto &property, auto &member) { member = property.value(); });
    state.workDurationMinutes = workDurationMinutes.value();
    state.breakDurationMinutes = breakDurationMinutes.value();
    state.launchAtLogin = launchAtLogin.value();
    return state;
}

void FocusStore::save()
{
    if (!m_isPersistenceEnabled || m_isRestoringState)
        return;
    const std::optional<QString> error = writeDocument();
    // One line when saving begins to fail and one when it works again, however many changes lie between.
    if (error && !m_isSaveFailing)
        qCWarning(DebugLog::store).noquote() << QStringLiteral("saving failed: ") + *error;
    else if (!error && m_isSaveFailing)
        qCInfo(DebugLog::store) << "saving works again";
    m_isSaveFailing = error.has_value();
    if (!m_isSaveFailing)
        removeSavedApprovals();
}

std::optional<QString> FocusStore::writeDocument()
{
    if (m_mustKeepDocumentAside) {
        if (const std::optional<QString> error = m_preferences.keepAside(storageKey()))
            return error;
        m_mustKeepDocumentAside = false;
    }
    return m_preferences.write(storageKey(), encodeSavedState(savedState()));
}

Timestamp FocusStore::now() const
{
    return Timestamp::fromDateTime(m_clock.now());
}

} // namespace wrenfold
