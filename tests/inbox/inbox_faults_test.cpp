// SPDX-License-Identifier: MIT
#include "inbox/inbox_file.h"
#include "inbox/inbox_on_fakes.h"
#include "platform/linux/inotify_folder_watch.h"
#include "platform/system_clock.h"
#include "support/log_capture.h"
#include "support/test_case.h"

#include <QTimer>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {

namespace {

/// A store that watches the real folder, in real time.
struct RealWatching
{
    FakePreferences preferences;
    SystemClock clock;
    FakeNotificationCenter notificationCenter;
    FakeSounds sounds;
    InotifyFolderWatch folderWatch;
    FakeLoginItem loginItem;
    AppNotifier notifier{notificationCenter};
    OpenRouterTaskSorter sorter{StoreOnFakes::noService()};
    FocusStore store;

    RealWatching()
        : preferences(StoreOnFakes::preferencesWith(StoreOnFakes::documentWith({}, std::nullopt)))
        , store({preferences, clock, notifier, sounds, sorter, folderWatch, loginItem}, {})
    {
    }
};

QUrl url(const QString &name)
{
    return QUrl::fromLocalFile(InboxFolder::file(name));
}

} // namespace

/// What other programs may do to a real folder.
class InboxFaultsTest : public TestCase
{
    Q_OBJECT

    std::optional<InboxFolder> m_folder;

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder.emplace();
    }
    void cleanup() { m_folder.reset(); }

    void aFileRenamedIntoPlaceArrives()
    {
        RealWatching watching;
        InboxFolder::drop(QStringLiteral("a.json.tmp"), QStringLiteral("a"));
        QVERIFY(QFile::rename(InboxFolder::file(QStringLiteral("a.json.tmp")),
                              InboxFolder::file(QStringLiteral("a.json"))));
        QTRY_COMPARE(texts(watching.store), QStringLiteral("a"));
        QCOMPARE(watching.notificationCenter.take().size(), 1);
    }

    void aFileThatIsRemovedGoes()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("a"));
        QVERIFY(QFile::remove(InboxFolder::file(QStringLiteral("a.json"))));
        QTRY_COMPARE(texts(watching.store), QString());
    }

    void aFileRenamedOutOfTheFolderGoes()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("a"));
        QVERIFY(QFile::rename(InboxFolder::file(QStringLiteral("a.json")),
                              dataHome() + QStringLiteral("/a.json")));
        QTRY_COMPARE(texts(watching.store), QString());
    }

    void aWriterThatTakesASecondIsReadWhenItHasDone()
    {
        RealWatching watching;
        QFile file(InboxFolder::file(QStringLiteral("a.json")));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray content = json("{'text':'slow'}");
        qsizetype written = 0;
        QTimer writing;
        connect(&writing, &QTimer::timeout, &file, [&] {
            file.write(content.mid(written, 4));
            written += 4;
            if (written >= content.size()) {
                writing.stop();
                file.close();
            }
        });
        writing.start(300);
        QTRY_COMPARE(texts(watching.store), QStringLiteral("slow"));
        QCOMPARE(watching.notificationCenter.take().size(), 1);
    }

    void aWriterThatNeverClosesItsFileIsReadToo()
    {
        RealWatching watching;
        QFile file(InboxFolder::file(QStringLiteral("a.json")));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        file.write(json("{'text':'open'}"));
        QTRY_COMPARE(texts(watching.store), QStringLiteral("open"));
    }

    void aFileOfAnotherTimeIsStillRemovedWhenItIsTaken()
    {
        InboxFolder::write(QStringLiteral("a.json"), json("{'text':'a'}"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("a"));
        const QDateTime before = watching.store.inboxItems.value().first().receivedAt;
        const timespec times[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
        const QByteArray path = QFile::encodeName(InboxFolder::file(QStringLiteral("a.json")));
        QCOMPARE(::utimensat(AT_FDCWD, path.constData(), times, 0), 0);
        QTRY_VERIFY(watching.store.inboxItems.value().first().receivedAt != before);
        watching.store.approveInboxItem(watching.store.inboxItems.value().first(), false);
        QVERIFY(InboxFolder::names().isEmpty());
    }

    void aFolderThatIsDeletedIsMadeAgainAndWatchedAgain()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("a"));
        QVERIFY(QDir(dataHome() + QStringLiteral("/Wrenfold")).removeRecursively());
        QTRY_COMPARE(texts(watching.store), QString());
        QVERIFY(QDir(InboxFolder::path()).exists());
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        QTRY_COMPARE(texts(watching.store), QStringLiteral("b"));
    }

    void aFolderThatIsMovedAwayIsMadeAgainAndWatchedAgain()
    {
        RealWatching watching;
        const QString elsewhere = dataHome() + QStringLiteral("/elsewhere");
        QVERIFY(QDir().rename(InboxFolder::path(), elsewhere));
        QTRY_VERIFY(QDir(InboxFolder::path()).exists());
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        QTRY_COMPARE(texts(watching.store), QStringLiteral("b"));
        QVERIFY(QDir(elsewhere).removeRecursively());
    }

    void aSecondNameForAFileThatWasWrittenElsewhereArrives()
    {
        RealWatching watching;
        const QString elsewhere = dataHome() + QStringLiteral("/written.json");
        putFile(elsewhere, json("{'text':'linked'}"));
        QCOMPARE(::link(QFile::encodeName(elsewhere).constData(),
                        QFile::encodeName(InboxFolder::file(QStringLiteral("a.json"))).constData()),
                 0);
        QTRY_COMPARE(texts(watching.store), QStringLiteral("linked"));
    }

    void aFolderWhoseParentIsMovedAwayIsMadeAgainAndWatchedAgain()
    {
        RealWatching watching;
        const QString elsewhere = dataHome() + QStringLiteral("/elsewhere");
        QVERIFY(QDir().rename(dataHome() + QStringLiteral("/Wrenfold"), elsewhere));
        QTRY_VERIFY(QDir(InboxFolder::path()).exists());
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        QTRY_COMPARE(texts(watching.store), QStringLiteral("b"));
        QVERIFY(QDir(elsewhere).removeRecursively());
    }

    void whatIsNoCandidateStandsInNobodysWay()
    {
        const QString deep = QStringLiteral("deep.json");
        InboxFolder::write(deep, json("{'text':'a','x':") + QByteArray(100'000, '[') +
                                     QByteArray(100'000, ']') + '}');
        InboxFolder::write(QStringLiteral("invalid.json"), json("{'text':'a") + '\xff' + json("'}"));
        InboxFolder::write(QStringLiteral("types.json"), json("{'text':'a','source':[1]}"));
        InboxFolder::write(QStringLiteral("huge.json"), QByteArray(2 << 20, ' ') + json("{'text':'a'}"));
        QVERIFY(QDir(InboxFolder::path()).mkdir(QStringLiteral("folder.json")));
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), InboxFolder::file(QStringLiteral("link.json"))));
        QCOMPARE(
            ::mkfifo(QFile::encodeName(InboxFolder::file(QStringLiteral("pipe.json"))).constData(), 0600), 0);
        InboxFolder::drop(QStringLiteral("z.json"), QStringLiteral("good"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("good"));
        InboxFolder::drop(QStringLiteral("y.json"), QStringLiteral("better"), 1);
        QTRY_COMPARE(texts(watching.store), QStringLiteral("good better"));
        QCOMPARE(InboxFolder::names().size(), 9);
    }

    void aHugeFileIsSkipped()
    {
        const QByteArray largest = json("{'text':'a','x':'") + QByteArray((1 << 20) - 19, 'x') + json("'}");
        QCOMPARE(largest.size(), 1 << 20);
        InboxFolder::write(QStringLiteral("a.json"), largest);
        InboxFolder::write(QStringLiteral("b.json"), largest + ' ');
        QVERIFY(InboxFile::decode(url(QStringLiteral("a.json"))));
        QVERIFY(!InboxFile::decode(url(QStringLiteral("b.json"))));
        QVERIFY(QFile::resize(InboxFolder::file(QStringLiteral("b.json")), qint64(1) << 40));
        QVERIFY(!InboxFile::decode(url(QStringLiteral("b.json"))));
    }

    void aNamedPipeHoldsNobodyUp()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(InboxFolder::file(QStringLiteral("a.json"))).constData(), 0600),
                 0);
        QVERIFY(!InboxFile::decode(url(QStringLiteral("a.json"))));
    }

    void aSocketIsSkipped()
    {
        const QByteArray name = QFile::encodeName(InboxFolder::file(QStringLiteral("a.json")));
        QCOMPARE(::mknod(name.constData(), S_IFSOCK | 0600, 0), 0);
        QVERIFY(!InboxFile::decode(url(QStringLiteral("a.json"))));
    }

    void aLinkIsNotFollowed_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("a device") << QStringLiteral("/dev/zero");
        QTest::newRow("a candidate elsewhere") << dataHome() + QStringLiteral("/candidate.json");
        QTest::newRow("nothing") << QStringLiteral("/nowhere.json");
    }
    void aLinkIsNotFollowed()
    {
        QFETCH(QString, target);
        putFile(dataHome() + QStringLiteral("/candidate.json"), json("{'text':'a'}"));
        QVERIFY(QFile::link(target, InboxFolder::file(QStringLiteral("a.json"))));
        QVERIFY(!InboxFile::decode(url(QStringLiteral("a.json"))));
    }

    void aFolderWithACandidatesNameIsSkipped()
    {
        QVERIFY(QDir(InboxFolder::path()).mkdir(QStringLiteral("x.json")));
        QVERIFY(!InboxFile::decode(url(QStringLiteral("x.json"))));
    }

    void aFileWithoutPermissionIsSkipped()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        QCOMPARE(::chmod(QFile::encodeName(InboxFolder::file(QStringLiteral("a.json"))).constData(), 0), 0);
        QCOMPARE(::chmod(QFile::encodeName(dataHome()).constData(), 0755), 0);
        QVERIFY(InboxFile::decode(url(QStringLiteral("a.json")))); // Root may.
        const RightsOfNobody rights;
        QVERIFY(!InboxFile::decode(url(QStringLiteral("a.json"))));
    }

    void aNameWithALineBreakIsReadAndRemoved()
    {
        const QString name = QStringLiteral("a\nb 買い物#%.json");
        InboxFolder::drop(name, QStringLiteral("a"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("a"));
        QCOMPARE(watching.store.inboxItems.value().first().id, name);
        watching.store.removeInboxFile(watching.store.inboxItems.value().first());
        QVERIFY(InboxFolder::names().isEmpty());
    }

    void aNameThatIsNoTextIsSkipped()
    {
        const QByteArray name = QFile::encodeName(InboxFolder::path()) + "/a\xff\xfe.json";
        FILE *file = std::fopen(name.constData(), "w");
        QVERIFY(file);
        std::fputs(json("{'text':'a'}").constData(), file);
        std::fclose(file);
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        RealWatching watching;
        QTRY_COMPARE(texts(watching.store), QStringLiteral("b"));
        QCOMPARE(::unlink(name.constData()), 0);
    }

    void tenThousandFilesAreOneReloadAndOneNotification()
    {
        constexpr int count = 10'000;
        RealWatching watching;
        const LogCapture log;
        const QString staging = dataHome() + QStringLiteral("/staging");
        QVERIFY(QDir().mkpath(staging));
        for (int i = 0; i < count; ++i)
            putFile(QStringLiteral("%1/%2.json").arg(staging).arg(i),
                    QString::fromUtf8(json("{'text':'t%1'}")).arg(i).toUtf8());
        for (int i = 0; i < count; ++i) {
            const QString name = QStringLiteral("%1.json").arg(i);
            QVERIFY(QFile::rename(staging + u'/' + name, InboxFolder::file(name)));
        }
        QTRY_COMPARE_WITH_TIMEOUT(watching.store.inboxItems.value().size(), count, 30'000);
        QCOMPARE(LogCapture::take(),
                 QStringList{QStringLiteral("info store: inbox reloaded items=10000 new=10000")});
        const QList<Notification> posted = watching.notificationCenter.take();
        QCOMPARE(posted.size(), 1);
        QCOMPARE(posted.first().title, QStringLiteral("📥 TODO候補が10000件届きました"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::InboxFaultsTest)
#include "inbox_faults_test.moc"
