// SPDX-License-Identifier: MIT
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/timer_header.h"
#include "views/timer_ring.h"
#include "views/view_probes.h"

namespace wrenfold {

namespace {

const auto startHelp = QStringLiteral("ポモドーロを開始（25分）");
const auto resumeHelp = QStringLiteral("休憩を再開（5分）");
const auto pauseHelp = QStringLiteral("タイマー一時停止");
const auto resetHelp = QStringLiteral("ポモドーロをリセット");
const auto skipHelp = QStringLiteral("休憩をスキップ → 作業へ");

constexpr auto shortBreak = PomodoroPhase::shortBreak;

/// What every part of the header is read out as, and its description.
QStringList readOut(const TimerHeader &header)
{
    QStringList texts;
    for (QWidget *widget : shown<QWidget>(header)) {
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
        texts.append(interface->text(QAccessible::Name));
        texts.append(interface->text(QAccessible::Description));
    }
    return texts;
}

struct HeaderInWindow
{
    QWidget window;
    QStringList calls;
    TimerHeader *header = new TimerHeader({[this] { calls.append(QStringLiteral("toggle")); },
                                           [this] { calls.append(QStringLiteral("reset")); },
                                           [this] { calls.append(QStringLiteral("skip")); }},
                                          &window);

    explicit HeaderInWindow(const TimerState &timer = {})
    {
        show(timer);
        header->resize(320, header->height());
        window.resize(320, 100);
        window.show();
    }

    void show(const TimerState &timer) { header->setContent(timerHeaderContent(timer)); }
    [[nodiscard]] TimerRing *ring() const { return header->findChild<TimerRing *>(); }
};

} // namespace

class TimerHeaderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouseAndByKey()
    {
        HeaderInWindow shownHeader({shortBreak, false, 300});
        for (const QString &help : {resumeHelp, skipHelp, resetHelp}) {
            QVERIFY(click(*shownHeader.header, help));
            QTest::keyClick(buttonNamed(*shownHeader.header, help), Qt::Key_Space);
            QTest::keyClick(buttonNamed(*shownHeader.header, help), Qt::Key_Return);
        }
        QCOMPARE(shownHeader.calls.join(QLatin1Char(',')),
                 QStringLiteral("toggle,toggle,toggle,skip,skip,skip,reset,reset,reset"));
    }

    void helpTextsAreToolTips()
    {
        HeaderInWindow shownHeader({shortBreak, false, 300});
        for (const QString &help : {resumeHelp, skipHelp, resetHelp}) {
            PaintedButton *button = buttonNamed(*shownHeader.header, help);
            QVERIFY(button);
            QCOMPARE(shownToolTip(*button), plainToolTip(help));
        }
        QCOMPARE(faultsOfButtons(*shownHeader.header), QStringList());
    }

    void thePlayButtonSaysWhatItDoesNow()
    {
        HeaderInWindow shownHeader;
        QCOMPARE(accessibleName(*shownHeader.ring()), startHelp);
        QCOMPARE(shownHeader.ring()->symbol(), QStringLiteral("play.fill"));
        shownHeader.show({.isRunning = true});
        QCOMPARE(accessibleName(*shownHeader.ring()), pauseHelp);
        QCOMPARE(shownToolTip(*shownHeader.ring()), plainToolTip(pauseHelp));
        QCOMPARE(shownHeader.ring()->symbol(), QStringLiteral("pause.fill"));
        QCOMPARE(roleOf(*shownHeader.ring()), QAccessible::Button);
    }

    void skippingIsOfferedOnlyDuringABreak()
    {
        HeaderInWindow shownHeader;
        QVERIFY(!buttonNamed(*shownHeader.header, skipHelp));
        shownHeader.show({shortBreak, true, 299});
        PaintedButton *skip = buttonNamed(*shownHeader.header, skipHelp);
        QVERIFY(skip);
        const QRect reset = buttonNamed(*shownHeader.header, resetHelp)->geometry();
        QCOMPARE(reset.right(), 319);
        QVERIFY(skip->geometry().right() < reset.left());
        QVERIFY(labelSaying(*shownHeader.header, QStringLiteral("休憩中（5分）"))->geometry().right() <
                skip->geometry().left());
        shownHeader.show({});
        QVERIFY(!buttonNamed(*shownHeader.header, skipHelp));
    }

    void aSkipByKeyLeavesTheFocusOnThePlayButton()
    {
        HeaderInWindow shownHeader({shortBreak, true, 299});
        QVERIFY(QTest::qWaitForWindowActive(&shownHeader.window));
        PaintedButton *skip = buttonNamed(*shownHeader.header, skipHelp);
        skip->setFocus(Qt::TabFocusReason);
        QTest::keyClick(skip, Qt::Key_Space);
        shownHeader.show({});
        QCOMPARE(QApplication::focusWidget(), shownHeader.ring());
    }

    void theTimeAndTheSubtitleAreReadOutAndWholeInTheirPlaces()
    {
        HeaderInWindow shownHeader({.remainingSeconds = 5400, .workDurationMinutes = 90});
        const TextLabel *time = labelSaying(*shownHeader.header, QStringLiteral("90:00"));
        const TextLabel *subtitle = labelSaying(*shownHeader.header, QStringLiteral("90分 — 再生で開始"));
        QVERIFY(time && subtitle);
        QVERIFY(!time->isElided());
        QVERIFY(!subtitle->isElided());
        QVERIFY(time->geometry().bottom() < subtitle->geometry().top());
        QVERIFY(shownHeader.header->rect().contains(subtitle->geometry()));
        QCOMPARE(shownHeader.header->height(), 46);
    }

    void aTextWithoutItsPlaceIsElidedAndBesideTheButtons()
    {
        HeaderInWindow shownHeader({shortBreak, true, 299});
        shownHeader.header->resize(160, shownHeader.header->height());
        TextLabel *subtitle = labelSaying(*shownHeader.header, QStringLiteral("休憩中（5分）"));
        QVERIFY(subtitle);
        QVERIFY(subtitle->isElided());
        QCOMPARE(shownToolTip(*subtitle), plainToolTip(QStringLiteral("休憩中（5分）")));
        QVERIFY(subtitle->geometry().right() < buttonNamed(*shownHeader.header, skipHelp)->x());
        QCOMPARE(faultsOfButtons(*shownHeader.header), QStringList());
    }

    void aSecondChangesNothingOfWhatIsReadOutButTheTime()
    {
        HeaderInWindow shownHeader({.isRunning = true, .remainingSeconds = 1104});
        QStringList texts = readOut(*shownHeader.header);
        shownHeader.show({.isRunning = true, .remainingSeconds = 1103});
        const qsizetype time = texts.indexOf(QStringLiteral("18:24"));
        QVERIFY(time >= 0);
        texts.replace(time, QStringLiteral("18:23"));
        QCOMPARE(readOut(*shownHeader.header), texts);
    }

    void theTabKeyGoesFromPlayToSkipToReset()
    {
        HeaderInWindow shownHeader({shortBreak, true, 299});
        QVERIFY(QTest::qWaitForWindowActive(&shownHeader.window));
        shownHeader.ring()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(accessibleName(*QApplication::focusWidget()), skipHelp);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(accessibleName(*QApplication::focusWidget()), resetHelp);
    }

    void theRingIsPaintedAsFarAsThePhaseIsLeft_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<bool>("isRightPainted");
        QTest::addColumn<bool>("isLeftPainted");
        QTest::newRow("whole") << qint64(1500) << true << true;
        QTest::newRow("a third") << qint64(500) << true << false;
        QTest::newRow("none") << qint64(0) << false << false;
    }

    void theRingIsPaintedAsFarAsThePhaseIsLeft()
    {
        QFETCH(qint64, seconds);
        HeaderInWindow shownHeader({.isRunning = true, .remainingSeconds = seconds});
        const QImage image = shownHeader.ring()->grab().toImage();
        const TimerHeaderContent content =
            timerHeaderContent({.isRunning = true, .remainingSeconds = seconds});
        const auto isPainted = [&](int x) {
            return image.pixelColor(x, 21) == Theme::current().*content.ringColor;
        };
        QTEST(isPainted(21 + 18), "isRightPainted");
        QTEST(isPainted(21 - 18), "isLeftPainted");
    }

    void theFocusIsSeenBesideTheRing()
    {
        HeaderInWindow shownHeader({.remainingSeconds = 1500});
        QVERIFY(QTest::qWaitForWindowActive(&shownHeader.window));
        shownHeader.ring()->clearFocus(); // Which came with the window.
        shownHeader.ring()->setFocus(Qt::TabFocusReason);
        const QImage image = shownHeader.ring()->grab().toImage();
        const auto isLine = [&](int x) { return image.pixelColor(x, 21) == Theme::current().accent; };
        int lines = 0;
        for (int x = 31; x < image.width(); ++x)
            lines += isLine(x) && !isLine(x - 1);
        QCOMPARE(lines, 2);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::TimerHeaderTest)
#include "timer_header_test.moc"
