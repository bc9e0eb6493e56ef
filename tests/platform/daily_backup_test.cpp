// SPDX-License-Identifier: MIT
#include "platform/linux/file_preferences.h"
#include "support/fake_clock.h"
#include "support/faulty_file_system.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QDir>
#include <QTemporaryDir>

namespace wrenfold {

using namespace std::chrono_literals;
using Call = FaultyFileSystem::Call;

namespace {

const QString key = QStringLiteral("Wrenfold.State.v1");
const QString otherKey = QStringLiteral("Wrenfold.State");

QStringList messages; ///< Logged while a LogCollector lives.

/// Takes the log's lines, which would otherwise fail the test.
class LogCollector
{
public:
    LogCollector()
    {
        messages.clear();
        m_before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { messages.append(text); });
    }
    ~LogCollector() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY_MOVE(LogCollector)

private:
    QtMessageHandler m_before;
};

} // namespace

class DailyBackupTest : public TestCase
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    FakeClock m_clock;
    FaultyFileSystem m_fileSystem;
    std::unique_ptr<FilePreferences> m_preferences;

    [[nodiscard]] QString backups() const { return m_folder->filePath(QStringLiteral("backups")); }
    [[nodiscard]] QStringList copies() const { return namesIn(backups()); }

    [[nodiscard]] QString copyOf(const QString &of, const char *day) const
    {
        return QStringLiteral("%1/%2.%3").arg(backups(), of, QLatin1String(day));
    }

    void restart()
    {
        m_preferences = std::make_unique<FilePreferences>(m_folder->path(), m_clock, m_fileSystem);
    }
    void save(const QByteArray &value, const QString &to = key)
    {
        QCOMPARE(m_preferences->write(to, value), std::nullopt);
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_clock.setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        m_fileSystem = {};
        restart();
    }

    void theFirstValueOfAKeyHasNoCopy()
    {
        save("one");
        QVERIFY(!QFileInfo::exists(backups()));
    }

    void theCopyHoldsTheValueOfBeforeTheDaysFirstWrite()
    {
        save("monday");
        m_clock.advance(24h);
        save("tuesday");
        save("tuesday evening");
        QCOMPARE(bytesOf(copyOf(key, "2026-03-03")), QByteArray("monday"));
        m_clock.advance(24h);
        save("wednesday");
        QCOMPARE(bytesOf(copyOf(key, "2026-03-03")), QByteArray("monday"));
        QCOMPARE(bytesOf(copyOf(key, "2026-03-04")), QByteArray("tuesday evening"));
        QCOMPARE(copies().size(), 2);
    }

    void theDayIsTheClocksLocalDay()
    {
        save("before midnight");
        m_clock.setNow(QDateTime(QDate(2026, 3, 2), QTime(23, 59, 59)));
        save("just before midnight");
        m_clock.advance(1s);
        save("after midnight");
        QCOMPARE(bytesOf(copyOf(key, "2026-03-03")), QByteArray("just before midnight"));
    }

    void aRestartDoesNotReplaceTheDaysCopy()
    {
        save("one");
        save("two");
        restart();
        save("three");
        QCOMPARE(bytesOf(copyOf(key, "2026-03-02")), QByteArray("one"));
        QCOMPARE(copies().size(), 1);
    }

    void theDaysCopyIsNotLookedForAgain()
    {
        save("one");
        save("two");
        const int opens = m_fileSystem.calls(Call::Open);
        QVERIFY(QDir(backups()).removeRecursively());
        save("three");
        QVERIFY(!QFileInfo::exists(backups()));
        QCOMPARE(m_fileSystem.calls(Call::Open), opens + 2); // The file and its folder.
    }

    void everyKeyHasItsOwnCopies()
    {
        save("one");
        save("other one", otherKey);
        save("two");
        save("other two", otherKey);
        QCOMPARE(bytesOf(copyOf(key, "2026-03-02")), QByteArray("one"));
        QCOMPARE(bytesOf(copyOf(otherKey, "2026-03-02")), QByteArray("other one"));
    }

    void twentyDaysLeaveTheNewestFourteenCopies()
    {
        save("day 0");
        save("other", otherKey);
        save("other", otherKey);
        for (int day = 1; day <= 20; ++day) {
            m_clock.advance(24h);
            save("day " + QByteArray::number(day));
        }
        QStringList expected{QStringLiteral("%1.2026-03-02").arg(otherKey)};
        for (int day = 7; day <= 20; ++day) {
            const QDate date = QDate(2026, 3, 2).addDays(day);
            expected << QStringLiteral("%1.%2").arg(key, date.toString(Qt::ISODate));
            QCOMPARE(bytesOf(backups() + QLatin1Char('/') + expected.constLast()),
                     "day " + QByteArray::number(day - 1));
        }
        QCOMPARE(copies(), expected);
    }

    void whatIsNoCopyOfOursIsLeftAlone()
    {
        const QStringList foreign{QStringLiteral("%1.2001-1-01").arg(key),
                                  QStringLiteral("%1.2001-02-31").arg(key),
                                  QStringLiteral("%1.2001-01-01.txt").arg(key),
                                  QStringLiteral("%1.2001-01-01-2").arg(key),
                                  QStringLiteral("%1-2001-01-01").arg(key),
                                  QStringLiteral("%1.").arg(key),
                                  QStringLiteral("x%1.2001-01-01").arg(key),
                                  QStringLiteral("Wrenfold.Stale.v1.2001-01-01"),
                                  QStringLiteral("notes.txt")};
        QVERIFY(QDir().mkpath(backups()));
        for (const QString &name : foreign)
            putFile(backups() + QLatin1Char('/') + name, "foreign");
        QVERIFY(QDir(backups()).mkdir(QStringLiteral("%1.2001-01-02").arg(key)));
        QVERIFY(QFile::link(QStringLiteral("notes.txt"), copyOf(key, "2001-01-04")));
        putFile(copyOf(key, "2001-01-03"), "ours");
        for (int day = 0; day <= 15; ++day) {
            save("value");
            m_clock.advance(24h);
        }
        for (const QString &name : foreign)
            QCOMPARE(bytesOf(backups() + QLatin1Char('/') + name), QByteArray("foreign"));
        QVERIFY(QFileInfo(copyOf(key, "2001-01-02")).isDir());
        QVERIFY(QFileInfo(copyOf(key, "2001-01-04")).isSymLink());
        QVERIFY(!QFileInfo::exists(copyOf(key, "2001-01-03")));
    }

    void aFailureAtAnyStepIsEitherLoggedOrReportedAndTheNextSaveMakesUpForIt_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<int>("steps");
        QTest::newRow("open") << Call::Open << 5;
        QTest::newRow("read") << Call::Read << 2;
        QTest::newRow("write") << Call::Write << 2;
        QTest::newRow("fsync") << Call::Fsync << 4;
        QTest::newRow("close of a written file or folder") << Call::Close << 5;
        QTest::newRow("rename") << Call::Rename << 2;
        QTest::newRow("unlink") << Call::Unlink << 2;
    }

    void aFailureAtAnyStepIsEitherLoggedOrReportedAndTheNextSaveMakesUpForIt()
    {
        QFETCH(Call, call);
        QFETCH(int, steps);
        save("old");
        save("old");
        for (int step = 1; step <= steps; ++step) {
            // Nothing was written to the file that the copy reads, so its close is not checked.
            if (call == Call::Close && step == 1)
                continue;
            save("old");
            m_clock.advance(24h);
            const QString copy = copyOf(key, qPrintable(m_clock.now().date().toString(Qt::ISODate)));
            m_fileSystem.fail(call, step);
            {
                LogCollector collector;
                const bool isReported = m_preferences->write(key, "new").has_value();
                QCOMPARE(m_fileSystem.failures(call), 1);
                QCOMPARE(messages.size(), isReported ? 0 : 1);
                QVERIFY(isReported || bytesOf(m_folder->filePath(key)) == "new");
            }
            QVERIFY(!QFileInfo::exists(copy) || bytesOf(copy) == "old");
            save("newer");
            QVERIFY(bytesOf(copy) == "old" || bytesOf(copy) == "new");
            for (const QString &name : copies())
                QVERIFY2(!name.startsWith(QLatin1Char('.')), qPrintable(name));
        }
        m_clock.advance(24h);
        m_fileSystem.fail(call, steps + 1);
        save("last");
        QCOMPARE(m_fileSystem.failures(call), 0);
    }

    void aFailingCopyIsTriedWithEverySaveAndLoggedOnceADay()
    {
        save("one");
        m_clock.advance(24h);
        putFile(backups(), "in the way");
        for (int day = 1; day <= 2; ++day) {
            LogCollector collector;
            for (int i = 0; i < 3; ++i)
                save("two");
            QCOMPARE(messages.size(), 1);
            QVERIFY(messages.constFirst().contains(QStringLiteral("daily copy")));
            m_clock.advance(24h);
        }
        QVERIFY(QFile::remove(backups()));
        save("three");
        QCOMPARE(bytesOf(copyOf(key, "2026-03-05")), QByteArray("two"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DailyBackupTest)
#include "daily_backup_test.moc"
