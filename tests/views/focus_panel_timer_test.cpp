// SPDX-License-Identifier: MIT
#include "support/test_case.h"
#include "views/panel_in_window.h"
#include "views/timer_header.h"
#include "views/timer_ring.h"

#include <QPaintEvent>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

/// Notes which widgets of a window are painted, and where on the window.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget &window)
        : m_window(window)
    {
        window.installEventFilter(this);
        for (QWidget *widget : window.findChildren<QWidget *>())
            widget->installEventFilter(this);
    }

    QRegion painted; ///< In the window's coordinates.
    QSet<QWidget *> widgets;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            auto *widget = static_cast<QWidget *>(object);
            widgets.insert(widget);
            painted +=
                static_cast<QPaintEvent *>(event)->region().translated(widget->mapTo(&m_window, QPoint()));
        }
        return false;
    }

private:
    QWidget &m_window;
};

} // namespace

/// The timer as the panel shows it and lets it be used.
class FocusPanelTimerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theHeadersButtonsStartPauseResetAndSkip()
    {
        PanelInWindow panel(TaskList{});
        QVERIFY(panel.show());
        QVERIFY(click(*panel.view, QStringLiteral("ポモドーロを開始（25分）")));
        QVERIFY(panel.store.isTimerRunning.value());
        panel.fakes.clock.advance(10s);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("24:50")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("ポモドーロ実行中（25分）")));
        QVERIFY(click(*panel.view, QStringLiteral("タイマー一時停止")));
        QVERIFY(!panel.store.isTimerRunning.value());
        QVERIFY(labelSaying(*panel.view, QStringLiteral("24:50")));
        QVERIFY(click(*panel.view, QStringLiteral("ポモドーロをリセット")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("25:00")));

        panel.store.startBreakSession();
        QVERIFY(labelSaying(*panel.view, QStringLiteral("休憩 一時停止")));
        QVERIFY(click(*panel.view, QStringLiteral("休憩を再開（5分）")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("休憩中（5分）")));
        QVERIFY(click(*panel.view, QStringLiteral("休憩をスキップ → 作業へ")));
        QCOMPARE(panel.store.timerState(), TimerState{});
        QVERIFY(labelSaying(*panel.view, QStringLiteral("25分 — 再生で開始")));
    }

    void thePanelFollowsAPhaseToItsEnd()
    {
        PanelInWindow panel({madeTask(QStringLiteral("資料を読む"))});
        QVERIFY(panel.show());
        panel.store.startPomodoro();
        panel.fakes.clock.advance(1200s);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("あと5分 — NOWだけ見よう")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("あと5分 — 残り5分。NOW だけ見よう。")));
        panel.fakes.clock.advance(240s);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("あと1分 — 区切れるところまで")));
        panel.fakes.clock.advance(60s);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("00:00")));
        panel.fakes.clock.advance(1s);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("05:00")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("休憩中（5分）")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("🍅 作業完了 → 5分休憩")));
    }

    void newLengthsAreShownAtOnce()
    {
        PanelInWindow panel(TaskList{});
        QVERIFY(panel.show());
        panel.store.setWorkDurationMinutes(20);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("20:00")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("20分 — 再生で開始")));
        panel.store.setWorkDurationMinutes(40);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("20:00")));
        QVERIFY(labelSaying(*panel.view, QStringLiteral("40分 — 再生で開始")));
        panel.store.startBreakSession();
        panel.store.setBreakDurationMinutes(3);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("03:00")));
        QVERIFY(buttonNamed(*panel.view, QStringLiteral("休憩を再開（3分）")));
    }

    void aSecondRepaintsTheTimersRowAlone()
    {
        PanelInWindow panel({madeTask(QStringLiteral("一")), madeTask(QStringLiteral("二"))});
        QVERIFY(panel.show());
        panel.store.startPomodoro();
        QCoreApplication::processEvents();
        PaintWatch watch(panel.window);
        panel.fakes.clock.advance(1s);
        QCoreApplication::processEvents();

        const auto *header = panel.view->findChild<TimerHeader *>();
        const QRect row(header->mapTo(&panel.window, QPoint()), header->size());
        QVERIFY(!watch.painted.isEmpty());
        QVERIFY2(row.contains(watch.painted.boundingRect()),
                 qPrintable(QDebug::toString(watch.painted.boundingRect())));
        // What lies around it, and under it, is painted only where it shows through.
        for (QWidget *widget : std::as_const(watch.widgets))
            QVERIFY2(header->isAncestorOf(widget) || widget->isAncestorOf(header) || widget == header,
                     widget->metaObject()->className());
    }

    void aSecondWhileThePanelIsHiddenPaintsNothing()
    {
        PanelInWindow panel(TaskList{});
        QVERIFY(panel.show());
        panel.store.startPomodoro();
        panel.window.hide();
        QCoreApplication::processEvents();
        PaintWatch watch(panel.window);
        panel.fakes.clock.advance(2s);
        QCoreApplication::processEvents();
        QVERIFY(watch.painted.isEmpty());
        // The time is there when the panel is back.
        panel.window.show();
        QVERIFY(labelSaying(*panel.view, QStringLiteral("24:58")));
    }

    void aStandingTimerWakesNobody()
    {
        PanelInWindow panel(TaskList{});
        QVERIFY(panel.show());
        const int calls = panel.fakes.clock.pendingCalls();
        panel.store.startPomodoro();
        QCOMPARE(panel.fakes.clock.pendingCalls(), calls + 1);
        panel.store.pauseTimer();
        QCOMPARE(panel.fakes.clock.pendingCalls(), calls);
    }

    void aNudgeShowsTheTitleExactly()
    {
        const TaskItem task = madeTask(awkward());
        PanelInWindow panel({task}, task.id);
        QVERIFY(panel.show());
        panel.store.startPomodoro();
        panel.fakes.clock.advance(1200s);
        QVERIFY(labelSaying(*panel.view, QStringLiteral("あと5分 — 「A & B_c <b>x</b>」— 仕上げるなら今。")));
    }

    void theTimersButtonsAreReachedByTheTabKey()
    {
        PanelInWindow panel(TaskList{});
        QVERIFY(panel.show());
        QStringList names;
        for (int step = 0; step < 40; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names << accessibleName(*QApplication::focusWidget());
        }
        const qsizetype play = names.indexOf(QStringLiteral("ポモドーロを開始（25分）"));
        QVERIFY(play >= 0);
        QCOMPARE(names.value(play + 1), QStringLiteral("ポモドーロをリセット"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelTimerTest)
#include "focus_panel_timer_test.moc"
