// SPDX-License-Identifier: MIT
#include "shell/status_menu.h"

#include "model/status_bar_title.h"
#include "shell/status_bar_state.h"

namespace wrenfold {

namespace {

StatusMenuRow information(const QString &title)
{
    return {title, static_cast<int>(StatusCommand::None), false};
}

StatusMenuRow command(const QString &title, StatusCommand command)
{
    return {title, static_cast<int>(command), true};
}

QString nowTitle(const StatusBarState &state)
{
    return QStringLiteral("NOW: ") +
           statusMenuTitle(state.activeTitle.value_or(QStringLiteral("ピン留め中のタスクなし")));
}

QString counts(const StatusBarState &state)
{
    return QStringLiteral("今日 ") + QString::number(state.completedTodayCount) +
           QStringLiteral(" 完了 · 未完了 ") + QString::number(state.openTaskCount);
}

StatusMenuRow ghostMode(bool isOn)
{
    return isOn ? command(QStringLiteral("ゴースト解除（パネル表示）"), StatusCommand::ExitGhostMode)
                : command(QStringLiteral("ゴーストモード"), StatusCommand::EnterGhostMode);
}

StatusMenuRow takeBreak(const TimerState &timer)
{
    return timer.phase == PomodoroPhase::shortBreak
               ? command(QStringLiteral("休憩をスキップ → 作業へ"), StatusCommand::SkipBreak)
               : command(QStringLiteral("休憩タイマーをセット"), StatusCommand::StartBreak);
}

} // namespace

QList<StatusMenuRow> makeMenu(const StatusBarState &state)
{
    const StatusMenuRow separator = information({});
    return {
        information(nowTitle(state)),
        information(counts(state)),
        separator,
        command(QStringLiteral("パネルを表示"), StatusCommand::ShowPanel),
        command(QStringLiteral("新規TODOを追加"), StatusCommand::NewTodo),
        command(QStringLiteral("AIチャット"), StatusCommand::ShowAIChat),
        command(QStringLiteral("設定..."), StatusCommand::ShowSettings),
        command(QStringLiteral("パネルを隠す"), StatusCommand::HidePanel),
        command(state.isHardPinned ? QStringLiteral("最前面固定: オン") : QStringLiteral("最前面固定: オフ"),
                StatusCommand::ToggleHardPin),
        command(state.isTodoListHidden ? QStringLiteral("TODOリストを表示") : QStringLiteral("NOWだけ表示"),
                StatusCommand::ToggleTodoList),
        ghostMode(state.isGhostMode),
        separator,
        takeBreak(state.timer),
        command(state.timer.isRunning ? QStringLiteral("タイマー一時停止")
                                      : QStringLiteral("ポモドーロを開始"),
                StatusCommand::ToggleTimer),
        command(QStringLiteral("ポモドーロをリセット"), StatusCommand::StopTimer),
        separator,
        information(QStringLiteral("ショートカット: ⌃⌥⌘ P / T / H")),
        separator,
        command(QStringLiteral("終了"), StatusCommand::Quit),
    };
}

} // namespace wrenfold
