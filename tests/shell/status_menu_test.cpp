// SPDX-License-Identifier: MIT
#include "shell/status_bar_state.h"
#include "shell/status_menu.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

QStringList titles(const QList<StatusMenuRow> &rows)
{
    QStringList result;
    for (const StatusMenuRow &row : rows)
        result.append(row.isSeparator() ? QStringLiteral("-") : row.title);
    return result;
}

QString firstLine(const QString &activeTitle)
{
    StatusBarState state;
    state.activeTitle = activeTitle;
    return makeMenu(state).first().title;
}

QString commandTitle(const StatusBarState &state, StatusCommand command)
{
    const QList<StatusMenuRow> rows = makeMenu(state);
    for (const StatusMenuRow &row : rows) {
        if (row.command == static_cast<int>(command))
            return row.title;
    }
    return {};
}

} // namespace

class StatusMenuTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRowsFromTopToBottom()
    {
        StatusBarState state;
        state.activeTitle = QStringLiteral("書く");
        state.completedTodayCount = 2;
        state.openTaskCount = 5;
        QCOMPARE(titles(makeMenu(state)),
                 (QStringList{QStringLiteral("NOW: 書く"), QStringLiteral("今日 2 完了 · 未完了 5"),
                              QStringLiteral("-"), QStringLiteral("パネルを表示"),
                              QStringLiteral("新規TODOを追加"), QStringLiteral("AIチャット"),
                              QStringLiteral("設定..."), QStringLiteral("パネルを隠す"),
                              QStringLiteral("最前面固定: オン"), QStringLiteral("NOWだけ表示"),
                              QStringLiteral("ゴーストモード"), QStringLiteral("-"),
                              QStringLiteral("休憩タイマーをセット"), QStringLiteral("ポモドーロを開始"),
                              QStringLiteral("ポモドーロをリセット"), QStringLiteral("-"),
                              QStringLiteral("ショートカット: ⌃⌥⌘ P / T / H"), QStringLiteral("-"),
                              QStringLiteral("終了")}));
    }

    void onlyRowsThatDoSomethingAreEnabled()
    {
        const QList<StatusMenuRow> rows = makeMenu({});
        int informing = 0;
        for (const StatusMenuRow &row : rows) {
            QCOMPARE(row.isEnabled, row.command != static_cast<int>(StatusCommand::None));
            informing += row.isEnabled ? 0 : 1;
        }
        QCOMPARE(informing, 7); // Three lines and four separators.
    }

    void withNoActiveTaskTheFirstLineSaysSo()
    {
        QCOMPARE(makeMenu({}).first().title, QStringLiteral("NOW: ピン留め中のタスクなし"));
    }

    void aTitleOf24CharactersIsShownWhole()
    {
        const QString title = QStringLiteral("一二三四五六七八九十一二三四五六七八九十一二三四");
        QCOMPARE(title.size(), 24);
        QCOMPARE(firstLine(title), QStringLiteral("NOW: ") + title);
    }

    void aTitleOf25CharactersShowsItsFirst21AndThreeStops()
    {
        const QString title = QStringLiteral("一二三四五六七八九十一二三四五六七八九十一二三四五");
        QCOMPARE(title.size(), 25);
        QCOMPARE(firstLine(title), QStringLiteral("NOW: 一二三四五六七八九十一二三四五六七八九十一..."));
    }

    void aCharacterIsWhatAPersonSeesAsOne()
    {
        const QString flags = QStringLiteral("🇯🇵").repeated(24);
        QCOMPARE(firstLine(flags), QStringLiteral("NOW: ") + flags);
    }

    void aTitleThatLooksLikeMarkupStaysAsItIs()
    {
        QCOMPARE(firstLine(QStringLiteral("A & B_c <b>x</b>")), QStringLiteral("NOW: A & B_c <b>x</b>"));
    }

    void theRowsNameTheStateOrWhatTheyWillDo()
    {
        StatusBarState state;
        state.isHardPinned = false;
        state.isTodoListHidden = true;
        state.isGhostMode = true;
        state.timer.isRunning = true;
        state.timer.phase = PomodoroPhase::shortBreak;
        QCOMPARE(commandTitle(state, StatusCommand::ToggleHardPin), QStringLiteral("最前面固定: オフ"));
        QCOMPARE(commandTitle(state, StatusCommand::ToggleTodoList), QStringLiteral("TODOリストを表示"));
        QCOMPARE(commandTitle(state, StatusCommand::ExitGhostMode),
                 QStringLiteral("ゴースト解除（パネル表示）"));
        QCOMPARE(commandTitle(state, StatusCommand::EnterGhostMode), QString());
        QCOMPARE(commandTitle(state, StatusCommand::SkipBreak), QStringLiteral("休憩をスキップ → 作業へ"));
        QCOMPARE(commandTitle(state, StatusCommand::StartBreak), QString());
        QCOMPARE(commandTitle(state, StatusCommand::ToggleTimer), QStringLiteral("タイマー一時停止"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::StatusMenuTest)
#include "status_menu_test.moc"
