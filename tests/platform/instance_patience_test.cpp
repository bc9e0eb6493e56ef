// SPDX-License-Identifier: MIT
#include "platform/instance_test_case.h"

#include <QElapsedTimer>

namespace wrenfold {

/// How a further start asks a first that does not answer at once.
class InstancePatienceTest : public InstanceTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        makePlace();
    }
    void cleanup() { leavePlace(); }

    void aFirstThatIsStillStartingIsWaitedFor()
    {
        ProgramUnderTest first = start();
        ProgramUnderTest second = start();
        QCOMPARE(first.tell("claim"), "first");
        QCOMPARE(first.tell("listen soon"), "soon");
        QCOMPARE(second.tell("show"), "answered");
        QCOMPARE(first.nextLine(), "show");
    }

    void aFirstThatIsBusyCarriesARequestOutOnce_data()
    {
        QTest::addColumn<bool>("hasBus");
        QTest::newRow("bus") << true;
        QTest::newRow("no bus") << false;
    }

    void aFirstThatIsBusyCarriesARequestOutOnce()
    {
        QFETCH(bool, hasBus);
        QVERIFY(!hasBus || startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(!hasBus || waitForName());
        ProgramUnderTest second = start();
        QCOMPARE(second.tell("claim"), "taken");
        first.signal(SIGSTOP);
        second.say("toggle-panel");
        QTest::qWait(2600); // UNAVOIDABLE: being busy for so long is the case
        first.signal(SIGCONT);
        QCOMPARE(second.nextLine(), "answered");
        QCOMPARE(first.nextLine(), "toggle-panel");
        // What comes later, over the one way and the other, comes behind everything that was sent meanwhile.
        if (hasBus) {
            QCOMPARE(start().tell("hide-panel"), "answered");
            QCOMPARE(first.nextLine(), "hide-panel");
        }
        useBus(QStringLiteral("disabled:"));
        QCOMPARE(start().tell("new-todo"), "answered");
        QCOMPARE(first.nextLine(), "new-todo");
    }

    void aFirstThatEndsWhileItIsBusyLeavesTheClaimToWhoAsked_data()
    {
        aFirstThatIsBusyCarriesARequestOutOnce_data();
    }

    void aFirstThatEndsWhileItIsBusyLeavesTheClaimToWhoAsked()
    {
        QFETCH(bool, hasBus);
        QVERIFY(!hasBus || startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(!hasBus || waitForName());
        first.signal(SIGSTOP);
        ProgramUnderTest second = start(folder(), 20000);
        QCOMPARE(second.tell("claim"), "taken");
        QElapsedTimer timer;
        timer.start();
        second.say("toggle-panel");
        first.signal(SIGKILL);
        QCOMPARE(second.nextLine(), "not answered");
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(second.tell("claim"), "first");
    }

    void aFirstThatNeverAnswersIsGivenUp_data() { aFirstThatIsBusyCarriesARequestOutOnce_data(); }

    void aFirstThatNeverAnswersIsGivenUp()
    {
        QFETCH(bool, hasBus);
        QVERIFY(!hasBus || startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(!hasBus || waitForName());
        first.signal(SIGSTOP);
        ProgramUnderTest second = start(folder(), 600);
        QCOMPARE(second.tell("claim"), "taken");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(second.tell("show"), "not answered");
        QVERIFY2(timer.elapsed() >= 500 && timer.elapsed() < 1600,
                 qPrintable(QString::number(timer.elapsed())));
    }

    void aFirstThatEndsWhileItIsAskedLeavesTheClaimToWhoAsked()
    {
        ProgramUnderTest first = start();
        QCOMPARE(first.tell("claim"), "first");
        ProgramUnderTest second = start(folder(), 20000);
        QCOMPARE(second.tell("claim"), "taken");
        second.say("show");
        QElapsedTimer timer;
        timer.start();
        first.signal(SIGKILL);
        QCOMPARE(second.nextLine(), "not answered");
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(second.tell("claim"), "first");
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::InstancePatienceTest)
#include "instance_patience_test.moc"
