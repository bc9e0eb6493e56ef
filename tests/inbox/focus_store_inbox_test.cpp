// SPDX-License-Identifier: MIT
#include "inbox/inbox_on_fakes.h"
#include "support/log_capture.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>

namespace wrenfold {

using namespace std::chrono_literals;

class FocusStoreInboxTest : public TestCase
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

    void theFolderIsMadeAndWatchedAtStart()
    {
        InboxFolder::remove();
        const LogCapture log;
        const Watching watching;
        QVERIFY(QFileInfo(InboxFolder::path()).isDir());
        QCOMPARE(watching.folderWatch.folder(), InboxFolder::path());
        const QStringList lines = LogCapture::take();
        QVERIFY(lines.contains(QStringLiteral("info store: inbox watcher started: ") + InboxFolder::path()));
        QVERIFY(lines.contains(QStringLiteral("info store: inbox reloaded items=0 new=0")));
    }

    void aStoreThatDoesNotMonitorLeavesTheFolderAlone()
    {
        InboxFolder::remove();
        const StoreOnFakes fakes(TaskList{});
        QVERIFY(!QFileInfo::exists(InboxFolder::path()));
        QVERIFY(fakes.folderWatch.folder().isEmpty());
    }

    void aFolderThatCannotBeWatchedIsStillReadWhenAsked()
    {
        FakePreferences preferences;
        FakeClock clock;
        QuietServices quiet;
        quiet.folderWatch().setCanWatch(false);
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(QStringLiteral("inbox watcher: cannot open ") + InboxFolder::path()));
        FocusStore store(quiet.with(preferences, clock), {.loadSavedState = false});
        clock.advance(0ms);
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        store.reloadInbox(false);
        clock.advance(0ms);
        QCOMPARE(texts(store), QStringLiteral("a"));
    }

    void whatWaitsAtStartIsListedButNotAnnounced()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        QCOMPARE(texts(watching.store), QStringLiteral("a"));
        watching.settle();
        QVERIFY(watching.takePosted().isEmpty());
    }

    void theExtensionIsReadInAnyCaseAndOthersAreIgnored()
    {
        InboxFolder::drop(QStringLiteral("a.JSON"), QStringLiteral("a"));
        InboxFolder::drop(QStringLiteral("b.txt"), QStringLiteral("b"));
        QCOMPARE(texts(Watching().store), QStringLiteral("a"));
    }

    void aTextOfBlanksIsIgnoredAndItsFileStays()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("  "));
        QCOMPARE(texts(Watching().store), QString());
        QCOMPARE(InboxFolder::names(), QStringList{QStringLiteral("a.json")});
    }

    void withoutADateTheFilesTimeDecidesTheOrder()
    {
        InboxFolder::write(QStringLiteral("a.json"), json("{'text':'late'}"));
        InboxFolder::write(QStringLiteral("b.json"), json("{'text':'early'}"));
        InboxFolder::write(QStringLiteral("c.json"),
                           json("{'text':'middle','receivedAt':'2026-01-02T00:00:00Z'}"));
        setModified(QStringLiteral("a.json"), QDate(2026, 1, 3));
        setModified(QStringLiteral("b.json"), QDate(2026, 1, 1));
        QCOMPARE(texts(Watching().store), QStringLiteral("early middle late"));
    }

    void equalDatesKeepTheOrderOfTheNames()
    {
        QStringList names;
        for (int i = 0; i < 60; ++i) // More than a sort that is not stable leaves in their order.
            names.append(QStringLiteral("%1").arg((i * 37) % 60, 2, 10, QLatin1Char('0')));
        for (const QString &name : names)
            InboxFolder::drop(name + QStringLiteral(".json"), name, name.toInt() % 2);
        names.sort();
        std::stable_partition(names.begin(), names.end(),
                              [](const QString &name) { return name.toInt() % 2 == 0; });
        QCOMPARE(texts(Watching().store), names.join(QLatin1Char(' ')));
    }

    void fiveFilesAtOnceAreOneReloadAndOneNotification()
    {
        Watching watching;
        const LogCapture log;
        for (int i = 5; i >= 1; --i) {
            InboxFolder::drop(QStringLiteral("%1.json").arg(i), QStringLiteral("text%1").arg(i), i);
            watching.folderWatch.change();
            watching.clock.advance(150ms);
        }
        QCOMPARE(LogCapture::take(), QStringList());
        watching.clock.advance(50ms);
        QCOMPARE(LogCapture::take(), QStringList{QStringLiteral("info store: inbox reloaded items=5 new=5")});
        QCOMPARE(watching.takePosted(), (QList<Notification>{{QStringLiteral("wrenfold.inbox.arrival"),
                                                              QStringLiteral("📥 TODO候補が5件届きました"),
                                                              QStringLiteral("text1")}}));
    }

    void aReloadThatFindsNothingNewPostsNothing()
    {
        Watching watching;
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        watching.settle();
        QCOMPARE(watching.takePosted().size(), 1);
        watching.settle();
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("changed"));
        watching.settle();
        QCOMPARE(texts(watching.store), QStringLiteral("changed"));
        QVERIFY(watching.takePosted().isEmpty());
    }

    void onlyTheNewOnesAreCounted()
    {
        InboxFolder::drop(QStringLiteral("old.json"), QStringLiteral("old"));
        Watching watching;
        const LogCapture log;
        InboxFolder::drop(QStringLiteral("new.json"), QStringLiteral("new"), 1);
        watching.settle();
        const Notification posted{QStringLiteral("wrenfold.inbox.arrival"),
                                  QStringLiteral("📥 TODO候補が1件届きました"), QStringLiteral("new")};
        QCOMPARE(watching.takePosted(), QList{posted});
        QVERIFY(LogCapture::take().contains(QStringLiteral("info store: inbox reloaded items=2 new=1")));
    }

    void markupInACandidateReachesTheNotificationAsItIs()
    {
        Watching watching;
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("A & B_c <b>x</b>"));
        watching.settle();
        QCOMPARE(watching.takePosted().constFirst().body, QStringLiteral("A & B_c <b>x</b>"));
    }

    void dismissingDeletesTheFileAndTheSameNameIsNewAgain()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        watching.store.removeInboxFile(watching.item(0));
        QVERIFY(InboxFolder::names().isEmpty());
        QCOMPARE(texts(watching.store), QString());
        watching.settle();
        QVERIFY(watching.takePosted().isEmpty());
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        watching.settle();
        QCOMPARE(texts(watching.store), QStringLiteral("a"));
        QCOMPARE(watching.takePosted().size(), 1);
    }

    void theSameNameWrittenAgainBeforeTheReloadIsNewToo()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        watching.store.removeInboxFile(watching.item(0));
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        watching.settle();
        QCOMPARE(watching.takePosted().size(), 1);
    }

    void aFileThatSomebodyElseRemovesLeavesTheList()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        QFile::remove(InboxFolder::file(QStringLiteral("a.json")));
        watching.settle();
        QCOMPARE(texts(watching.store), QString());
    }

    void aFolderThatCannotBeListedLeavesTheListAsItIs()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        InboxFolder::remove();
        watching.settle();
        QCOMPARE(texts(watching.store), QStringLiteral("a"));
    }

    void aFolderThatIsTakenAwayIsMadeAndWatchedAgain()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        InboxFolder::remove();
        watching.folderWatch.lose();
        QCOMPARE(watching.folderWatch.folder(), InboxFolder::path());
        watching.clock.advance(200ms);
        QCOMPARE(texts(watching.store), QString());
    }

    void aFolderThatCannotBeMadeAtOnceIsTriedAgain()
    {
        Watching watching;
        watching.folderWatch.setCanWatch(false);
        watching.folderWatch.lose();
        watching.clock.advance(60s);
        QVERIFY(watching.folderWatch.folder().isEmpty());
        watching.folderWatch.setCanWatch(true);
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        watching.clock.advance(10s + 200ms);
        QCOMPARE(watching.folderWatch.folder(), InboxFolder::path());
        QCOMPARE(texts(watching.store), QStringLiteral("a"));
        QCOMPARE(watching.takePosted().size(), 1);
    }

    void aRemovedStoreTellsNothingToItsWatch()
    {
        FakeFolderWatch folderWatch;
        {
            StoreOnFakes fakes{TaskList{}};
            const FocusStore store({fakes.preferences, fakes.clock, fakes.notifier, fakes.sounds,
                                    fakes.sorter, folderWatch, fakes.loginItem},
                                   {.loadSavedState = false});
            QVERIFY(!folderWatch.folder().isEmpty());
        }
        QVERIFY(folderWatch.folder().isEmpty());
    }

private:
    static void setModified(const QString &name, const QDate &date)
    {
        QFile file(InboxFolder::file(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime(date, QTime(0, 0), QTimeZone::utc()),
                                 QFileDevice::FileModificationTime));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreInboxTest)
#include "focus_store_inbox_test.moc"
