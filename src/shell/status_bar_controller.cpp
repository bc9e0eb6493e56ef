// SPDX-License-Identifier: MIT
#include "shell/status_bar_controller.h"

#include "app/debug_log.h"
#include "model/focus_store.h"
#include "shell/status_icon.h"

#include <QCursor>

#include <algorithm>

namespace wrenfold {

namespace {

QString word(TimerUrgency urgency)
{
    switch (urgency) {
    case TimerUrgency::lastFiveMinutes:
        return QStringLiteral("lastFiveMinutes");
    case TimerUrgency::lastMinute:
        return QStringLiteral("lastMinute");
    case TimerUrgency::normal:
        break;
    }
    return QStringLiteral("normal");
}

void log(const StatusBarState &state)
{
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::ui).noquote() << QStringLiteral("menubar timer=") +
                                               DebugLog::word(state.shouldShowMenubarTimer) +
                                               QStringLiteral(" text=") + state.title() +
                                               QStringLiteral(" urgency=") + word(state.timer.urgency());
}

} // namespace

StatusBarController::StatusBarController(FocusStore &store, Clock &clock, StatusItem &statusItem,
                                         const Actions &actions)
    : m_store(store)
    , m_statusItem(statusItem)
    , m_actions(actions)
    , m_midnightCall(clock, [this] { updateStatusItem(); })
{
    m_statusItem.show({
        .activate = [this] { statusItemClicked(); },
        .openMenu = [this] { popUpMenu(); },
        .menuRows = [this] { return makeMenu(StatusBarState::of(m_store)); },
        .chooseRow = [this](int command) { chooseRow(command); },
        .labelShown =
            [this](bool isLabelShown) {
                m_isLabelShown = isLabelShown;
                m_state.reset();
                updateStatusItem();
            },
    });
    installObservers();
    updateStatusItem();
}

void StatusBarController::installObservers()
{
    const auto update = [this](const auto &) { updateStatusItem(); };
    m_subscriptions.push_back(m_store.remainingSeconds.onChange(update));
    m_subscriptions.push_back(m_store.isTimerRunning.onChange(update));
    m_subscriptions.push_back(m_store.tasks.onChange(update));
    m_subscriptions.push_back(m_store.activeTaskID.onChange(update));
    m_subscriptions.push_back(m_store.timerPhase.onChange(update));
    m_subscriptions.push_back(m_store.workDurationMinutes.onChange(update));
    m_subscriptions.push_back(m_store.breakDurationMinutes.onChange(update));
    m_subscriptions.push_back(m_store.alwaysShowMenubarTimer.onChange(update));
    m_subscriptions.push_back(m_store.isGhostMode.onChange(update));
    m_subscriptions.push_back(m_store.isHardPinned.onChange(update));
    m_subscriptions.push_back(m_store.isTodoListHidden.onChange(update));
}

void StatusBarController::updateStatusItem()
{
    const StatusBarState state = StatusBarState::of(m_store);
    if (state == m_state)
        return; // One operation may announce several values.
    m_state = state;
    m_statusItem.setContent({statusIcon(state, m_isLabelShown), state.title(), state.tooltipText()});
    log(state);
    const QList<StatusMenuRow> rows = makeMenu(state);
    if (rows != m_rows) {
        m_rows = rows;
        m_statusItem.updateMenu();
    }
}

void StatusBarController::statusItemClicked()
{
    if (m_store.isReorderKeyPressed.value()) // The Control key.
        popUpMenu();
    else
        showPanel();
}

void StatusBarController::popUpMenu()
{
    m_menu.clear();
    const QList<StatusMenuRow> rows = makeMenu(StatusBarState::of(m_store));
    for (const StatusMenuRow &row : rows) {
        if (row.isSeparator()) {
            m_menu.addSeparator();
            continue;
        }
        QAction *action = m_menu.addAction(QString(row.title).replace(QLatin1Char('&'), QLatin1String("&&")),
                                           [this, command = row.command] { chooseRow(command); });
        action->setEnabled(row.isEnabled);
    }
    m_menu.popup(QCursor::pos());
}

void StatusBarController::chooseRow(int command)
{
    const QList<StatusMenuRow> rows = makeMenu(StatusBarState::of(m_store));
    // What was chosen in a menu that is out of date may not be there any more.
    const bool isOffered = std::any_of(rows.begin(), rows.end(), [command](const StatusMenuRow &row) {
        return row.command == command && row.isEnabled;
    });
    if (isOffered)
        choose(static_cast<StatusCommand>(command));
}

void StatusBarController::choose(StatusCommand command)
{
    switch (command) {
    case StatusCommand::None:
        return;
    case StatusCommand::ShowPanel:
        return showPanel();
    case StatusCommand::NewTodo:
        m_store.exitGhostMode();
        m_actions.showPanel();
        return m_store.requestTodoInput();
    case StatusCommand::ShowAIChat:
        return m_actions.showAIChat();
    case StatusCommand::ShowSettings:
        return m_actions.showSettings();
    case StatusCommand::HidePanel:
        return m_actions.hidePanel();
    case StatusCommand::ToggleHardPin:
        return m_store.isHardPinned.set(!m_store.isHardPinned.value());
    case StatusCommand::ToggleTodoList:
        return m_store.isTodoListHidden.set(!m_store.isTodoListHidden.value());
    case StatusCommand::EnterGhostMode:
        return enterGhostMode();
    case StatusCommand::ExitGhostMode:
        return leaveGhostMode();
    case StatusCommand::StartBreak:
        return m_store.startBreakSession();
    case StatusCommand::SkipBreak:
        return m_store.skipBreakToWork();
    case StatusCommand::ToggleTimer:
        return m_store.isTimerRunning.value() ? m_store.pauseTimer() : m_store.startPomodoro();
    case StatusCommand::StopTimer:
        return m_store.resetPomodoro();
    case StatusCommand::Quit:
        return m_actions.quit();
    }
}

void StatusBarController::showPanel()
{
    m_store.exitGhostMode();
    m_actions.showPanel();
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::ui) << "status bar → show panel";
}

void StatusBarController::enterGhostMode()
{
    m_store.isGhostMode.set(true);
    m_actions.hidePanel();
    qCInfo(DebugLog::ui) << "ghost mode on";
}

void StatusBarController::leaveGhostMode()
{
    m_store.exitGhostMode();
    m_actions.showPanel();
    qCInfo(DebugLog::ui) << "ghost mode off via menu";
}

} // namespace wrenfold
