// SPDX-License-Identifier: MIT
#include "platform/linux/file_preferences.h"
#include "support/fake_clock.h"
#include "support/fake_preferences.h"
#include "support/faulty_file_system.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QDir>
#include <QTemporaryDir>

namespace wrenfold {

using Status = Preferences::ReadStatus;

namespace {

/// Preferences, and how what happens to them in the world is brought about.
class Subject
{
public:
    virtual ~Subject() = default;
    virtual Preferences &preferences() = 0;
    virtual void makeUnreadable(const QString &key) = 0;
    virtual void failNextWrite() = 0;
};

class FakeSubject final : public Subject
{
public:
    Preferences &preferences() override { return m_preferences; }
    void makeUnreadable(const QString &key) override { m_preferences.makeUnreadable(key); }
    void failNextWrite() override { m_preferences.failNextWrites(1); }

private:
    FakePreferences m_preferences;
};

class FileSubject final : public Subject
{
public:
    Preferences &preferences() override { return m_preferences; }

    void makeUnreadable(const QString &key) override
    {
        QFile::remove(m_folder.filePath(key));
        QVERIFY(QDir(m_folder.path()).mkdir(key)); // A folder in its place: root reads every file.
    }

    void failNextWrite() override { m_fileSystem.fail(FaultyFileSystem::Call::Rename, 1); }

private:
    QTemporaryDir m_folder;
    FakeClock m_clock;
    FaultyFileSystem m_fileSystem;
    FilePreferences m_preferences{m_folder.path(), m_clock, m_fileSystem};
};

const QString key = QStringLiteral("Wrenfold.State.v1");
const QString otherKey = QStringLiteral("Wrenfold.DebugVerbose");

} // namespace

/// One suite over the fake and the real preferences.
class PreferencesContractTest : public TestCase
{
    Q_OBJECT

private:
    std::unique_ptr<Subject> m_subject;

    Preferences &preferences() { return m_subject->preferences(); }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("isReal");
        QTest::newRow("fake") << false;
        QTest::newRow("files") << true;
    }

    void init()
    {
        TestCase::init();
        QFETCH_GLOBAL(bool, isReal);
        if (isReal)
            m_subject = std::make_unique<FileSubject>();
        else
            m_subject = std::make_unique<FakeSubject>();
    }

    void cleanup() { m_subject.reset(); }

    void aKeyNeverWrittenIsAbsent()
    {
        QCOMPARE(preferences().read(key).status, Status::Absent);
        QVERIFY(preferences().read(key).bytes.isEmpty());
    }

    void whatWasWrittenIsRead_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("text") << QByteArray("{\"tasks\":[]}");
        QTest::newRow("zeros and line ends") << QByteArray("\0\r\n\0\xff\n", 6);
        QTest::newRow("a megabyte") << QByteArray(1024 * 1024, 'x');
    }

    void whatWasWrittenIsRead()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(preferences().write(key, bytes), std::nullopt);
        QCOMPARE(preferences().read(key).status, Status::Found);
        QCOMPARE(preferences().read(key).bytes, bytes);
    }

    void aWriteReplacesTheWholeValue()
    {
        QCOMPARE(preferences().write(key, "a long first value"), std::nullopt);
        QCOMPARE(preferences().write(key, "short"), std::nullopt);
        QCOMPARE(preferences().read(key).bytes, QByteArray("short"));
    }

    void keysAreIndependent()
    {
        QCOMPARE(preferences().write(key, "one"), std::nullopt);
        QCOMPARE(preferences().read(otherKey).status, Status::Absent);
        QCOMPARE(preferences().write(otherKey, "two"), std::nullopt);
        QCOMPARE(preferences().keepAside(otherKey), std::nullopt);
        QCOMPARE(preferences().read(key).bytes, QByteArray("one"));
    }

    void aFailedWriteSaysWhyAndLeavesTheOldValue()
    {
        QCOMPARE(preferences().write(key, "old"), std::nullopt);
        QCOMPARE(preferences().write(key, "old"), std::nullopt);
        m_subject->failNextWrite();
        const std::optional<QString> error = preferences().write(key, "new");
        QVERIFY(error && !error->isEmpty());
        QCOMPARE(preferences().read(key).bytes, QByteArray("old"));
        QCOMPARE(preferences().write(key, "new"), std::nullopt);
        QCOMPARE(preferences().read(key).bytes, QByteArray("new"));
    }

    void whatCannotBeReadIsNotAbsent()
    {
        QCOMPARE(preferences().write(key, "value"), std::nullopt);
        m_subject->makeUnreadable(key);
        QCOMPARE(preferences().read(key).status, Status::Unreadable);
        QVERIFY(preferences().read(key).bytes.isEmpty());
    }

    void aKeyKeptAsideIsAbsentAndCanBeWrittenAnew()
    {
        QCOMPARE(preferences().write(key, "old"), std::nullopt);
        QCOMPARE(preferences().keepAside(key), std::nullopt);
        QCOMPARE(preferences().read(key).status, Status::Absent);
        QCOMPARE(preferences().write(key, "new"), std::nullopt);
        QCOMPARE(preferences().read(key).bytes, QByteArray("new"));
    }

    void anUnreadableValueCanBeKeptAside()
    {
        m_subject->makeUnreadable(key);
        QCOMPARE(preferences().keepAside(key), std::nullopt);
        QCOMPARE(preferences().read(key).status, Status::Absent);
        QCOMPARE(preferences().write(key, "new"), std::nullopt);
    }

    void keepingAnAbsentKeyAsideIsNoError()
    {
        QCOMPARE(preferences().keepAside(key), std::nullopt);
        QCOMPARE(preferences().read(key).status, Status::Absent);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PreferencesContractTest)
#include "preferences_contract_test.moc"
