// SPDX-License-Identifier: MIT
#include "model/published.h"

#include "support/test_case.h"

#include <QStringList>

namespace wrenfold {

namespace {

/// Two persisted properties and a transient one, with a log of what happens to them.
struct Properties
{
    QStringList log;
    ChangeGroup group{[this] { log << QStringLiteral("save"); }};
    Setting<int> first{group, 0, Persistence::Persisted};
    Setting<int> second{group, 0, Persistence::Persisted};
    Setting<int> transient{group, 0};

    /// Logs each change under a name.
    [[nodiscard]] Subscription logged(Setting<int> &property, const QString &name)
    {
        return property.onChange([this, name](int value) { log << name + QString::number(value); });
    }
};

} // namespace

class PublishedTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theInitialValueIsNeitherSavedNorAnnounced()
    {
        Properties p;
        const Subscription subscription = p.logged(p.first, QStringLiteral("a"));
        QCOMPARE(p.first.value(), 0);
        QCOMPARE(p.log, QStringList());
    }

    void theValueIsTheOneLastAssignedInsideAnOperationToo()
    {
        Properties p;
        const ChangeGroup::Scope scope(p.group);
        p.first.set(1);
        QCOMPARE(p.first.value(), 1);
        p.first.set(2);
        QCOMPARE(p.first.value(), 2);
        QCOMPARE(p.log, QStringList());
    }

    void anAssignmentOfAnEqualValueAnnouncesAndSavesNothing()
    {
        Properties p;
        const Subscription subscription = p.logged(p.first, QStringLiteral("a"));
        p.first.set(0);
        QCOMPARE(p.log, QStringList());
        p.first.set(1);
        p.log.clear();
        p.first.set(1);
        QCOMPARE(p.log, QStringList());
    }

    void anAssignmentOutsideAnyScopeIsAnOperationByItself()
    {
        Properties p;
        const Subscription subscription = p.logged(p.first, QStringLiteral("a"));
        p.first.set(1);
        p.first.set(2);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a1 save a2"));
    }

    void setAndSetBackInOneOperationAnnouncesAndSavesNothing()
    {
        Properties p;
        const Subscription subscription = p.logged(p.first, QStringLiteral("a"));
        {
            const ChangeGroup::Scope scope(p.group);
            p.first.set(1);
            p.first.set(0);
        }
        QCOMPARE(p.log, QStringList());
        p.first.set(1);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a1"));
    }

    void setBackDoesNotSilenceTheOthersOfTheOperation()
    {
        Properties p;
        const Subscription first = p.logged(p.first, QStringLiteral("a"));
        const Subscription second = p.logged(p.second, QStringLiteral("b"));
        {
            const ChangeGroup::Scope scope(p.group);
            p.first.set(1);
            p.second.set(5);
            p.first.set(0);
        }
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save b5"));
    }

    void anOperationAnnouncesAndSavesOnceAfterItsLastAssignment()
    {
        Properties p;
        const Subscription subscription = p.logged(p.first, QStringLiteral("a"));
        {
            const ChangeGroup::Scope scope(p.group);
            p.first.set(1);
            p.second.set(1);
            p.first.set(2);
            p.first.set(3);
            QCOMPARE(p.log, QStringList());
        }
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a3"));
    }

    void anOperationIsSavedBeforeItIsAnnounced()
    {
        Properties p;
        QStringList atSave;
        ChangeGroup group([&] { atSave = p.log; });
        Setting<int> property(group, 0, Persistence::Persisted);
        const Subscription subscription =
            property.onChange([&p](int) { p.log << QStringLiteral("announced"); });
        property.set(1);
        QCOMPARE(atSave, QStringList());
        QCOMPARE(p.log, QStringList{QStringLiteral("announced")});
    }

    void whatIsSavedIsTheWholeOperation()
    {
        int savedFirst = -1;
        int savedSecond = -1;
        const Setting<int> *first = nullptr;
        const Setting<int> *second = nullptr;
        ChangeGroup group([&] {
            savedFirst = first->value();
            savedSecond = second->value();
        });
        Setting<int> a(group, 0, Persistence::Persisted);
        Setting<int> b(group, 0, Persistence::Persisted);
        first = &a;
        second = &b;
        {
            const ChangeGroup::Scope scope(group);
            a.set(1);
            b.set(2);
        }
        QCOMPARE(savedFirst, 1);
        QCOMPARE(savedSecond, 2);
    }

    void aSubscriberSeesTheWholeOperation()
    {
        Properties p;
        int seen = -1;
        const Subscription subscription = p.first.onChange([&](int) { seen = p.second.value(); });
        {
            const ChangeGroup::Scope scope(p.group);
            p.first.set(1);
            p.second.set(2);
        }
        QCOMPARE(seen, 2);
    }

    void transientPropertiesAreAnnouncedButNotSaved()
    {
        Properties p;
        const Subscription subscription = p.logged(p.transient, QStringLiteral("t"));
        p.transient.set(1);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("t1"));
    }

    void anOperationWithATransientAndAPersistedChangeIsSavedOnce()
    {
        Properties p;
        const Subscription subscription = p.logged(p.transient, QStringLiteral("t"));
        {
            const ChangeGroup::Scope scope(p.group);
            p.transient.set(1);
            p.first.set(1);
        }
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save t1"));
    }

    void subscribersAreCalledInTheOrderInWhichTheySubscribed()
    {
        Properties p;
        const Subscription first = p.logged(p.first, QStringLiteral("a"));
        Subscription second = p.logged(p.first, QStringLiteral("b"));
        const Subscription third = p.logged(p.first, QStringLiteral("c"));
        p.first.set(1);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a1 b1 c1"));
        p.log.clear();
        second = {};
        const Subscription fourth = p.logged(p.first, QStringLiteral("d"));
        p.first.set(2);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a2 c2 d2"));
    }

    void propertiesAnnounceInTheOrderOfTheirFirstAssignments()
    {
        Properties p;
        const Subscription first = p.logged(p.first, QStringLiteral("a"));
        const Subscription second = p.logged(p.second, QStringLiteral("b"));
        const Subscription third = p.logged(p.transient, QStringLiteral("t"));
        {
            const ChangeGroup::Scope scope(p.group);
            p.second.set(1);
            p.transient.set(1);
            p.first.set(1);
            p.second.set(2);
        }
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save b2 t1 a1"));
    }

    void onlyTheEndOfTheOutermostOfNestedOperationsCounts()
    {
        Properties p;
        const Subscription first = p.logged(p.first, QStringLiteral("a"));
        const Subscription second = p.logged(p.second, QStringLiteral("b"));
        {
            const ChangeGroup::Scope outer(p.group);
            p.first.set(1);
            {
                const ChangeGroup::Scope inner(p.group);
                p.second.set(1);
            }
            QCOMPARE(p.log, QStringList());
            p.first.set(2);
        }
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a2 b1"));
    }

    void anOperationWithoutAssignmentsDoesNothing()
    {
        Properties p;
        {
            const ChangeGroup::Scope scope(p.group);
        }
        QCOMPARE(p.log, QStringList());
    }

    void anAssignmentInsideASubscriberIsAnOperationOfItsOwnWithinTheAnnouncement()
    {
        Properties p;
        const Subscription assigning = p.first.onChange([&p](int value) {
            p.log << QStringLiteral("a%1").arg(value);
            p.second.set(value * 10);
            p.log << QStringLiteral("a%1 ends").arg(value);
        });
        const Subscription later = p.logged(p.first, QStringLiteral("later"));
        const Subscription second = p.logged(p.second, QStringLiteral("b"));
        p.first.set(1);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save a1 save b10 a1 ends later1"));
    }

    void aSubscriberThatAssignsToItsOwnPropertyShowsLaterOnesTheNewValueOnly()
    {
        Properties p;
        const Subscription bounding = p.first.onChange([&p](int value) {
            if (value > 9)
                p.first.set(9);
        });
        const Subscription later = p.logged(p.first, QStringLiteral("later"));
        p.first.set(50);
        QCOMPARE(p.first.value(), 9);
        // Told by both operations, and each time of the value as it is then.
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save save later9 later9"));
    }

    void anAnnouncedPropertyHandsOverTheValueAsItIsThen()
    {
        Properties p;
        const Subscription assigning = p.first.onChange([&p](int) { p.second.set(7); });
        const Subscription second = p.second.onChange([&p](int value) {
            p.log << QStringLiteral("b%1").arg(value);
            QCOMPARE(value, p.second.value());
        });
        {
            const ChangeGroup::Scope scope(p.group);
            p.first.set(1);
            p.second.set(1);
        }
        QVERIFY(!p.log.contains(QStringLiteral("b1")));
        QCOMPARE(p.log.last(), QStringLiteral("b7"));
    }

    void aSubscriptionEndsWithItsHandle()
    {
        Properties p;
        {
            const Subscription subscription = p.logged(p.first, QStringLiteral("a"));
            p.first.set(1);
        }
        p.log.clear();
        p.first.set(2);
        QCOMPARE(p.log, QStringList{QStringLiteral("save")});
    }

    void aHandleMayBeDestroyedInsideItsOwnCall()
    {
        Properties p;
        auto subscription = std::make_unique<Subscription>();
        const std::string kept = "a text long enough to be on the heap, not in the object";
        std::string read;
        *subscription = p.first.onChange([&subscription, &read, kept](int) {
            subscription.reset();
            read = kept; // What the call holds lives until it ends.
        });
        p.first.set(1);
        QCOMPARE(read, kept);
        read.clear();
        p.first.set(2);
        QVERIFY(read.empty());
    }

    void aHandleDestroyedByAnEarlierSubscriberIsNotCalledAnyMore()
    {
        Properties p;
        Subscription second;
        const Subscription first = p.first.onChange([&second](int) { second = {}; });
        second = p.logged(p.first, QStringLiteral("b"));
        p.first.set(1);
        QCOMPARE(p.log, QStringList{QStringLiteral("save")});
    }

    void aHandleMayOutliveItsProperty()
    {
        Subscription subscription;
        int calls = 0;
        {
            Properties p;
            subscription = p.first.onChange([&calls](int) { ++calls; });
            p.first.set(1);
        }
        QCOMPARE(calls, 1);
        subscription = {};
        QCOMPARE(calls, 1);
    }

    void watchCallsNowAndThenOnEachChange()
    {
        Properties p;
        p.first.set(3);
        QList<int> values;
        const Subscription subscription = p.first.watch([&values](int value) { values << value; });
        QCOMPARE(values, QList<int>{3});
        p.first.set(3);
        p.first.set(4);
        QCOMPARE(values, (QList<int>{3, 4}));
    }

    void aSubscriberAddedDuringAnAnnouncementIsCalledFromTheNextOneOn()
    {
        Properties p;
        Subscription added;
        const Subscription adding = p.first.onChange([&](int value) {
            if (value == 1)
                added = p.logged(p.first, QStringLiteral("added"));
        });
        p.first.set(1);
        QCOMPARE(p.log, QStringList{QStringLiteral("save")});
        p.log.clear();
        p.first.set(2);
        QCOMPARE(p.log.join(QLatin1Char(' ')), QStringLiteral("save added2"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PublishedTest)
#include "published_test.moc"
