// SPDX-License-Identifier: MIT
#include "platform/program_under_test.h"
#include "support/test_case.h"

#include <QTemporaryDir>

namespace wrenfold {

class TerminationSignalsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void eachSignalEndsTheProgramCleanly_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void eachSignalEndsTheProgramCleanly()
    {
        QFETCH(int, number);
        ::signal(SIGHUP, SIG_DFL); // The test itself may have been started to outlive its terminal.
        ProgramUnderTest program(m_folder.path(), QProcessEnvironment::systemEnvironment());
        QCOMPARE(program.tell("are you there"), "awake"); // By now it waits for signals.
        program.signal(number);
        QCOMPARE(program.nextLine(), "terminating");
        QCOMPARE(program.waitForEnd(), 0);
    }

    void aHangUpIgnoredAtStartStaysIgnored()
    {
        ::signal(SIGHUP, SIG_IGN);
        ProgramUnderTest program(m_folder.path(), QProcessEnvironment::systemEnvironment());
        QCOMPARE(program.tell("are you there"), "awake");
        program.signal(SIGHUP);
        QCOMPARE(program.tell("are you there"), "awake");
        QCOMPARE(program.tell("are you there"), "awake"); // A signal would have had its turn by now.
        program.signal(SIGTERM);
        QCOMPARE(program.nextLine(), "terminating");
        QCOMPARE(program.waitForEnd(), 0);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TerminationSignalsTest)
#include "termination_signals_test.moc"
