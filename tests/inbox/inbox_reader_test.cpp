// SPDX-License-Identifier: MIT
#include "inbox/inbox_on_fakes.h"
#include "inbox/inbox_reader.h"
#include "support/test_case.h"

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

/// What a reader has said, one line a reading: how many candidates, and whether to announce.
struct Reading
{
    FakeClock clock;
    QStringList done;
    QList<InboxItem> items;
    InboxReader reader{
        clock, [this](const QList<InboxItem> &read, bool notify) {
            items = read;
            done.append(
                QStringLiteral("%1 %2").arg(read.size()).arg(QLatin1String(notify ? "loud" : "quiet")));
        }};

    [[nodiscard]] bool has(const QString &id) const
    {
        return std::any_of(items.begin(), items.end(),
                           [&id](const InboxItem &item) { return item.id == id; });
    }
};

constexpr int many = 3000; ///< So many that no machine reads them in one go.

} // namespace

/// Readings that are under way when something else happens.
class InboxReaderTest : public TestCase
{
    Q_OBJECT

    std::optional<InboxFolder> m_folder;

    static QString name(int i) { return QStringLiteral("%1.json").arg(i, 4, 10, QLatin1Char('0')); }
    static void dropMany()
    {
        for (int i = 0; i < many; ++i)
            InboxFolder::drop(name(i), QStringLiteral("t"));
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder.emplace();
    }
    void cleanup() { m_folder.reset(); }

    void aFewFilesAreReadAtOnce()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Reading reading;
        reading.reader.read(false);
        QCOMPARE(reading.done, QStringList{QStringLiteral("1 quiet")});
        QCOMPARE(reading.clock.pendingCalls(), 0);
    }

    void manyFilesAreReadInSlices()
    {
        dropMany();
        Reading reading;
        reading.reader.read(true);
        QVERIFY(reading.done.isEmpty());
        reading.clock.advance(0ms);
        QCOMPARE(reading.done, QStringList{QStringLiteral("3000 loud")});
    }

    void callsDuringAReadingLeadToOneMoreAndItIsLoudIfOneOfThemWas()
    {
        dropMany();
        Reading reading;
        reading.reader.read(false);
        reading.reader.read(false);
        reading.reader.read(true);
        reading.reader.read(false);
        reading.clock.advance(0ms);
        QCOMPARE(reading.done, (QStringList{QStringLiteral("3000 quiet"), QStringLiteral("3000 loud")}));
    }

    void whatIsTakenCareOfDuringAReadingIsNotInIt()
    {
        dropMany();
        Reading reading;
        reading.reader.read(false);
        QVERIFY(reading.done.isEmpty());
        reading.reader.forget(name(0));        // Read already.
        reading.reader.forget(name(many - 1)); // Not yet.
        reading.clock.advance(0ms);
        QCOMPARE(reading.done, QStringList{QStringLiteral("2998 quiet")});
        QVERIFY(!reading.has(name(0)) && !reading.has(name(many - 1)));
        reading.reader.read(false);
        reading.clock.advance(0ms);
        QVERIFY(reading.has(name(0)));
    }

    void aReaderThatGoesInTheMiddleSaysNothing()
    {
        dropMany();
        FakeClock clock;
        int done = 0;
        {
            InboxReader reader(clock, [&done](const QList<InboxItem> &, bool) { ++done; });
            reader.read(true);
        }
        clock.advance(1s);
        QCOMPARE(done, 0);
    }

    void aFolderThatGoesInTheMiddleGivesWhatWasRead()
    {
        dropMany();
        Reading reading;
        reading.reader.read(false);
        QVERIFY(reading.done.isEmpty());
        InboxFolder::remove();
        reading.clock.advance(0ms);
        QCOMPARE(reading.done.size(), 1);
        QVERIFY(reading.items.size() < many);
        reading.reader.read(false); // Cannot be listed.
        reading.clock.advance(1s);
        QCOMPARE(reading.done.size(), 1);
    }

    void anApprovedCandidateDoesNotComeBackByAReadingUnderWay()
    {
        dropMany();
        StoreOnFakes fakes{TaskList{}};
        fakes.store.reloadInbox(false);
        fakes.clock.advance(0ms);
        QCOMPARE(fakes.store.inboxItems.value().size(), many);
        fakes.store.reloadInbox(false);
        const InboxItem first = fakes.store.inboxItems.value().first();
        fakes.store.approveInboxItem(first, false);
        fakes.clock.advance(0ms);
        QCOMPARE(fakes.store.inboxItems.value().size(), many - 1);
        QVERIFY(!fakes.store.inboxItems.value().contains(first));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::InboxReaderTest)
#include "inbox_reader_test.moc"
