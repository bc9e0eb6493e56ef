// SPDX-License-Identifier: MIT
#pragma once

#include "model/inbox_item.h"
#include "model/pomodoro_phase.h"
#include "model/published.h"
#include "model/saved_state.h"
#include "model/task_history.h"
#include "model/timer_state.h"
#include "platform/clock.h"

#include <QFuture>
#include <QSet>

#include <memory>

class QObject;

namespace wrenfold {

class AppNotifier;
class FolderWatch;
class InboxReader;
class InboxWatcher;
class LoginItem;
class OpenRouterTaskSorter;
class Preferences;
class Sounds;

/// Everything that the user sees and sets, and every operation on it. One instance, on the main thread.
///
/// This header is the table of contents; each group names the file that defines it. An operation reads, asks
/// a pure function, assigns. It is announced and saved once, when it ends; the document is on disk when it
/// returns, unless the disk refuses: then the log says so and the next change tries again. Unknown tasks,
/// empty titles and transitions that are not allowed change nothing.
class FocusStore
{
public:
    /// The key of the saved document in the preferences.
    static QString storageKey() { return QStringLiteral("Wrenfold.State.v1"); }

    /// What apiImportStatus is exactly while an import runs.
    static QString apiImportRunning() { return QStringLiteral("1Passwordから取得中..."); }

    /// What the store works with; all of it must outlive the store.
    struct Services
    {
        Preferences &preferences;
        Clock &clock;
        AppNotifier &notifier;
        Sounds &sounds;
        OpenRouterTaskSorter &sorter;
        FolderWatch &folderWatch;
        LoginItem &loginItem;
    };
    struct Options
    {
        bool loadSavedState = true; ///< False: starts empty, and never reads or writes the document.
        bool monitorInbox = true;   ///< False: the inbox folder is neither made nor looked into.
    };

    FocusStore(const Services &services, Options options);
    ~FocusStore();
    FocusStore(const FocusStore &) = delete;
    FocusStore &operator=(const FocusStore &) = delete;

private:
    ChangeGroup m_changes; ///< First: the properties below belong to it.

public:
    // --- The list, changed by the operations only ----------------------------------------------------------
    Published<TaskList> tasks{m_changes, {}, Persistence::Persisted};
    Published<std::optional<QUuid>> activeTaskID{m_changes, {}, Persistence::Persisted};
    Published<bool> canUndo{m_changes, false};
    Published<bool> canRedo{m_changes, false};
    Published<std::optional<DeletionSnapshot>> pendingUndo{m_changes, {}};
    Published<std::optional<QUuid>> subtaskComposerParentID{m_changes, {}};
    Published<int> composerFocusToken{m_changes, 0};
    Published<QString> sortStatus{m_changes, {}};

    // --- What the user sets, saved -------------------------------------------------------------------------
    Setting<QString> mediumGoal{m_changes, {}, Persistence::Persisted};
    Setting<bool> isTodoListHidden{m_changes, false, Persistence::Persisted};
    Setting<bool> isHardPinned{m_changes, true, Persistence::Persisted};
    Setting<bool> isCompletedSectionExpanded{m_changes, false, Persistence::Persisted};
    Setting<bool> isDeferredSectionExpanded{m_changes, true, Persistence::Persisted};
    Setting<bool> isQuadrantBoardVisible{m_changes, false, Persistence::Persisted};
    Setting<bool> isFocusGuardEnabled{m_changes, false, Persistence::Persisted};
    Published<QList<BlockedApp>> blockedApps{m_changes, defaultBlockedApps(), Persistence::Persisted};
    Published<qint64> workDurationMinutes{m_changes, 25, Persistence::Persisted};
    Published<qint64> breakDurationMinutes{m_changes, 5, Persistence::Persisted};
    Setting<bool> sprintNudgesEnabled{m_changes, true, Persistence::Persisted};
    Setting<bool> alwaysShowMenubarTimer{m_changes, true, Persistence::Persisted};
    Published<bool> launchAtLogin{m_changes, false, Persistence::Persisted};
    Setting<AIProvider> selectedAIProvider{m_changes, AIProvider::openRouter, Persistence::Persisted};
    Setting<QString> apiKeyOverride{m_changes, {}, Persistence::Persisted};
    Setting<QString> openRouterModel{m_changes, SavedState::defaultModel(), Persistence::Persisted};
    Setting<bool> codexIntegrationEnabled{m_changes, false, Persistence::Persisted};
    Setting<bool> chatGPTIntegrationEnabled{m_changes, false, Persistence::Persisted};
    Setting<bool> ollamaIntegrationEnabled{m_changes, false, Persistence::Persisted};
    Setting<QString> ollamaBaseURL{m_changes, SavedState::defaultOllamaBaseURL(), Persistence::Persisted};
    Setting<bool> autoSortAfterAdding{m_changes, false, Persistence::Persisted};

    // --- What is true while the program runs ---------------------------------------------------------------
    Published<qint64> remainingSeconds{m_changes, 1500};
    Published<bool> isTimerRunning{m_changes, false};
    Published<PomodoroPhase> timerPhase{m_changes, PomodoroPhase::work};
    Setting<bool> isGhostMode{m_changes, false};
    Setting<bool> isReorderKeyPressed{m_changes, false};
    Setting<bool> isQuadrantDropActive{m_changes, false};
    Published<bool> isSortingTasks{m_changes, false};
    Published<QString> loginItemStatus{m_changes, {}};
    Published<QString> apiImportStatus{m_changes, {}};
    Published<QList<InboxItem>> inboxItems{m_changes, {}};

    // --- The document: focus_store_document.cpp ------------------------------------------------------------
    /// Writes the document now, if it is persisted at all and not just being loaded. A failure goes into the log.
    void save();
    /// The last save did not reach the disk.
    [[nodiscard]] bool hasUnsavedChanges() const { return m_isSaveFailing; }

    // --- Tasks: focus_store_tasks.cpp ----------------------------------------------------------------------
    /// Adds to the end of the list, or under `parentID`, or under the open subtask composer's parent.
    void addTask(const QString &title, bool makeActive, std::optional<QUuid> parentID = std::nullopt);
    void addSubtask(const QUuid &parentID, const QString &title);
    void beginAddSubtask(const TaskItem &parent);
    void endAddSubtask(); ///< Closes the subtask composer.
    void requestTodoInput();
    void toggleDone(const TaskItem &task);
    void setActive(const TaskItem &task);
    void toggleExpanded(const TaskItem &task);
    void updateTaskTitle(const TaskItem &task, const QString &title);
    void deleteTask(const TaskItem &task); ///< With its subtasks.
    void deferTask(const TaskItem &task, TaskQuadrant quadrant);
    void restoreDeferredTask(const TaskItem &task);
    void setQuadrant(TaskQuadrant quadrant, const TaskItem &task);
    void clearCompleted();

    // --- What follows from the list, computed at each call: focus_store_tasks.cpp --------------------------
    [[nodiscard]] std::optional<TaskItem> activeTask() const;
    [[nodiscard]] TaskList topLevelTasks() const;
    [[nodiscard]] TaskList childTasks(const QUuid &parentID) const;
    [[nodiscard]] TaskList visibleTasks() const;
    [[nodiscard]] TaskList completedTasks() const;
    [[nodiscard]] TaskList deferredTasks() const;
    [[nodiscard]] int openTaskCount() const;
    [[nodiscard]] int completedTodayCount() const; ///< Since midnight in the user's time zone.
    [[nodiscard]] QString statusBarNowTitle() const;

    // --- The timer: focus_store_timer.cpp ------------------------------------------------------------------
    /// Starts the countdown of the present phase, or goes on with it. A phase at zero is filled again.
    void startPomodoro();
    void pauseTimer();
    void resetPomodoro();     ///< To a whole work phase, not started.
    void startBreakSession(); ///< To a whole break, not started.
    void skipBreakToWork();
    /// Kept within 1 to 90, the break's within 1 to 30. A phase that has not begun gets shorter with it at once, but
    /// not longer.
    void setWorkDurationMinutes(qint64 minutes);
    void setBreakDurationMinutes(qint64 minutes);
    [[nodiscard]] TimerState timerState() const;
    [[nodiscard]] qint64 phaseDurationSeconds() const { return timerState().phaseDurationSeconds(); }
    [[nodiscard]] QString remainingText() const { return timerState().remainingText(); }
    [[nodiscard]] TimerUrgency timerUrgency() const { return timerState().urgency(); }
    [[nodiscard]] bool shouldShowMenubarTimer() const;

    // --- The panel: focus_store_panel.cpp -------------------------------------------------------------------
    void exitGhostMode();

    // --- Launching at login: focus_store_login.cpp ---------------------------------------------------------
    /// Follows what the system says of the login item; registers and unregisters nothing.
    void refreshLoginItemStatus();
    /// Registers or unregisters at once; where the system refuses, the switch goes back and loginItemStatus says why.
    void setLaunchAtLogin(bool isWanted);
    void applyLaunchAtLoginPreference(); ///< Makes the system do what launchAtLogin says.

    // --- Undo, redo and the status line: focus_store_history.cpp -------------------------------------------
    void undo();
    void redo();
    /// Shows a text until the next one; a pending clearing of the line is called off.
    void setSortStatus(const QString &text);

    // --- Order: focus_store_order.cpp ----------------------------------------------------------------------
    /// Best first; unknown and repeated identifiers do no harm, and no task is lost.
    void applyPriorityOrder(const QList<QUuid> &orderedIDs);
    void moveTask(const QUuid &movingID, const QUuid &targetID, bool placeAfter);
    /// A drag begins: its moves are one undo step. Until it ends or is cancelled, undo, redo and the AI's changes wait.
    void beginTaskReorder();
    void endTaskReorder();
    void cancelTaskReorder(); ///< The order of before comes back.

    // --- AI: ai/focus_store_ai.cpp -------------------------------------------------------------------------
    /// The service's order of the open top-level tasks. Fails with an AIError.
    [[nodiscard]] QFuture<QList<QUuid>> proposePriorityOrderWithLLM();
    /// Asks for an order and applies it; the status line tells how it went. Does nothing while one of these two runs.
    void prioritizeTasksWithLLM();
    /// The service's titles of subtasks, as they came. Fails with an AIError.
    [[nodiscard]] QFuture<QStringList> proposeSubtasksWithLLM(const TaskItem &task);
    void splitTaskWithLLM(const TaskItem &task); ///< As prioritizeTasksWithLLM().
    /// What withSplit() makes of the list.
    void insertSubtasks(const QStringList &titles, const QUuid &after);
    /// The service's answer to a question about the open tasks, trimmed; it may be empty. Fails with an AIError.
    [[nodiscard]] QFuture<QString> askAssistant(const QString &prompt);
    void importOpenRouterKeyFromOnePassword(); ///< apiImportStatus tells how it goes.

    // --- Candidates from other programs: inbox/focus_store_inbox.cpp ---------------------------------------
    /// Reads the inbox folder anew; inboxItems follows when that is done, which is at once for a few files.
    void reloadInbox(bool notifyNewItems);
    /// Makes a top-level task of it, whatever subtask composer is open, and removes its file.
    void approveInboxItem(const InboxItem &item, bool makeActive);
    void approveAllInboxItems();
    void dismissAllInboxItems();
    /// A file that cannot be removed comes back with the next reload.
    void removeInboxFile(const InboxItem &item);

    // --- Blocked applications: guard/focus_store_guard.cpp -------------------------------------------------
    /// The application of a desktop entry; of any other file, one named after the file. Does nothing if it is blocked
    /// already, or the URL is not that of a file.
    void addBlockedApp(const QUrl &url);
    void removeBlockedApp(const BlockedApp &app);

private:
    void load();
    void apply(const SavedState &state);
    [[nodiscard]] SavedState savedState() const;
    [[nodiscard]] std::optional<QString> writeDocument();

    [[nodiscard]] TaskSnapshot snapshot() const { return {tasks.value(), activeTaskID.value()}; }
    void registerTaskUndo(const QString &actionName, std::optional<TaskSnapshot> snapshot = std::nullopt);
    void whenNotReordering(std::function<void()> operation);
    void endReorderWait();
    void undoNow();
    void redoNow();
    void restore(const TaskSnapshot &snapshot);
    void followHistory();
    void flashStatus(const QString &text);
    void setTasks(TaskList list);
    template<typename Change>
    void changeFamily(const QUuid &id, Change change);
    [[nodiscard]] Timestamp now() const;

    void addTopLevelTask(const QString &title, bool makeActive);
    void appendTopLevelTask(const QString &title, bool makeActive);

    void installTimer();
    void tick();
    void maybeFireSprintNudge();
    void handlePhaseComplete();
    void completeWork();
    void completeBreak();
    void setUpPhase(PomodoroPhase phase);
    void followShorterDuration(PomodoroPhase phase);

    void followLoginItem();

    void beginAIWork(const QString &status);
    void endAIWork(const QString &status);

    void monitorInbox(FolderWatch &folderWatch);
    void takeInbox(QList<InboxItem> items, bool notifyNewItems);
    void removeApproved(const QList<InboxItem> &items);
    void removeSavedApprovals();
    void removeInboxFiles(const QList<InboxItem> &items);
    void forgetInboxItems(const QList<InboxItem> &items);

    Preferences &m_preferences;
    Clock &m_clock;
    AppNotifier &m_notifier;
    Sounds &m_sounds;
    OpenRouterTaskSorter &m_sorter;
    LoginItem &m_loginItem;
    const bool m_isPersistenceEnabled;
    bool m_isRestoringState = false;
    bool m_isSaveFailing = false;
    /// The stored document was not understood; the next save must not lose it.
    bool m_mustKeepDocumentAside = false;
    TaskHistory m_history;
    std::optional<TaskSnapshot> m_reorderStartSnapshot; ///< Present while a drag is under way.
    std::vector<std::function<void()>> m_waitingForReorderEnd;
    std::unique_ptr<ScheduledCall> m_statusClearCall;
    std::unique_ptr<ScheduledCall> m_pendingUndoClearCall;
    QSet<qint64> m_firedSprintMilestones;   ///< In this work phase, by the seconds left.
    std::unique_ptr<ScheduledCall> m_timer; ///< Present exactly while the timer runs.
    /// Answers and queued calls that come after it has gone reach nobody.
    std::unique_ptr<QObject> m_answersOwner;
    QSet<QString> m_knownInboxIDs;       ///< Of the candidates that were there at the last reload.
    QList<InboxItem> m_unsavedApprovals; ///< Their tasks are not on disk yet, their files still are.
    // Shared only in that they can be let go of where their types are not known.
    std::shared_ptr<InboxReader> m_inboxReader;
    std::shared_ptr<InboxWatcher> m_inboxWatcher; ///< Null if the inbox is not monitored.
};

} // namespace wrenfold
