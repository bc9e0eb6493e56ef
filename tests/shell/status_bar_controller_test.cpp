// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "shell/status_bar_controller.h"
#include "support/fake_status_item.h"
#include "support/log_capture.h"
#include "support/test_case.h"
#include "views/menu_probes.h"

namespace wrenfold {

namespace {

const QString trap = QStringLiteral("A & B_c <b>x</b>");

struct ItemOnFakes
{
    TaskItem now = madeTask(QStringLiteral("書く"));
    StoreOnFakes fakes;
    FakeStatusItem item;
    QStringList calls;
    StatusBarController controller{fakes.store, fakes.clock, item,
                                   StatusBarController::Actions{
                                       .showPanel = note("show"),
                                       .showSettings = note("settings"),
                                       .showAIChat = note("chat"),
                                       .hidePanel = note("hide"),
                                       .quit = note("quit"),
                                   }};

    ItemOnFakes()
        : fakes({now, madeTask(QStringLiteral("読む"))}, now.id)
    {
    }

    std::function<void()> note(const char *call)
    {
        return [this, call] { calls.append(QString::fromLatin1(call)); };
    }
    FocusStore &store() { return fakes.store; }
    [[nodiscard]] QString label() const { return item.content().label; }
};

} // namespace

class StatusBarControllerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theItemIsDrawnAtOnce()
    {
        const ItemOnFakes shown;
        QVERIFY(shown.item.isShown());
        QCOMPARE(shown.label(), QStringLiteral(" 書く"));
        QCOMPARE(shown.item.content().toolTip, QStringLiteral("Wren Fold\nNOW: 書く\n今日の完了: 0"));
    }

    void theItemShowsThePresentStateAfterEveryChange()
    {
        ItemOnFakes shown;
        shown.store().setActive(shown.fakes.task(QStringLiteral("読む")));
        QCOMPARE(shown.label(), QStringLiteral(" 読む"));
        shown.store().updateTaskTitle(shown.fakes.task(QStringLiteral("読む")), QStringLiteral("聞く"));
        QCOMPARE(shown.label(), QStringLiteral(" 聞く"));
        shown.store().isGhostMode.set(true);
        QCOMPARE(shown.label(), QStringLiteral(" 👻"));
        shown.store().startPomodoro();
        QCOMPARE(shown.label(), QStringLiteral(" 25:00"));
        shown.fakes.clock.advance(std::chrono::seconds(1));
        QCOMPARE(shown.label(), QStringLiteral(" 24:59"));
        shown.store().pauseTimer();
        QCOMPARE(shown.label(), QStringLiteral(" ⏸24:59"));
        shown.store().alwaysShowMenubarTimer.set(false);
        QCOMPARE(shown.label(), QStringLiteral(" 👻"));
        shown.store().startBreakSession();
        QCOMPARE(shown.label(), QStringLiteral(" 👻"));
        shown.store().alwaysShowMenubarTimer.set(true);
        QCOMPARE(shown.label(), QStringLiteral(" ☕️05:00"));
        shown.store().setBreakDurationMinutes(3);
        QCOMPARE(shown.label(), QStringLiteral(" ☕️03:00"));
    }

    void aLongerWorkPhaseIsOneThatHasRun()
    {
        ItemOnFakes shown;
        shown.store().setWorkDurationMinutes(30);
        QCOMPARE(shown.label(), QStringLiteral(" ⏸25:00"));
    }

    void theMenuIsPushedWhenItsRowsChange()
    {
        ItemOnFakes shown;
        const auto hasRow = [&](const QString &title) {
            return std::any_of(shown.item.rowsAtLastUpdate().begin(), shown.item.rowsAtLastUpdate().end(),
                               [&](const StatusMenuRow &row) { return row.title == title; });
        };
        QVERIFY(hasRow(QStringLiteral("NOW: 書く")));
        shown.store().isHardPinned.set(false);
        QVERIFY(hasRow(QStringLiteral("最前面固定: オフ")));
        shown.store().isTodoListHidden.set(true);
        QVERIFY(hasRow(QStringLiteral("TODOリストを表示")));
        shown.store().startPomodoro();
        QVERIFY(hasRow(QStringLiteral("タイマー一時停止")));
        const int updates = shown.item.menuUpdates();
        shown.fakes.clock.advance(std::chrono::seconds(5));
        QCOMPARE(shown.item.menuUpdates(), updates); // The time stands in no row.
    }

    void theMenuIsRebuiltAtEveryOpening()
    {
        ItemOnFakes shown;
        QCOMPARE(shown.item.openMenu().first().title, QStringLiteral("NOW: 書く"));
        shown.store().deleteTask(shown.now);
        QCOMPARE(shown.item.openMenu().first().title, QStringLiteral("NOW: 読む"));
    }

    void theIconBearsTheMinutesOnlyWhereNoLabelIsShown()
    {
        ItemOnFakes shown;
        shown.store().startPomodoro();
        QVERIFY(shown.item.content().icon.name.endsWith(QStringLiteral("-25")));
        shown.item.setLabelShown(true);
        QVERIFY(shown.item.content().icon.name.endsWith(QStringLiteral("-green")));
    }

    void aPlainClickLeavesGhostModeAndShowsThePanel()
    {
        ItemOnFakes shown;
        shown.store().isGhostMode.set(true);
        shown.item.click();
        QVERIFY(!shown.store().isGhostMode.value());
        QCOMPARE(shown.calls, QStringList(QStringLiteral("show")));
    }

    void controlClickOpensTheMenuAsARightClickDoes()
    {
        const OffscreenSilence silence;
        ItemOnFakes shown;
        shown.item.askForMenu();
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        const QStringList texts = menuTexts(*menu);
        QCOMPARE(texts.size(), 19);
        menu->close();
        shown.store().isReorderKeyPressed.set(true);
        shown.item.click();
        menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu), texts);
        menu->close();
        QVERIFY(shown.calls.isEmpty());
    }

    void ourOwnMenuShowsATitleAsItIsAndDoesWhatItSays()
    {
        const OffscreenSilence silence;
        ItemOnFakes shown;
        shown.store().updateTaskTitle(shown.now, trap);
        shown.item.askForMenu();
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QCOMPARE(menu->actions().first()->text(), QStringLiteral("NOW: A && B_c <b>x</b>"));
        QVERIFY(!menu->actions().first()->isEnabled());
        menuEntry(*menu, QStringLiteral("パネルを隠す"))->trigger();
        menu->close();
        QCOMPARE(shown.calls, QStringList(QStringLiteral("hide")));
    }

    void everyRowDoesWhatItSays()
    {
        ItemOnFakes shown;
        FocusStore &store = shown.store();
        const auto choose = [&](const char *title) { return shown.item.choose(QString::fromUtf8(title)); };
        QVERIFY(choose("パネルを表示"));
        QVERIFY(choose("AIチャット"));
        QVERIFY(choose("設定..."));
        QVERIFY(choose("パネルを隠す"));
        QVERIFY(choose("終了"));
        QCOMPARE(shown.calls.join(QLatin1Char(' ')), QStringLiteral("show chat settings hide quit"));
        QVERIFY(choose("最前面固定: オン"));
        QVERIFY(!shown.fakes.saved().isHardPinned);
        QVERIFY(choose("NOWだけ表示"));
        QVERIFY(shown.fakes.saved().isTodoListHidden);
        QVERIFY(choose("TODOリストを表示"));
        QVERIFY(!shown.fakes.saved().isTodoListHidden);
        QVERIFY(choose("ポモドーロを開始"));
        QVERIFY(store.isTimerRunning.value());
        QVERIFY(choose("タイマー一時停止"));
        QVERIFY(!store.isTimerRunning.value());
        QVERIFY(choose("休憩タイマーをセット"));
        QCOMPARE(store.timerPhase.value(), PomodoroPhase::shortBreak);
        QVERIFY(choose("休憩をスキップ → 作業へ"));
        QCOMPARE(store.timerPhase.value(), PomodoroPhase::work);
        store.startPomodoro();
        QVERIFY(choose("ポモドーロをリセット"));
        QVERIFY(!store.isTimerRunning.value());
    }

    void aNewTodoLeavesGhostModeShowsThePanelAndAsksForTheField()
    {
        ItemOnFakes shown;
        shown.store().isGhostMode.set(true);
        const int token = shown.store().composerFocusToken.value();
        QVERIFY(shown.item.choose(QStringLiteral("新規TODOを追加")));
        QVERIFY(!shown.store().isGhostMode.value());
        QCOMPARE(shown.calls, QStringList(QStringLiteral("show")));
        QVERIFY(shown.store().composerFocusToken.value() != token);
    }

    void ghostModeIsSwitchedByItsRow()
    {
        ItemOnFakes shown;
        LogCapture log;
        QVERIFY(shown.item.choose(QStringLiteral("ゴーストモード")));
        QVERIFY(shown.store().isGhostMode.value());
        QVERIFY(shown.item.choose(QStringLiteral("ゴースト解除（パネル表示）")));
        QVERIFY(!shown.store().isGhostMode.value());
        QCOMPARE(shown.calls.join(QLatin1Char(' ')), QStringLiteral("hide show"));
        QCOMPARE(log.take(), (QStringList{QStringLiteral("info ui: ghost mode on"),
                                          QStringLiteral("info ui: exited ghost mode"),
                                          QStringLiteral("info ui: ghost mode off via menu")}));
    }

    void aRowThatIsNotOfferedAnyMoreDoesNothing()
    {
        ItemOnFakes shown;
        shown.item.chooseCommand(static_cast<int>(StatusCommand::SkipBreak));
        shown.item.chooseCommand(static_cast<int>(StatusCommand::None));
        shown.item.chooseCommand(4711);
        QVERIFY(shown.calls.isEmpty());
        QVERIFY(!shown.store().isTimerRunning.value());
    }

    void atMidnightTheCountOfTheDayStartsAnew()
    {
        ItemOnFakes shown;
        shown.store().toggleDone(shown.fakes.task(QStringLiteral("読む")));
        QVERIFY(shown.item.content().toolTip.endsWith(QStringLiteral("今日の完了: 1")));
        shown.fakes.clock.advance(std::chrono::hours(24));
        QVERIFY(shown.item.content().toolTip.endsWith(QStringLiteral("今日の完了: 0")));
        QCOMPARE(shown.item.rowsAtLastUpdate().at(1).title, QStringLiteral("今日 0 完了 · 未完了 1"));
    }

    void verboseWhatIsShownIsLogged()
    {
        qputenv("WRENFOLD_DEBUG", "1");
        ItemOnFakes shown;
        LogCapture log;
        shown.store().startPomodoro();
        shown.item.click();
        qunsetenv("WRENFOLD_DEBUG");
        const QStringList lines = log.take();
        QVERIFY(lines.contains(QStringLiteral("debug ui: menubar timer=true text= 25:00 urgency=normal")));
        QCOMPARE(lines.last(), QStringLiteral("debug ui: status bar → show panel"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::StatusBarControllerTest)
#include "status_bar_controller_test.moc"
