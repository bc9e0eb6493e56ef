// SPDX-License-Identifier: MIT
#include "shell/status_bar_state.h"

#include "look/plain_text.h"
#include "model/focus_store.h"

namespace wrenfold {

namespace {

bool isBreak(const TimerState &timer)
{
    return timer.phase == PomodoroPhase::shortBreak;
}

QString timerText(const TimerState &timer)
{
    const QString remaining = timer.remainingText();
    if (isBreak(timer))
        return QStringLiteral("☕️") + remaining;
    switch (timer.urgency()) {
    case TimerUrgency::lastMinute:
        return QStringLiteral("⚡") + remaining;
    case TimerUrgency::lastFiveMinutes:
        return remaining;
    case TimerUrgency::normal:
        break;
    }
    const bool isPausedPartWay = !timer.isRunning && timer.remainingSeconds < timer.phaseDurationSeconds();
    return isPausedPartWay ? QStringLiteral("⏸") + remaining : remaining;
}

} // namespace

StatusBarState StatusBarState::of(const FocusStore &store)
{
    StatusBarState state;
    if (const std::optional<TaskItem> active = store.activeTask())
        state.activeTitle = oneLine(active->title);
    state.statusBarNowTitle = oneLine(store.statusBarNowTitle());
    state.completedTodayCount = store.completedTodayCount();
    state.openTaskCount = store.openTaskCount();
    state.isGhostMode = store.isGhostMode.value();
    state.isHardPinned = store.isHardPinned.value();
    state.isTodoListHidden = store.isTodoListHidden.value();
    state.shouldShowMenubarTimer = store.shouldShowMenubarTimer();
    state.timer = store.timerState();
    return state;
}

StatusTint StatusBarState::menubarTint() const
{
    if (isBreak(timer))
        return StatusTint::Orange;
    switch (timer.urgency()) {
    case TimerUrgency::lastMinute:
        return StatusTint::Pink;
    case TimerUrgency::lastFiveMinutes:
        return StatusTint::Orange;
    case TimerUrgency::normal:
        break;
    }
    return timer.isRunning ? StatusTint::Green : StatusTint::Label;
}

QString StatusBarState::title() const
{
    const QLatin1Char blank(' ');
    if (shouldShowMenubarTimer)
        return blank + timerText(timer);
    if (isGhostMode)
        return blank + QStringLiteral("👻");
    return statusBarNowTitle.isEmpty() ? QString() : blank + statusBarNowTitle;
}

QString StatusBarState::tooltipText() const
{
    QStringList lines{QStringLiteral("Wren Fold")};
    if (activeTitle)
        lines.append(QStringLiteral("NOW: ") + *activeTitle);
    if (timer.isRunning)
        lines.append((isBreak(timer) ? QStringLiteral("休憩: ") : QStringLiteral("作業: ")) +
                     timer.remainingText());
    if (isGhostMode)
        lines.append(QStringLiteral("ゴーストモード中 — クリックで復帰"));
    lines.append(QStringLiteral("今日の完了: ") + QString::number(completedTodayCount));
    return lines.join(QLatin1Char('\n'));
}

} // namespace wrenfold
