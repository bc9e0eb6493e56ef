// SPDX-License-Identifier: MIT
#include "platform/linux/file_preferences.h"
#include "support/fake_clock.h"
#include "support/files.h"
#include "support/test_case.h"

#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {

using Status = Preferences::ReadStatus;

namespace {

const QString key = QStringLiteral("Wrenfold.State.v1");

} // namespace

class FilePreferencesTest : public TestCase
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_home;
    QString m_folder;
    FakeClock m_clock;

    [[nodiscard]] FilePreferences preferences() const { return FilePreferences(m_folder, m_clock); }
    [[nodiscard]] QString path(const QString &name) const { return m_folder + QLatin1Char('/') + name; }

    void makeFolder(mode_t mode = 0700)
    {
        QVERIFY(QDir().mkpath(m_folder));
        QCOMPARE(::chmod(QFile::encodeName(m_folder).constData(), mode), 0);
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_home = std::make_unique<QTemporaryDir>();
        m_folder = m_home->filePath(QStringLiteral(".config/Wrenfold"));
        m_clock.setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 5, 7)));
    }

    void theDefaultFolderFollowsTheConfigurationHome()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_home->path()));
        QCOMPARE(FilePreferences::defaultFolder(), m_home->filePath(QStringLiteral("Wrenfold")));
        qunsetenv("XDG_CONFIG_HOME");
        QCOMPARE(FilePreferences::defaultFolder(), QDir::homePath() + QStringLiteral("/.config/Wrenfold"));
    }

    void readingMakesNoFolder()
    {
        QCOMPARE(preferences().read(key).status, Status::Absent);
        QCOMPARE(preferences().keepAside(key), std::nullopt);
        QCOMPARE(namesIn(m_home->path()), QStringList());
    }

    void theFileBearsTheKeysNameAndHoldsJustTheBytes()
    {
        QCOMPARE(preferences().write(key, "{}"), std::nullopt);
        QCOMPARE(namesIn(m_folder), QStringList{key});
        QCOMPARE(bytesOf(path(key)), QByteArray("{}"));
    }

    void folderAndFilesAreForTheUserAlone()
    {
        const mode_t before = ::umask(0);
        FilePreferences subject = preferences();
        QCOMPARE(subject.write(key, "one"), std::nullopt);
        QCOMPARE(subject.write(key, "two"), std::nullopt);
        ::umask(before);
        QCOMPARE(modeOf(m_folder), mode_t(0700));
        QCOMPARE(modeOf(path(key)), mode_t(0600));
        QCOMPARE(modeOf(path(QStringLiteral("backups"))), mode_t(0700));
        QCOMPARE(modeOf(path(QStringLiteral("backups/%1.2026-03-02").arg(key))), mode_t(0600));
    }

    void aFolderThatIsTooOpenIsNarrowedByTheNextWrite()
    {
        makeFolder(0755);
        putFile(path(key), "old", 0644);
        QCOMPARE(preferences().write(key, "new"), std::nullopt);
        QCOMPARE(modeOf(m_folder), mode_t(0700));
        QCOMPARE(modeOf(path(key)), mode_t(0600));
    }

    void aFolderRemovedMeanwhileIsMadeAgain()
    {
        FilePreferences subject = preferences();
        QCOMPARE(subject.write(key, "one"), std::nullopt);
        QVERIFY(QDir(m_folder).removeRecursively());
        QCOMPARE(subject.read(key).status, Status::Absent);
        QCOMPARE(subject.write(key, "two"), std::nullopt);
        QCOMPARE(bytesOf(path(key)), QByteArray("two"));
    }

    void whatIsNoReadableFileReadsUnreadableWithoutBlocking_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind : {"named pipe", "folder", "link loop", "link to nowhere", "link to a device"})
            QTest::newRow(kind) << QByteArray(kind);
    }

    void whatIsNoReadableFileReadsUnreadableWithoutBlocking()
    {
        QFETCH(QByteArray, kind);
        makeFolder();
        const QByteArray name = QFile::encodeName(path(key));
        if (kind == "named pipe")
            QCOMPARE(::mkfifo(name.constData(), 0600), 0);
        else if (kind == "folder")
            QCOMPARE(::mkdir(name.constData(), 0700), 0);
        else if (kind == "link loop")
            QCOMPARE(::symlink(name.constData(), name.constData()), 0);
        else if (kind == "link to nowhere")
            QCOMPARE(::symlink("nowhere", name.constData()), 0);
        else
            QCOMPARE(::symlink("/dev/zero", name.constData()), 0);
        QCOMPARE(preferences().read(key).status, Status::Unreadable);

        QCOMPARE(preferences().keepAside(key), std::nullopt);
        QCOMPARE(preferences().read(key).status, Status::Absent);
        QCOMPARE(preferences().write(key, "new"), std::nullopt);
        QCOMPARE(namesIn(m_folder), (QStringList{key, key + QStringLiteral(".2026-03-02T09-05-07")}));
    }

    void aFileReachedThroughALinkIsRead()
    {
        makeFolder();
        putFile(path(QStringLiteral("elsewhere")), "value");
        QVERIFY(QFile::link(path(QStringLiteral("elsewhere")), path(key)));
        QCOMPARE(preferences().read(key).bytes, QByteArray("value"));
    }

    void aFileInPlaceOfTheFolderIsUnreadableAndLeftAlone()
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_folder).path()));
        putFile(m_folder, "not a folder");
        QCOMPARE(preferences().read(key).status, Status::Unreadable);
        QVERIFY(preferences().keepAside(key));
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("daily copy could not be made")));
        QVERIFY(preferences().write(key, "new"));
        QCOMPARE(bytesOf(m_folder), QByteArray("not a folder"));
    }

    void valuesKeptAsideInTheSameSecondAreNumbered()
    {
        FilePreferences subject = preferences();
        for (const char *value : {"one", "two", "three"}) {
            QCOMPARE(subject.write(key, value), std::nullopt);
            QCOMPARE(subject.keepAside(key), std::nullopt);
        }
        QCOMPARE(subject.read(key).status, Status::Absent);
        const QString dated = path(key + QStringLiteral(".2026-03-02T09-05-07"));
        QCOMPARE(bytesOf(dated), QByteArray("one"));
        QCOMPARE(bytesOf(dated + QStringLiteral("-2")), QByteArray("two"));
        QCOMPARE(bytesOf(dated + QStringLiteral("-3")), QByteArray("three"));
    }

    void aLinkThatLeadsNowhereAlsoTakesAKeptAsideName()
    {
        makeFolder();
        putFile(path(key), "value");
        const QString dated = path(key + QStringLiteral(".2026-03-02T09-05-07"));
        QCOMPARE(::symlink("nowhere", QFile::encodeName(dated).constData()), 0);
        QCOMPARE(preferences().keepAside(key), std::nullopt);
        QVERIFY(QFileInfo(dated).isSymLink());
        QCOMPARE(bytesOf(dated + QStringLiteral("-2")), QByteArray("value"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FilePreferencesTest)
#include "file_preferences_test.moc"
