// SPDX-License-Identifier: MIT
#include "platform/linux/atomic_file.h"
#include "support/faulty_file_system.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {

using Call = FaultyFileSystem::Call;
using Status = Preferences::ReadStatus;

class AtomicFileTest : public TestCase
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    FaultyFileSystem m_fileSystem;

    [[nodiscard]] QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }
    [[nodiscard]] QString document() const { return path("document"); }
    std::optional<QString> replace(const QByteArray &bytes)
    {
        return replaceFile(m_fileSystem, document(), bytes);
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_fileSystem = {};
    }

    void theFileIsForTheUserAloneWhateverItWasBefore()
    {
        putFile(document(), "old", 0644);
        QCOMPARE(replace("new"), std::nullopt);
        QCOMPARE(bytesOf(document()), QByteArray("new"));
        QCOMPARE(modeOf(document()), mode_t(0600));
        QCOMPARE(namesIn(m_folder->path()), QStringList{QStringLiteral("document")});
    }

    void aLinkIsReplacedAndWhatItLeadsToIsNot()
    {
        putFile(path("elsewhere"), "untouched");
        QVERIFY(QFile::link(path("elsewhere"), document()));
        QCOMPARE(replace("new"), std::nullopt);
        QVERIFY(!QFileInfo(document()).isSymLink());
        QCOMPARE(bytesOf(document()), QByteArray("new"));
        QCOMPARE(bytesOf(path("elsewhere")), QByteArray("untouched"));
    }

    void shortWritesAndReadsAreContinued()
    {
        QByteArray bytes;
        for (int i = 0; i < 1000; ++i)
            bytes += QByteArray::number(i);
        m_fileSystem.limitTransfers(7);
        QCOMPARE(replace(bytes), std::nullopt);
        QVERIFY(m_fileSystem.calls(Call::Write) > bytes.size() / 7);
        QCOMPARE(bytesOf(document()), bytes);
        QCOMPARE(readFile(m_fileSystem, document()).bytes, bytes);
    }

    void anInterruptedCallIsMadeAgain_data()
    {
        QTest::addColumn<Call>("call");
        QTest::newRow("open") << Call::Open;
        QTest::newRow("write") << Call::Write;
        QTest::newRow("fsync") << Call::Fsync;
        QTest::newRow("read") << Call::Read;
    }

    void anInterruptedCallIsMadeAgain()
    {
        QFETCH(Call, call);
        m_fileSystem.fail(call, 1, EINTR, 3);
        QCOMPARE(replace("new"), std::nullopt);
        const Preferences::ReadResult result = readFile(m_fileSystem, document());
        QCOMPARE(m_fileSystem.failures(call), 3);
        QCOMPARE(result.status, Status::Found);
        QCOMPARE(result.bytes, QByteArray("new"));
    }

    void anInterruptedCloseIsNotMadeAgain()
    {
        QCOMPARE(replace("old"), std::nullopt);
        const int closes = m_fileSystem.calls(Call::Close);
        m_fileSystem.fail(Call::Close, 1, EINTR, 2);
        QCOMPARE(replace("new"), std::nullopt);
        QCOMPARE(m_fileSystem.failures(Call::Close), 2);
        QCOMPARE(m_fileSystem.calls(Call::Close), 2 * closes);
    }

    void aWriteThatTakesNothingIsAnError()
    {
        QCOMPARE(replace("old"), std::nullopt);
        m_fileSystem.limitTransfers(0);
        const std::optional<QString> error = replace("new");
        QVERIFY(error && error->endsWith(QStringLiteral("Input/output error")));
        QCOMPARE(bytesOf(document()), QByteArray("old"));
    }

    void theErrorNamesTheStepTheFileAndTheReason()
    {
        m_fileSystem.fail(Call::Write, 1, ENOSPC);
        const QString expected = QStringLiteral("cannot write %1: No space left on device");
        QCOMPARE(replace("new"), expected.arg(path(".document.tmp")));
    }

    void bytesAreFlushedBeforeTheRenameAndTheFolderAfterIt()
    {
        QCOMPARE(replace("old"), std::nullopt);
        m_fileSystem.fail(Call::Fsync, 1);
        QVERIFY(replace("new"));
        QCOMPARE(bytesOf(document()), QByteArray("old"));
        m_fileSystem.fail(Call::Fsync, 2);
        QVERIFY(replace("new"));
        QCOMPARE(bytesOf(document()), QByteArray("new"));
    }

    /// What a power loss leaves depends on the order alone: one file is open at a time, so which is flushed is known.
    void theCallsComeInTheOrderThatSurvivesAPowerLoss()
    {
        QCOMPARE(replace("old"), std::nullopt);
        m_fileSystem = {};
        QCOMPARE(replace("new"), std::nullopt);
        QCOMPARE(m_fileSystem.order(),
                 (QList<Call>{Call::Unlink, Call::Open, Call::Write, Call::Fsync, Call::Close, Call::Open,
                              Call::Rename, Call::Fsync, Call::Close}));
    }

    void aLeftoverTemporaryFileIsOverwritten_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind : {"longer and wide open", "symbolic link", "hard link", "named pipe"})
            QTest::newRow(kind) << QByteArray(kind);
    }

    void aLeftoverTemporaryFileIsOverwritten()
    {
        QFETCH(QByteArray, kind);
        const QString leftover = path(".document.tmp");
        const QByteArray name = QFile::encodeName(leftover);
        const QByteArray other = QFile::encodeName(path("other"));
        putFile(path("other"), "untouched");
        if (kind == "symbolic link")
            QCOMPARE(::symlink(other.constData(), name.constData()), 0);
        else if (kind == "hard link")
            QCOMPARE(::link(other.constData(), name.constData()), 0);
        else if (kind == "named pipe")
            QCOMPARE(::mkfifo(name.constData(), 0600), 0);
        else
            putFile(leftover, QByteArray(5000, 'x'), 0666);
        QCOMPARE(replace("new"), std::nullopt);
        QCOMPARE(bytesOf(document()), QByteArray("new"));
        QCOMPARE(modeOf(document()), mode_t(0600));
        QCOMPARE(bytesOf(path("other")), QByteArray("untouched"));
        QCOMPARE(namesIn(m_folder->path()),
                 (QStringList{QStringLiteral("document"), QStringLiteral("other")}));
    }

    void aFolderIsMadeWithThoseAboveIt()
    {
        QCOMPARE(makePrivateFolder(m_fileSystem, path("a/b/c")), std::nullopt);
        for (const char *folder : {"a", "a/b", "a/b/c"})
            QCOMPARE(modeOf(path(folder)), mode_t(0700));
        QCOMPARE(m_fileSystem.calls(Call::Fsync), 3); // Of the folder that each one stands in.
    }

    void aFolderThatIsTooOpenIsNarrowedButNotTheOneAbove()
    {
        QCOMPARE(::mkdir(QFile::encodeName(path("a")).constData(), 0700), 0);
        QCOMPARE(::mkdir(QFile::encodeName(path("a/b")).constData(), 0700), 0);
        QCOMPARE(::chmod(QFile::encodeName(path("a")).constData(), 0755), 0);
        QCOMPARE(::chmod(QFile::encodeName(path("a/b")).constData(), 0777), 0);
        QCOMPARE(makePrivateFolder(m_fileSystem, path("a/b")), std::nullopt);
        QCOMPARE(modeOf(path("a")), mode_t(0755));
        QCOMPARE(modeOf(path("a/b")), mode_t(0700));
    }

    void aFailureWhileAFolderIsMadeIsReportedUntilAllStepsSucceed_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<int>("steps");
        QTest::newRow("mkdir") << Call::Mkdir << 3; // One attempt too early, then parent and child.
        QTest::newRow("open") << Call::Open << 2;
        QTest::newRow("fsync") << Call::Fsync << 2;
        QTest::newRow("close") << Call::Close << 2;
    }

    void aFailureWhileAFolderIsMadeIsReportedUntilAllStepsSucceed()
    {
        QFETCH(Call, call);
        QFETCH(int, steps);
        for (int step = 1; step <= steps; ++step) {
            const QString folder = path(QByteArray::number(step)) + QStringLiteral("/b");
            m_fileSystem.fail(call, step);
            QVERIFY(makePrivateFolder(m_fileSystem, folder));
            QCOMPARE(m_fileSystem.failures(call), 1);
            QVERIFY(!QFileInfo::exists(folder));
            QCOMPARE(makePrivateFolder(m_fileSystem, folder), std::nullopt);
            QVERIFY(QFileInfo(folder).isDir());
        }
        m_fileSystem.fail(call, steps + 1);
        QCOMPARE(makePrivateFolder(m_fileSystem, path("last/b")), std::nullopt);
    }

    void aFailedReadIsUnreadableAndNeverHalfAValue()
    {
        putFile(document(), QByteArray(100, 'x'));
        m_fileSystem.limitTransfers(30);
        for (int step = 1; step <= 5; ++step) {
            m_fileSystem.fail(Call::Read, step);
            const Preferences::ReadResult result = readFile(m_fileSystem, document());
            QCOMPARE(result.status, Status::Unreadable);
            QVERIFY(result.bytes.isEmpty());
        }
        QCOMPARE(readFile(m_fileSystem, document()).bytes, QByteArray(100, 'x'));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::AtomicFileTest)
#include "atomic_file_test.moc"
