// SPDX-License-Identifier: MIT
#include "inbox/inbox_on_fakes.h"
#include "support/test_case.h"

#include <QRegularExpression>

namespace wrenfold {

using namespace std::chrono_literals;

/// What becomes of candidates: tasks, or nothing.
class FocusStoreApprovalTest : public TestCase
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

    void approvingMakesATaskAndRemovesTheFile()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching(TaskList{madeTask(QStringLiteral("now"))});
        watching.store.setActive(watching.store.tasks.value().first());
        watching.store.approveInboxItem(watching.item(0), false);
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("now a"));
        QCOMPARE(watching.store.activeTask()->title, QStringLiteral("now"));
        QCOMPARE(texts(watching.store), QString());
        QVERIFY(InboxFolder::names().isEmpty());
        QCOMPARE(watching.store.sortStatus.value(), QStringLiteral("InboxからTODOに追加しました"));
        watching.clock.advance(6s);
        QCOMPARE(watching.store.sortStatus.value(), QString());
    }

    void approvingAndPinningMakesItNow()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching(TaskList{madeTask(QStringLiteral("now"))});
        watching.store.approveInboxItem(watching.item(0), true);
        QCOMPARE(watching.store.activeTask()->title, QStringLiteral("a"));
    }

    void anOpenSubtaskComposerIsNeitherUsedNorClosed()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        Watching watching(TaskList{madeTask(QStringLiteral("parent"))});
        const TaskItem parent = watching.store.tasks.value().first();
        watching.store.beginAddSubtask(parent);
        watching.store.approveInboxItem(watching.item(0), false);
        watching.store.approveAllInboxItems();
        for (const TaskItem &task : watching.store.tasks.value())
            QVERIFY(task.isTopLevel());
        QCOMPARE(watching.store.subtaskComposerParentID.value(), parent.id);
    }

    void approvingAllNeverChangesNow()
    {
        for (const char *name : {"a", "b", "c"})
            InboxFolder::drop(QString::fromLatin1(name) + QStringLiteral(".json"), QString::fromLatin1(name));
        Watching watching(TaskList{madeTask(QStringLiteral("now"))});
        watching.store.setActive(watching.store.tasks.value().first());
        const int saves = watching.preferences.writeCount();
        watching.store.approveAllInboxItems();
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("now a b c"));
        QCOMPARE(watching.store.activeTask()->title, QStringLiteral("now"));
        QVERIFY(InboxFolder::names().isEmpty());
        QCOMPARE(watching.store.sortStatus.value(), QStringLiteral("Inboxの3件をTODOに追加しました"));
        QCOMPARE(watching.preferences.writeCount(), saves + 1);
    }

    void approvingOrDismissingAllOfNothingDoesNothing()
    {
        Watching watching;
        watching.store.approveAllInboxItems();
        watching.store.dismissAllInboxItems();
        QCOMPARE(watching.store.sortStatus.value(), QString());
        QVERIFY(watching.store.tasks.value().isEmpty());
    }

    void dismissingAllDeletesEveryFile()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        Watching watching;
        watching.store.dismissAllInboxItems();
        QVERIFY(InboxFolder::names().isEmpty());
        QCOMPARE(texts(watching.store), QString());
        QCOMPARE(watching.store.sortStatus.value(), QStringLiteral("Inboxの2件を削除しました"));
    }

    void whileNothingCanBeSavedAnApprovedCandidateKeepsItsFileAndStaysATaskOnly()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        watching.preferences.failNextWrites(1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^saving failed: ")));
        watching.store.approveInboxItem(watching.item(0), false);
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("a"));
        QCOMPARE(texts(watching.store), QString());
        QCOMPARE(InboxFolder::names(), QStringList{QStringLiteral("a.json")});
        watching.settle();
        QCOMPARE(texts(watching.store), QString());
        QVERIFY(watching.takePosted().isEmpty());

        watching.store.mediumGoal.set(QStringLiteral("saved"));
        QVERIFY(InboxFolder::names().isEmpty());
        watching.settle();
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("a"));
    }

    void whatWasWrittenInAFilesPlaceMeanwhileIsNotDeleted()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        Watching watching;
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("new"));
        watching.store.approveInboxItem(watching.item(0), false);
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("a"));
        watching.settle();
        QCOMPARE(texts(watching.store), QStringLiteral("new"));
        QCOMPARE(watching.takePosted().size(), 1);
    }

    void eachApprovedCandidateIsOneStepToUndo()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        Watching watching;
        watching.store.approveAllInboxItems();
        watching.store.undo();
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("a"));
        watching.store.undo();
        QCOMPARE(words(watching.store.tasks.value()), QString());
        watching.store.redo();
        watching.store.redo();
        QCOMPARE(words(watching.store.tasks.value()), QStringLiteral("a b"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreApprovalTest)
#include "focus_store_approval_test.moc"
