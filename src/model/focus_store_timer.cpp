// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/focus_store.h"
#include "model/timer_notices.h"
#include "notify/app_notifier.h"
#include "platform/sounds.h"

#include <algorithm>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

QString inSeconds(qint64 seconds)
{
    return QString::number(seconds) + QLatin1Char('s');
}

} // namespace

void FocusStore::startPomodoro()
{
    const ChangeGroup::Scope scope(m_changes);
    if (remainingSeconds.value() < 1)
        remainingSeconds.set(phaseDurationSeconds());
    if (remainingSeconds.value() == phaseDurationSeconds())
        m_firedSprintMilestones.clear();
    isTimerRunning.set(true);
    installTimer();
    qCInfo(DebugLog::timer).noquote() << QStringLiteral("start phase=") + rawValue(timerPhase.value()) +
                                             QStringLiteral(" remaining=") +
                                             inSeconds(remainingSeconds.value());
}

void FocusStore::installTimer()
{
    m_timer = m_clock.every(1s, [this] { tick(); });
}

void FocusStore::tick()
{
    if (!isTimerRunning.value())
        return;
    const ChangeGroup::Scope scope(m_changes);
    // A tick after the one that reached zero, so that "00:00" is seen for a second.
    if (remainingSeconds.value() < 1) {
        handlePhaseComplete();
        return;
    }
    remainingSeconds.set(remainingSeconds.value() - 1);
    maybeFireSprintNudge();
    if (remainingSeconds.value() % 30 == 0 && DebugLog::isVerbose())
        qCDebug(DebugLog::timer).noquote() << QStringLiteral("tick phase=") + rawValue(timerPhase.value()) +
                                                  QStringLiteral(" remaining=") +
                                                  inSeconds(remainingSeconds.value());
}

void FocusStore::pauseTimer()
{
    const ChangeGroup::Scope scope(m_changes);
    isTimerRunning.set(false);
    m_timer.reset();
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::timer).noquote()
            << QStringLiteral("paused remaining=") + inSeconds(remainingSeconds.value());
}

void FocusStore::maybeFireSprintNudge()
{
    if (!sprintNudgesEnabled.value() || timerPhase.value() != PomodoroPhase::work)
        return;
    for (const SprintMilestone &milestone : sprintMilestones(activeTask())) {
        if (remainingSeconds.value() != milestone.seconds || milestone.seconds >= phaseDurationSeconds() ||
            m_firedSprintMilestones.contains(milestone.seconds))
            continue;
        m_firedSprintMilestones.insert(milestone.seconds);
        flashStatus(milestone.label + QStringLiteral(" — ") + milestone.message);
        m_sounds.play(Sound::Tink);
        m_notifier.notify(sprintNotification(milestone));
        qCInfo(DebugLog::timer).noquote()
            << QStringLiteral("sprint nudge at ") + inSeconds(milestone.seconds);
    }
}

void FocusStore::handlePhaseComplete()
{
    pauseTimer();
    m_sounds.play(Sound::Glass);
    if (timerPhase.value() == PomodoroPhase::work)
        completeWork();
    else
        completeBreak();
}

void FocusStore::completeWork()
{
    const qint64 breakMinutes = breakDurationMinutes.value();
    m_notifier.notify(workDoneNotification(activeTask(), breakMinutes));
    setUpPhase(PomodoroPhase::shortBreak);
    flashStatus(QStringLiteral("🍅 作業完了 → ") + QString::number(breakMinutes) + QStringLiteral("分休憩"));
    qCInfo(DebugLog::timer).noquote()
        << QStringLiteral("work complete → auto-start break ") + inSeconds(remainingSeconds.value());
    startPomodoro();
}

void FocusStore::completeBreak()
{
    m_notifier.notify(breakDoneNotification(activeTask(), openTaskCount() > 0));
    setUpPhase(PomodoroPhase::work);
    flashStatus(QStringLiteral("休憩完了！次のポモドーロをどうぞ"));
    qCInfo(DebugLog::timer) << "break complete → ready for work";
}

void FocusStore::resetPomodoro()
{
    const ChangeGroup::Scope scope(m_changes);
    pauseTimer();
    setUpPhase(PomodoroPhase::work);
    qCInfo(DebugLog::timer).noquote()
        << QStringLiteral("reset to work ") + inSeconds(remainingSeconds.value());
}

void FocusStore::startBreakSession()
{
    const ChangeGroup::Scope scope(m_changes);
    pauseTimer();
    setUpPhase(PomodoroPhase::shortBreak);
    flashStatus(QStringLiteral("休憩タイマーをセットしました"));
    qCInfo(DebugLog::timer).noquote()
        << QStringLiteral("manual break ") + inSeconds(remainingSeconds.value());
}

void FocusStore::skipBreakToWork()
{
    const ChangeGroup::Scope scope(m_changes);
    pauseTimer();
    setUpPhase(PomodoroPhase::work);
    flashStatus(QStringLiteral("作業セッションに戻しました"));
    qCInfo(DebugLog::timer) << "skipped break → work";
}

/// The whole length of a phase that nothing has happened in yet. Phases are not in the document, but each new one is
/// an occasion to save what the disk refused before.
void FocusStore::setUpPhase(PomodoroPhase phase)
{
    timerPhase.set(phase);
    remainingSeconds.set(phaseDurationSeconds());
    m_firedSprintMilestones.clear();
    m_changes.requestSave();
}

void FocusStore::setWorkDurationMinutes(qint64 minutes)
{
    const ChangeGroup::Scope scope(m_changes);
    workDurationMinutes.set(std::clamp<qint64>(minutes, 1, 90));
    followShorterDuration(PomodoroPhase::work);
}

void FocusStore::setBreakDurationMinutes(qint64 minutes)
{
    const ChangeGroup::Scope scope(m_changes);
    breakDurationMinutes.set(std::clamp<qint64>(minutes, 1, 30));
    followShorterDuration(PomodoroPhase::shortBreak);
}

void FocusStore::followShorterDuration(PomodoroPhase phase)
{
    if (!isTimerRunning.value() && timerPhase.value() == phase &&
        remainingSeconds.value() >= phaseDurationSeconds())
        remainingSeconds.set(phaseDurationSeconds());
}

TimerState FocusStore::timerState() const
{
    return {timerPhase.value(), isTimerRunning.value(), remainingSeconds.value(), workDurationMinutes.value(),
            breakDurationMinutes.value()};
}

bool FocusStore::shouldShowMenubarTimer() const
{
    return timerState().shouldShowMenubarTimer(alwaysShowMenubarTimer.value());
}

} // namespace wrenfold
