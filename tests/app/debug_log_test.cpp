// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "support/test_case.h"

namespace wrenfold {

class DebugLogTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        qunsetenv("WRENFOLD_DEBUG");
        DebugLog::setArguments({});
        DebugLog::setVerbosePreference({});
    }

    void onlyTheValue1OfTheEnvironmentVariableTurnsVerboseLoggingOn_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("isVerbose");
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("true") << QByteArray("true") << false;
        QTest::newRow("01") << QByteArray("01") << false;
        QTest::newRow("empty") << QByteArray("") << false;
    }

    void onlyTheValue1OfTheEnvironmentVariableTurnsVerboseLoggingOn()
    {
        QFETCH(QByteArray, value);
        qputenv("WRENFOLD_DEBUG", value);
        QTEST(DebugLog::isVerbose(), "isVerbose");
    }

    void thePreferenceCountsFromTheNextLineOnWithoutARestart()
    {
        bool preference = false;
        DebugLog::setVerbosePreference([&preference] { return preference; });
        QVERIFY(!DebugLog::isVerbose());
        preference = true;
        QVERIFY(DebugLog::isVerbose());
        preference = false;
        QVERIFY(!DebugLog::isVerbose());
    }

    void theArgumentTurnsVerboseLoggingOn()
    {
        DebugLog::setArguments({QStringLiteral("wrenfold"), QStringLiteral("--verbose-not")});
        QVERIFY(!DebugLog::isVerbose());
        DebugLog::setArguments({QStringLiteral("wrenfold"), QStringLiteral("--verbose")});
        QVERIFY(DebugLog::isVerbose());
    }

    void theSixChannelsBearTheirCategoryNames()
    {
        QCOMPARE(DebugLog::app().categoryName(), "app");
        QCOMPARE(DebugLog::timer().categoryName(), "timer");
        QCOMPARE(DebugLog::guard().categoryName(), "guard");
        QCOMPARE(DebugLog::store().categoryName(), "store");
        QCOMPARE(DebugLog::ui().categoryName(), "ui");
        QCOMPARE(DebugLog::login().categoryName(), "login");
    }

    void aLineKeepsSubsystemCategoryLevelAndText()
    {
        QCOMPARE(DebugLog::line(QtInfoMsg, "store", QStringLiteral("loaded %1 今日"), false),
                 QStringLiteral("dev.tolvane.Wrenfold [store] info: loaded %1 今日"));
        QCOMPARE(DebugLog::line(QtDebugMsg, "ui", QStringLiteral("x"), true),
                 QStringLiteral("<7>dev.tolvane.Wrenfold [ui] debug: x"));
        QCOMPARE(DebugLog::line(QtWarningMsg, "app", QStringLiteral("x"), false),
                 QStringLiteral("dev.tolvane.Wrenfold [app] error: x"));
        QCOMPARE(DebugLog::line(QtCriticalMsg, "app", QStringLiteral("x"), false),
                 QStringLiteral("dev.tolvane.Wrenfold [app] fault: x"));
    }

    void textFromOutsideCannotForgeALine()
    {
        const QString line = DebugLog::line(QtInfoMsg, "store",
                                            QStringLiteral("A & B_c <b>x</b>\nfake\u2028\u202Eline"), false);
        QCOMPARE(line,
                 QStringLiteral(
                     "dev.tolvane.Wrenfold [store] info: A & B_c <b>x</b>\\u000afake\\u2028\\u202eline"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DebugLogTest)
#include "debug_log_test.moc"
