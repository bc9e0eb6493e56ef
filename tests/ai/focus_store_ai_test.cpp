// SPDX-License-Identifier: MIT
#include "ai/ai_error.h"
#include "ai/one_answer.h"
#include "inbox/inbox_on_fakes.h"
#include "model/store_on_fakes.h"
#include "model/uuid_text.h"
#include "support/http_server.h"
#include "support/test_case.h"

#include <QPointer>
#include <QTcpSocket>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

/// A store whose service is a server of the test's, which answers when it is told.
struct Desk
{
    HttpServer server;
    QList<QPointer<QTcpSocket>> waiting;
    std::optional<StoreOnFakes> fakes;

    explicit Desk(const TaskList &tasks, std::optional<QUuid> activeTaskID = std::nullopt)
    {
        server.setAnswer([this](QTcpSocket &socket) { waiting.append(&socket); });
        fakes.emplace(tasks, activeTaskID, ServiceOrigin{server.origin(), {}});
        store().apiKeyOverride.set(u("key"));
    }

    [[nodiscard]] FocusStore &store() { return fakes->store; }
    [[nodiscard]] bool waitForRequest(int count = 1)
    {
        return QTest::qWaitFor([&] { return waiting.size() == count; });
    }
    /// Answers the request that came last, and waits for the end of the AI's work.
    [[nodiscard]] bool answer(const HttpServer::Answer &answer)
    {
        answer(*waiting.last());
        return QTest::qWaitFor([&] { return !store().isSortingTasks.value(); });
    }
    [[nodiscard]] bool answerIds(const QList<QUuid> &ids)
    {
        QStringList texts;
        for (const QUuid &id : ids)
            texts.append(uuidText(id));
        return answer(HttpServer::completion(
            QStringLiteral(R"({"ordered_ids":["%1"]})").arg(texts.join(QStringLiteral("\",\"")))));
    }
    [[nodiscard]] bool answerTitles(const QStringList &titles)
    {
        return answer(HttpServer::completion(
            QStringLiteral(R"({"subtasks":["%1"]})").arg(titles.join(QStringLiteral("\",\"")))));
    }
    /// What asks for an order of all tasks, which are open and on the top level.
    [[nodiscard]] QByteArray sortRequest()
    {
        return makePriorityRequest(store().tasks.value(), store().activeTaskID.value(),
                                   store().mediumGoal.value(), store().openRouterModel.value())
            .toJson();
    }
    [[nodiscard]] QString titles() { return fakes->titles(); }
    [[nodiscard]] QString status() { return store().sortStatus.value(); }
};

} // namespace

/// Sort, split and the automatic sort on the store, against a server.
class FocusStoreAITest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        qunsetenv("OPENROUTER_API_KEY");
    }

    void aSortAppliesTheOrderAsOneStep()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        Desk desk({a, b});
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.store().isSortingTasks.value());
        QCOMPARE(desk.status(), u("整列中..."));
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerIds({b.id, a.id}));
        QCOMPARE(desk.titles(), u("b a"));
        QCOMPARE(desk.status(), u("優先順に整列しました"));
        desk.fakes->clock.advance(6s);
        QCOMPARE(desk.status(), QString());
        desk.store().undo();
        QCOMPARE(desk.titles(), u("a b"));
        QCOMPARE(desk.status(), u("優先順に並べ替えを元に戻しました"));
        QVERIFY(!desk.store().canUndo.value());
    }

    void aSortSendsTheOpenTopLevelTasksInListOrder()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        Desk desk(
            {a, madeSubtask(u("child"), a), b, done(madeTask(u("done"))), deferred(madeTask(u("later")))},
            b.id);
        desk.store().mediumGoal.set(u("goal"));
        desk.store().openRouterModel.set(u("model"));
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        QCOMPARE(desk.server.requests().first().body,
                 makePriorityRequest({a, b}, b.id, u("goal"), u("model")).toJson());
        QVERIFY(desk.answerIds({}));
    }

    void withOneOpenTaskTheSortEndsWithoutARequest()
    {
        Desk desk({madeTask(u("a")), done(madeTask(u("b"))), deferred(madeTask(u("c")))});
        desk.store().prioritizeTasksWithLLM();
        QTRY_VERIFY(!desk.store().isSortingTasks.value());
        QCOMPARE(desk.status(), u("整列できませんでした"));
        QCOMPARE(desk.server.connectionCount(), 0);
        QCOMPARE(oneAnswer(desk.store().proposePriorityOrderWithLLM()), QStringList{u("! notEnoughTasks")});
    }

    void pressingSortTwiceQuicklySendsOneRequest()
    {
        Desk desk({madeTask(u("a")), madeTask(u("b"))});
        desk.store().prioritizeTasksWithLLM();
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.answerIds({}));
        QCOMPARE(desk.server.requests().size(), 1);
    }

    void aSplitWhileASortRunsIsIgnoredAndTheReverse()
    {
        Desk desk({madeTask(u("a")), madeTask(u("b"))});
        desk.store().prioritizeTasksWithLLM();
        desk.store().splitTaskWithLLM(desk.fakes->task(u("a")));
        QCOMPARE(desk.status(), u("整列中..."));
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerIds({}));
        desk.store().splitTaskWithLLM(desk.fakes->task(u("a")));
        desk.store().prioritizeTasksWithLLM();
        QCOMPARE(desk.status(), u("分割中..."));
        QVERIFY(desk.waitForRequest(2));
        QVERIFY(desk.answerTitles({u("1")}));
        QCOMPARE(desk.server.requests().size(), 2);
    }

    void tenThousandIdentifiersAreCopedWith()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        Desk desk({a, b});
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        QList<QUuid> ids;
        for (int i = 0; i < 10'000; ++i)
            ids.append(i == 5'000 ? b.id : i == 9'999 ? a.id : QUuid::createUuid());
        QVERIFY(desk.answerIds(ids));
        QCOMPARE(desk.titles(), u("b a"));
        QCOMPARE(desk.status(), u("優先順に整列しました"));
    }

    void withoutAKeyBothFail()
    {
        Desk desk({madeTask(u("a")), madeTask(u("b"))});
        desk.store().apiKeyOverride.set({});
        desk.store().prioritizeTasksWithLLM();
        QTRY_COMPARE(desk.status(), u("整列できませんでした"));
        QVERIFY(!desk.store().isSortingTasks.value());
        desk.store().splitTaskWithLLM(desk.fakes->task(u("a")));
        QTRY_COMPARE(desk.status(), u("分割できませんでした"));
        QVERIFY(!desk.store().isSortingTasks.value());
        QCOMPARE(desk.server.connectionCount(), 0);
    }

    void repeatedUnknownAndMissingIdentifiersLoseNoTask()
    {
        const TaskItem a = madeTask(u("a"), 1);
        const TaskItem b = madeTask(u("b"), 2);
        const TaskItem c = madeTask(u("c"), 3);
        Desk desk({a, b, c});
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerIds({c.id, QUuid::createUuid(), c.id, b.id, c.id}));
        QCOMPARE(desk.titles(), u("c b a"));
        QCOMPARE(desk.status(), u("優先順に整列しました"));
    }

    void tasksThatCameAndWentMeanwhileAreCopedWith()
    {
        const TaskItem a = madeTask(u("a"), 1);
        const TaskItem b = madeTask(u("b"), 2);
        Desk desk({a, b});
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        desk.store().deleteTask(a);
        desk.store().addTask(u("new"), false);
        QVERIFY(desk.answerIds({b.id, a.id}));
        QCOMPARE(desk.titles(), u("b new"));
    }

    void aSplitInsertsTheSubtasksAsOneStep()
    {
        const TaskItem a = madeTask(u("a"));
        Desk desk({a, madeSubtask(u("old"), a), madeSubtask(u("older"), a), madeTask(u("b"))});
        desk.store().splitTaskWithLLM(a);
        QCOMPARE(desk.status(), u("分割中..."));
        QVERIFY(desk.waitForRequest());
        QCOMPARE(desk.server.requests().first().body,
                 makeSplitRequest(a, {}, SavedState::defaultModel()).toJson());
        QVERIFY(desk.answerTitles({u("1"), u(" 2 ")}));
        QCOMPARE(desk.titles(), u("a 1 2 b"));
        QVERIFY(!desk.fakes->task(u("a")).isExpanded);
        QCOMPARE(desk.status(), u("サブタスクを追加しました"));
        QCOMPARE(words(desk.fakes->saved().tasks), u("a 1 2 b"));
        QCOMPARE(desk.fakes->undoName(), u("サブタスクを分割"));
        desk.store().undo();
        QCOMPARE(desk.titles(), u("a old older b"));
        QVERIFY(!desk.store().canUndo.value());
    }

    void anAnswerOfBlanksChangesNothingButStillShowsTheSuccess()
    {
        const TaskItem a = madeTask(u("a"));
        Desk desk({a});
        desk.store().splitTaskWithLLM(a);
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerTitles({u(" "), QString()}));
        QCOMPARE(desk.titles(), u("a"));
        QCOMPARE(desk.status(), u("サブタスクを追加しました"));
        QVERIFY(!desk.store().canUndo.value());
    }

    void anAnswerOfEightInsertsTheFirstSix()
    {
        const TaskItem a = madeTask(u("a"));
        Desk desk({a});
        desk.store().splitTaskWithLLM(a);
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerTitles(u("1 2 3 4 5 6 7 8").split(u' ')));
        QCOMPARE(desk.titles(), u("a 1 2 3 4 5 6"));
    }

    void aTaskDeletedDuringItsSplitStaysDeletedAndTheSuccessIsShown()
    {
        const TaskItem a = madeTask(u("a"));
        Desk desk({a, madeTask(u("b"))});
        desk.store().splitTaskWithLLM(a);
        QVERIFY(desk.waitForRequest());
        desk.store().deleteTask(a);
        QVERIFY(desk.answerTitles({u("1")}));
        QCOMPARE(desk.titles(), u("b"));
        QCOMPARE(desk.status(), u("サブタスクを追加しました"));
    }

    void theNowTaskIsNotTouchedEvenWhenItWasReplaced()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem child = madeSubtask(u("child"), a);
        Desk desk({a, child}, child.id);
        desk.store().splitTaskWithLLM(a);
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerTitles({u("1")}));
        QCOMPARE(desk.store().activeTaskID.value(), child.id);
        QVERIFY(!desk.store().activeTask());
    }

    void titlesFromOutsideStayPlainText()
    {
        const TaskItem a = madeTask(u("a"));
        Desk desk({a});
        desk.store().splitTaskWithLLM(a);
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerTitles({u("A & B_c <b>x</b>")}));
        QCOMPARE(desk.store().tasks.value().last().title, u("A & B_c <b>x</b>"));
    }

    void proposalsTouchNeitherTheListNorTheStatus()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        Desk desk({a, b});
        const QFuture<QList<QUuid>> order = desk.store().proposePriorityOrderWithLLM();
        QVERIFY(desk.waitForRequest());
        QVERIFY(!desk.store().isSortingTasks.value());
        HttpServer::completion(QStringLiteral(R"({"ordered_ids":["%1"]})").arg(uuidText(b.id)))(
            *desk.waiting.last());
        QTRY_VERIFY(order.isFinished());
        QCOMPARE(order.result(), QList<QUuid>{b.id});
        const QFuture<QStringList> titles = desk.store().proposeSubtasksWithLLM(a);
        QVERIFY(desk.waitForRequest(2));
        HttpServer::completion(QStringLiteral(R"({"subtasks":[" 1 ",""]})"))(*desk.waiting.last());
        QCOMPARE(oneAnswer(titles), (QStringList{u(" 1 "), QString()}));
        QCOMPARE(desk.titles(), u("a b"));
        QCOMPARE(desk.status(), QString());
        QVERIFY(!desk.store().canUndo.value());
    }

    void addingATopLevelTaskSortsWhenThatIsWanted()
    {
        Desk desk({madeTask(u("a"))});
        desk.store().autoSortAfterAdding.set(true);
        desk.store().addTask(u("b"), false);
        QCOMPARE(words(desk.fakes->saved().tasks), u("a b"));
        QCOMPARE(desk.status(), u("整列中..."));
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerIds({desk.fakes->task(u("b")).id}));
        QCOMPARE(desk.titles(), u("b a"));
    }

    void severalTasksAddedAtOnceStartOneSortOfThemAll_data()
    {
        QTest::addColumn<TaskList>("before");
        QTest::newRow("one task before") << TaskList{madeTask(u("a"))};
        QTest::newRow("an empty list") << TaskList();
    }

    void severalTasksAddedAtOnceStartOneSortOfThemAll()
    {
        QFETCH(TaskList, before);
        Desk desk(before);
        desk.store().autoSortAfterAdding.set(true);
        for (const char *title : {"b", "c", "d"})
            desk.store().addTask(u(title), false);
        QVERIFY(desk.waitForRequest());
        QCOMPARE(desk.store().tasks.value().size(), before.size() + 3);
        QCOMPARE(desk.server.requests().first().body, desk.sortRequest());
        QVERIFY(desk.answerIds({desk.fakes->task(u("d")).id}));
        QCOMPARE(desk.store().tasks.value().first().title, u("d"));
        QCOMPARE(desk.status(), u("優先順に整列しました"));
        QCOMPARE(desk.server.requests().size(), 1);
    }

    void allApprovedCandidatesAreSortedTogether()
    {
        const InboxFolder folder;
        InboxFolder::drop(u("1.json"), u("b"), 1);
        InboxFolder::drop(u("2.json"), u("c"), 2);
        InboxFolder::drop(u("3.json"), u("d"), 3);
        Desk desk({madeTask(u("a"))});
        desk.store().reloadInbox(false);
        desk.fakes->clock.advance(0ms);
        QCOMPARE(desk.store().inboxItems.value().size(), 3);
        desk.store().autoSortAfterAdding.set(true);
        desk.store().approveAllInboxItems();
        QVERIFY(desk.waitForRequest());
        QCOMPARE(desk.store().tasks.value().size(), 4);
        QCOMPARE(desk.server.requests().first().body, desk.sortRequest());
        QVERIFY(desk.answerIds({}));
        QCOMPARE(desk.server.requests().size(), 1);
    }

    void addingASubtaskOrNothingNeverSorts()
    {
        const TaskItem a = madeTask(u("a"));
        Desk desk({a, madeTask(u("b"))});
        desk.store().autoSortAfterAdding.set(true);
        desk.store().addTask(u("child"), false, a.id);
        desk.store().addSubtask(a.id, u("another"));
        desk.store().beginAddSubtask(a);
        desk.store().addTask(u("third"), false);
        desk.store().addTask(u(" "), false);
        QVERIFY(!desk.store().isSortingTasks.value());
        desk.store().autoSortAfterAdding.set(false);
        desk.store().addTask(u("c"), false);
        QVERIFY(!desk.store().isSortingTasks.value());
        QCOMPARE(desk.server.connectionCount(), 0);
    }

    void anotherProviderStillAsksTheOneService()
    {
        Desk desk({madeTask(u("a")), madeTask(u("b"))});
        desk.store().selectedAIProvider.set(AIProvider::ollama);
        desk.store().ollamaIntegrationEnabled.set(true);
        desk.store().prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        QVERIFY(desk.answerIds({}));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreAITest)
#include "focus_store_ai_test.moc"
