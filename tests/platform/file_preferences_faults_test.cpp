// SPDX-License-Identifier: MIT
#include "platform/linux/file_preferences.h"
#include "support/fake_clock.h"
#include "support/faulty_file_system.h"
#include "support/files.h"
#include "support/test_case.h"
#include "support/test_mount.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wrenfold {

using namespace std::chrono_literals;
using Call = FaultyFileSystem::Call;
using Status = Preferences::ReadStatus;

namespace {

const QString key = QStringLiteral("Wrenfold.State.v1");
const QString backups = QStringLiteral("backups");
const QByteArray oldValue(3000, 'o');
const QByteArray newValue(4000, 'n');

void expectFailedCopyInLog()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("daily copy could not be made")));
}

} // namespace

/// What can go wrong with the disk while a value is saved. The value is always there, whole.
class FilePreferencesFaultsTest : public TestCase
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_temporary;
    QString m_folder;
    FakeClock m_clock;
    FaultyFileSystem m_fileSystem;
    std::unique_ptr<FilePreferences> m_preferences;

    [[nodiscard]] QString path(const QString &name) const { return m_folder + QLatin1Char('/') + name; }

    void restart() { m_preferences = std::make_unique<FilePreferences>(m_folder, m_clock, m_fileSystem); }

    /// A value that was saved earlier, and already copied today.
    void saveOldValue()
    {
        for (int i = 0; i < 2; ++i)
            QCOMPARE(m_preferences->write(key, oldValue), std::nullopt);
        QCOMPARE(namesIn(m_folder), (QStringList{key, backups}));
    }

    /// The folder holds the old or the new value, whole, and nothing half done.
    void verifyWhole()
    {
        QCOMPARE(namesIn(m_folder), (QStringList{key, backups}));
        const QByteArray value = bytesOf(path(key));
        QVERIFY(value == oldValue || value == newValue);
    }

    /// Runs a save of the new value in a process that is killed instead of the nth system call. Answers
    /// whether it was.
    bool isKilledInSave(int n)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            m_fileSystem.dieAt(n);
            ::_exit(m_preferences->write(key, newValue) ? EXIT_FAILURE : EXIT_SUCCESS);
        }
        int status = 0;
        if (child < 0 || ::waitpid(child, &status, 0) != child)
            qFatal("no child process");
        if (WIFEXITED(status) && WEXITSTATUS(status) != EXIT_SUCCESS)
            qFatal("the save failed");
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_temporary = std::make_unique<QTemporaryDir>();
        m_folder = m_temporary->filePath(QStringLiteral("Wrenfold"));
        QCOMPARE(::chmod(QFile::encodeName(m_temporary->path()).constData(), 0755), 0);
        m_clock.setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        m_fileSystem = {};
        restart();
    }

    void anyFailingStepIsReportedAndLeavesAWholeValue_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<int>("steps");
        QTest::addColumn<int>("times");
        for (const int times : {1, 2}) {
            const char *suffix = times == 1 ? "" : " and the next";
            QTest::addRow("open%s", suffix) << Call::Open << 2 << times;
            QTest::addRow("write%s", suffix) << Call::Write << 4 << times;
            QTest::addRow("fsync%s", suffix) << Call::Fsync << 2 << times;
            QTest::addRow("close%s", suffix) << Call::Close << 2 << times;
            QTest::addRow("rename%s", suffix) << Call::Rename << 1 << times;
            QTest::addRow("unlink%s", suffix) << Call::Unlink << 1 << times;
        }
    }

    void anyFailingStepIsReportedAndLeavesAWholeValue()
    {
        QFETCH(Call, call);
        QFETCH(int, steps);
        QFETCH(int, times);
        m_fileSystem.limitTransfers(1000); // So that there are four writes.
        for (int step = 1; step <= steps; ++step) {
            saveOldValue();
            for (int save = 1; save <= 2; ++save) {
                m_fileSystem.fail(call, step, ENOSPC, times);
                QVERIFY(m_preferences->write(key, newValue));
                QVERIFY(m_fileSystem.failures(call) >= 1);
                verifyWhole();
            }
            m_fileSystem.fail(call, 1, 0, 0);
            QCOMPARE(m_preferences->write(key, newValue), std::nullopt);
            QCOMPARE(bytesOf(path(key)), newValue);
            verifyWhole();
        }
        // There is no further step: the row leaves none out.
        m_fileSystem.fail(call, steps + 1, ENOSPC, times);
        QCOMPARE(m_preferences->write(key, newValue), std::nullopt);
        QCOMPARE(m_fileSystem.failures(call), 0);
    }

    void aKillAtAnyStepLeavesAWholeValueAndTheNextSaveTidiesUp()
    {
        saveOldValue();
        int n = 1;
        while (isKilledInSave(n)) {
            const QByteArray value = bytesOf(path(key));
            QVERIFY(value == oldValue || value == newValue);
            restart();
            QCOMPARE(m_preferences->write(key, oldValue), std::nullopt);
            verifyWhole();
            ++n;
        }
        QVERIFY2(n > 9, qPrintable(QString::number(n))); // The steps of one save.
        QCOMPARE(bytesOf(path(key)), newValue);
    }

    void aKillWhileTheDailyCopyIsMadeLeavesNoHalfCopy()
    {
        saveOldValue();
        int n = 1;
        for (bool isKilled = true; isKilled; ++n) {
            m_clock.advance(24h);
            restart();
            isKilled = isKilledInSave(n);
            const QString copy =
                path(QStringLiteral("backups/%1.%2").arg(key, m_clock.now().date().toString(Qt::ISODate)));
            QVERIFY(!QFileInfo::exists(copy) || bytesOf(copy) == oldValue);
            const QByteArray value = bytesOf(path(key));
            QVERIFY(value == oldValue || (value == newValue && QFileInfo::exists(copy)));
            restart();
            QCOMPARE(m_preferences->write(key, oldValue), std::nullopt);
            QVERIFY(QFileInfo::exists(copy));
        }
        QVERIFY2(n > 18, qPrintable(QString::number(n)));
    }

    void aFullDiskKeepsTheOldValueUntilThereIsRoomAgain()
    {
        QVERIFY(QDir().mkpath(m_folder));
        TestMount disk(m_folder);
        QCOMPARE(disk.mountMemory(128 * 1024), QString());
        const QString filler = path(QStringLiteral("filler"));
        const QByteArray bigValue(64 * 1024, 'b');
        for (int i = 0; i < 2; ++i)
            QCOMPARE(m_preferences->write(key, oldValue), std::nullopt);
        putFile(filler, QByteArray(80 * 1024, 'f'));
        const QStringList names = namesIn(m_folder);

        for (int save = 1; save <= 2; ++save) {
            const std::optional<QString> error = m_preferences->write(key, bigValue);
            QVERIFY(error && error->contains(QStringLiteral("No space left on device")));
            QCOMPARE(m_preferences->read(key).bytes, oldValue);
            QCOMPARE(namesIn(m_folder), names);
        }
        QVERIFY(QFile::remove(filler));
        QCOMPARE(m_preferences->write(key, bigValue), std::nullopt);
        QCOMPARE(m_preferences->read(key).bytes, bigValue);
    }

    void aReadOnlyFolderKeepsTheOldValueAndIsLoggedOnceADay()
    {
        saveOldValue();
        {
            TestMount mount(m_folder);
            QCOMPARE(mount.mountReadOnly(), QString());
            QVERIFY(m_preferences->write(key, newValue));
            QVERIFY(m_preferences->keepAside(key));
            for (int day = 1; day <= 2; ++day) {
                m_clock.advance(24h);
                expectFailedCopyInLog();
                for (int save = 1; save <= 3; ++save)
                    QVERIFY(m_preferences->write(key, newValue));
            }
            QCOMPARE(m_preferences->read(key).bytes, oldValue);
        }
        QCOMPARE(m_preferences->write(key, newValue), std::nullopt);
        QCOMPARE(bytesOf(path(key)), newValue);
        QCOMPARE(bytesOf(path(QStringLiteral("backups/%1.2026-03-04").arg(key))), oldValue);
    }

    void aHomeThatCannotBeMadeIsAnErrorUntilItCan()
    {
        m_folder = m_temporary->filePath(QStringLiteral("home/.config/Wrenfold"));
        restart();
        {
            TestMount mount(m_temporary->path());
            QCOMPARE(mount.mountReadOnly(), QString());
            QCOMPARE(m_preferences->read(key).status, Status::Absent);
            QCOMPARE(m_preferences->keepAside(key), std::nullopt);
            QVERIFY(m_preferences->write(key, newValue));
            QVERIFY(m_preferences->write(key, newValue));
        }
        QCOMPARE(m_preferences->write(key, newValue), std::nullopt);
        QCOMPARE(m_preferences->read(key).bytes, newValue);
    }

    void withoutPermissionForTheFolderAllIsUnreadableAndNothingIsLost()
    {
        saveOldValue();
        {
            RightsOfNobody rights;
            QCOMPARE(m_preferences->read(key).status, Status::Unreadable);
            QVERIFY(m_preferences->write(key, newValue));
            QVERIFY(m_preferences->keepAside(key));
        }
        QCOMPARE(bytesOf(path(key)), oldValue);
        verifyWhole();
    }

    void withoutPermissionForTheFileItIsUnreadableAndCanBeKeptAside()
    {
        saveOldValue();
        const auto mode = mode_t(0777);
        QCOMPARE(::chmod(QFile::encodeName(m_folder).constData(), mode), 0);
        {
            RightsOfNobody rights;
            QCOMPARE(m_preferences->read(key).status, Status::Unreadable);
            QCOMPARE(m_preferences->keepAside(key), std::nullopt);
            QCOMPARE(m_preferences->read(key).status, Status::Absent);
            // The folder is another user's and cannot be narrowed, which must not stop the save.
            QCOMPARE(m_preferences->write(key, newValue), std::nullopt);
            QCOMPARE(m_preferences->read(key).bytes, newValue);
        }
        QCOMPARE(modeOf(m_folder), mode);
        QCOMPARE(modeOf(path(key)), mode_t(0600));
        QCOMPARE(bytesOf(path(key + QStringLiteral(".2026-03-02T09-00-00"))), oldValue);
    }

    void withoutPermissionToWriteTheOldValueStaysReadable()
    {
        saveOldValue();
        QCOMPARE(::chmod(QFile::encodeName(m_folder).constData(), 0755), 0);
        QCOMPARE(::chmod(QFile::encodeName(path(key)).constData(), 0644), 0);
        RightsOfNobody rights;
        QVERIFY(m_preferences->write(key, newValue));
        QVERIFY(m_preferences->keepAside(key));
        QCOMPARE(m_preferences->read(key).bytes, oldValue);
    }

    void aFailedKeepingAsideIsReportedAndLosesNothing_data()
    {
        QTest::addColumn<Call>("call");
        QTest::newRow("open") << Call::Open;
        QTest::newRow("rename") << Call::Rename;
        QTest::newRow("fsync") << Call::Fsync;
        QTest::newRow("close") << Call::Close;
    }

    void aFailedKeepingAsideIsReportedAndLosesNothing()
    {
        QFETCH(Call, call);
        saveOldValue();
        m_fileSystem.fail(call, 1);
        QVERIFY(m_preferences->keepAside(key));
        QCOMPARE(m_fileSystem.failures(call), 1);
        QCOMPARE(namesIn(m_folder).size(), 2);
        QCOMPARE(bytesOf(path(namesIn(m_folder).constFirst())), oldValue);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FilePreferencesFaultsTest)
#include "file_preferences_faults_test.moc"
