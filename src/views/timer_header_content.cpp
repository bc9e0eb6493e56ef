// SPDX-License-Identifier: MIT
#include "views/timer_header_content.h"

#include <algorithm>

namespace wrenfold {

namespace {

QString minutesText(qint64 minutes)
{
    return QString::number(minutes) + QStringLiteral("分");
}

QString inBrackets(const QString &text)
{
    return QStringLiteral("（") + text + QStringLiteral("）");
}

QString subtitle(const TimerState &timer)
{
    const QString length = minutesText(timer.phaseDurationMinutes());
    if (timer.phase == PomodoroPhase::shortBreak)
        return timer.isRunning ? QStringLiteral("休憩中") + inBrackets(length)
                               : QStringLiteral("休憩 一時停止");
    // A paused phase says how it goes on, though its colour stays that of the last minutes.
    if (!timer.isRunning)
        return length + QStringLiteral(" — 再生で開始");
    switch (timer.urgency()) {
    case TimerUrgency::lastMinute:
        return QStringLiteral("あと1分 — 区切れるところまで");
    case TimerUrgency::lastFiveMinutes:
        return QStringLiteral("あと5分 — NOWだけ見よう");
    case TimerUrgency::normal:
        break;
    }
    return QStringLiteral("ポモドーロ実行中") + inBrackets(length);
}

QString playHelp(const TimerState &timer)
{
    if (timer.isRunning)
        return QStringLiteral("タイマー一時停止");
    const QString start = timer.phase == PomodoroPhase::shortBreak ? QStringLiteral("休憩を再開")
                                                                   : QStringLiteral("ポモドーロを開始");
    return start + inBrackets(minutesText(timer.phaseDurationMinutes()));
}

Theme::Color ringColor(const TimerState &timer)
{
    switch (timer.urgency()) {
    case TimerUrgency::lastMinute:
        return &Theme::pink;
    case TimerUrgency::lastFiveMinutes:
        return &Theme::orange;
    case TimerUrgency::normal:
        break;
    }
    return timer.isRunning ? &Theme::green : &Theme::accent;
}

} // namespace

TimerHeaderContent timerHeaderContent(const TimerState &timer)
{
    const Theme::Color color = ringColor(timer);
    return {.time = timer.remainingText(),
            .subtitle = subtitle(timer),
            .playSymbol = timer.isRunning ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"),
            .playHelp = playHelp(timer),
            // While all is well the time stays calm.
            .timeColor = color == &Theme::green ? &Theme::ink : color,
            .ringColor = color,
            // A phase that is left longer than its length, set shorter while it ran, is a whole one.
            .remainingFraction =
                std::clamp(qreal(timer.remainingSeconds) / qreal(timer.phaseDurationSeconds()), 0.0, 1.0),
            .isSkipVisible = timer.phase == PomodoroPhase::shortBreak};
}

} // namespace wrenfold
