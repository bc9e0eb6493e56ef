// SPDX-License-Identifier: MIT
#include "ai/chat_desk.h"
#include "look/busy_indicator.h"
#include "look/text_button.h"
#include "support/test_case.h"

#include <QJsonDocument>

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

const QString sortButton = u("並べ替え");
const QString splitButton = u("NOW分割");
const QString nextButton = u("次の一手");

TaskList threeTasks()
{
    return {madeTask(u("a")), madeTask(u("b")), madeTask(u("c"))};
}

/// The text that the user's side of a request carries.
QString userContent(const HttpServer::Request &request)
{
    return QJsonDocument::fromJson(request.body)[QLatin1String("messages")][1][QLatin1String("content")]
        .toString();
}

} // namespace

/// The chat's flows, from the keyboard and the pointer to a server and back.
class AIChatViewTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everythingIsThereAtFirst()
    {
        const ChatDesk desk;
        QVERIFY(labelSaying(desk.view, u("AI Copilot")));
        for (const QString &name : {sortButton, splitButton, nextButton, u("送信")})
            QVERIFY(buttonNamed(desk.view, name)->isEnabled());
        QCOMPARE(desk.field()->placeholderText(), u("AIに相談"));
        QVERIFY(desk.field()->hasFocus());
        QVERIFY(desk.bubble(u("TODOを見ながら、優先順位・分割・次にやる一手を一緒に整理できます。")));
        QVERIFY(!desk.card());
        QVERIFY(shown<BusyIndicator>(desk.view).isEmpty());
        QCOMPARE(faultsOfButtons(desk.view), QStringList());
    }

    void aQuestionIsAnswered()
    {
        ChatDesk desk({madeTask(u("a")), done(madeTask(u("b"))), deferred(madeTask(u("c")))});
        desk.fakes.store.mediumGoal.set(u("goal"));
        desk.say(u(" 次は？ "));
        QVERIFY(desk.bubble(u("次は？")));
        QVERIFY(labelSaying(desk.view, u("AIが回答を作成中...")));
        QCOMPARE(shown<BusyIndicator>(desk.view).size(), 1);
        for (const QString &name : {sortButton, splitButton, nextButton})
            QVERIFY(!buttonNamed(desk.view, name)->isEnabled());
        QVERIFY(desk.answer(HttpServer::completion(u("  aから。\n"))));
        QVERIFY(desk.bubble(u("aから。")));
        QVERIFY(!labelSaying(desk.view, u("AIが回答を作成中...")));
        for (const QString &name : {sortButton, splitButton, nextButton})
            QVERIFY(buttonNamed(desk.view, name)->isEnabled());
        QCOMPARE(desk.server.requests().size(), 1);
        const QByteArray expected = makeChatRequest(u("次は？"), {desk.fakes.task(u("a"))}, u("goal"),
                                                    desk.fakes.store.openRouterModel.value())
                                        .toJson();
        QCOMPARE(desk.server.requests()[0].body, expected);
    }

    void openSubtasksAreSentInListOrder()
    {
        const TaskItem parent = madeTask(u("a"));
        ChatDesk desk(
            {parent, madeSubtask(u("a1"), parent), done(madeSubtask(u("a2"), parent)), madeTask(u("b"))});
        desk.say(u("次は？"));
        QVERIFY(desk.waitForRequest());
        QVERIFY(userContent(desk.server.requests()[0]).endsWith(u("Open TODOs:\n- a\n- a1\n- b")));
    }

    void earlierMessagesAreNotSent()
    {
        ChatDesk desk;
        desk.say(u("一つ目の質問"));
        QVERIFY(desk.answer(HttpServer::completion(u("一つ目の答え"))));
        desk.say(u("二つ目の質問"));
        QVERIFY(desk.waitForRequest(2));
        const QByteArray body = desk.server.requests()[1].body;
        QVERIFY(body.contains(u("二つ目の質問").toUtf8()));
        QVERIFY(!body.contains(u("一つ目").toUtf8()));
    }

    void sendingOnlySpacesDoesNothing()
    {
        ChatDesk desk;
        desk.say(u(" \u3000 "));
        QCOMPARE(desk.state().messages.size(), 1);
        QCOMPARE(desk.field()->text(), u(" \u3000 "));
        QCOMPARE(desk.server.connectionCount(), 0);
    }

    void sendingWhileARequestRunsKeepsTheDraft()
    {
        ChatDesk desk;
        desk.say(u("一つ目"));
        QVERIFY(desk.waitForRequest());
        desk.say(u("二つ目"));
        QCOMPARE(desk.field()->text(), u("二つ目"));
        QCOMPARE(desk.state().messages.size(), 2);
        QVERIFY(desk.answer(HttpServer::completion(u("はい"))));
        QCOMPARE(desk.field()->text(), u("二つ目"));
        QTest::keyClick(desk.field(), Qt::Key_Return);
        QVERIFY(desk.waitForRequest(2));
        QCOMPARE(desk.field()->text(), QString());
    }

    void returnDoesNotSendWhileAnInputMethodComposes()
    {
        ChatDesk desk;
        QInputMethodEvent composing(u("にほんご"), {});
        QCoreApplication::sendEvent(desk.field(), &composing);
        QTest::keyClick(desk.field(), Qt::Key_Return);
        QCOMPARE(desk.state().messages.size(), 1);
        type(desk.field(), u("日本語"));
        QTest::keyClick(desk.field(), Qt::Key_Return);
        QVERIFY(desk.bubble(u("日本語")));
    }

    void theSendButtonSends()
    {
        ChatDesk desk;
        type(desk.field(), u("次は？"));
        QVERIFY(click(desk.view, u("送信")));
        QVERIFY(desk.bubble(u("次は？")));
        QVERIFY(desk.field()->hasFocus());
    }

    void theNextStepIsAskedAsAQuestion()
    {
        ChatDesk desk;
        QVERIFY(click(desk.view, nextButton));
        QVERIFY(desk.bubble(u("今のTODOを見て、最初にやるべき1つと理由を短く教えて")));
        QCOMPARE(desk.field()->text(), QString());
        QCOMPARE(desk.state().activityText, u("AIが回答を作成中..."));
        QVERIFY(desk.waitForRequest());
    }

    void aQuickActionByKeyboardLeavesTheFocusInTheComposer()
    {
        ChatDesk desk;
        PaintedButton *button = buttonNamed(desk.view, nextButton);
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Space);
        QVERIFY(desk.state().isSending);
        QVERIFY(desk.field()->hasFocus());
    }

    void aFailedQuestionShowsTheFixedText()
    {
        ChatDesk desk;
        desk.say(u("次は？"));
        QVERIFY(desk.answer(HttpServer::answer(401, "no such key")));
        QCOMPARE(desk.lastText(), u("AIに接続できませんでした。設定画面でOpenRouter "
                                    "APIキーを取り込んでからもう一度試してください。"));
    }

    void anOrderIsProposedAndConfirmed()
    {
        ChatDesk desk(threeTasks());
        const QList<QUuid> ids = {desk.fakes.task(u("c")).id, desk.fakes.task(u("a")).id,
                                  desk.fakes.task(u("b")).id};
        desk.say(u("Please SORT these"));
        QVERIFY(labelSaying(desk.view, u("TODOの優先順位を検討中...")));
        QVERIFY(desk.answer(ChatDesk::order(ids)));
        QVERIFY(desk.card());
        for (const char *text :
             {"この順番で並べ替えますか？", "目標とNOWを見て、上から着手しやすい順に並べています。", "1. c",
              "2. a", "3. b"})
            QVERIFY2(labelSaying(*desk.card(), u(text)), text);
        QCOMPARE(desk.fakes.titles(), u("a b c"));
        QVERIFY(click(*desk.card(), u("はい、反映")));
        QCOMPARE(desk.fakes.titles(), u("c a b"));
        QCOMPARE(desk.fakes.store.sortStatus.value(), u("AIの提案を反映しました"));
        QCOMPARE(desk.lastText(), u("並べ替えをメイン画面に反映しました。"));
        QVERIFY(!desk.card());
        desk.fakes.clock.advance(std::chrono::seconds(60));
        QCOMPARE(desk.fakes.store.sortStatus.value(), u("AIの提案を反映しました"));
        desk.fakes.store.undo();
        QCOMPARE(desk.fakes.titles(), u("a b c"));
    }

    void aCancelledProposalChangesNothing()
    {
        ChatDesk desk(threeTasks());
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.answer(ChatDesk::order({desk.fakes.task(u("c")).id})));
        const QByteArray before = desk.fakes.document();
        QVERIFY(click(*desk.card(), u("キャンセル")));
        QCOMPARE(desk.lastText(), u("提案は反映せずに閉じました。"));
        QVERIFY(!desk.card());
        QCOMPARE(desk.fakes.document(), before);
        QVERIFY(!desk.fakes.store.canUndo.value());
    }

    void anOrderThatNamesAnUnknownTaskShowsOneItemFewerAndPassesAll()
    {
        ChatDesk desk(threeTasks());
        const QUuid unknown = QUuid::createUuid();
        const QList<QUuid> ids = {desk.fakes.task(u("b")).id, unknown, desk.fakes.task(u("a")).id};
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.answer(ChatDesk::order(ids)));
        QCOMPARE(desk.state().pendingProposal->items, QStringList({u("b"), u("a")}));
        QCOMPARE(std::get<AIActionProposal::Sort>(desk.state().pendingProposal->action).ids, ids);
        QVERIFY(click(*desk.card(), u("はい、反映")));
        QCOMPARE(desk.fakes.titles(), u("b a c"));
    }

    void withOneOpenTaskThereIsNothingToSort()
    {
        ChatDesk desk({madeTask(u("a")), done(madeTask(u("b")))});
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.waitUntilIdle());
        QCOMPARE(desk.lastText(), u("並べ替えるには未完了TODOが2つ以上必要です。"));
        QCOMPARE(desk.server.connectionCount(), 0);
    }

    void aFailedOrderShowsTheFixedText()
    {
        ChatDesk desk(threeTasks());
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.answer(HttpServer::answer(500, "")));
        QCOMPARE(desk.lastText(), u("並べ替え案を作れませんでした。APIキーとモデル設定を確認してください。"));
        QVERIFY(!desk.card());
    }

    void aSplitIsProposedAndConfirmed()
    {
        const TaskItem now = madeTask(awkward());
        ChatDesk desk({now}, now.id);
        QVERIFY(click(desk.view, splitButton));
        QVERIFY(labelSaying(desk.view, u("NOWの分割案を検討中...")));
        QVERIFY(desk.answer(ChatDesk::subtasks({u("一つ目"), u(" "), u("二つ目 & <i>y</i>")})));
        QVERIFY(labelSaying(*desk.card(), u("「") + awkward() + u("」の下に追加します。")));
        QVERIFY(labelSaying(*desk.card(), u("3. 二つ目 & <i>y</i>")));
        QVERIFY(click(*desk.card(), u("はい、追加")));
        QCOMPARE(titlesOf(desk.fakes.store.childTasks(now.id)),
                 QStringList({u("一つ目"), u("二つ目 & <i>y</i>")}));
        QCOMPARE(desk.fakes.store.sortStatus.value(), u("AIのサブタスクを追加しました"));
        QCOMPARE(desk.lastText(), u("サブタスクをメイン画面に追加しました。"));
        QVERIFY(!desk.card());
    }

    void withoutANowTaskNothingIsSent()
    {
        ChatDesk desk(threeTasks());
        QVERIFY(click(desk.view, splitButton));
        QCOMPARE(desk.lastText(), u("NOWに固定されたTODOがまだありません。"));
        QVERIFY(!desk.state().isSending);
        QCOMPARE(desk.server.connectionCount(), 0);
    }

    void aSplitOfATaskThatWasDeletedMeanwhileIsStillReported()
    {
        const TaskItem now = madeTask(u("a"));
        ChatDesk desk({now, madeTask(u("b"))}, now.id);
        QVERIFY(click(desk.view, splitButton));
        QVERIFY(desk.answer(ChatDesk::subtasks({u("一つ目"), u("二つ目")})));
        desk.fakes.store.deleteTask(now);
        const QByteArray before = desk.fakes.document();
        QVERIFY(click(*desk.card(), u("はい、追加")));
        QCOMPARE(desk.fakes.document(), before);
        QCOMPARE(desk.lastText(), u("サブタスクをメイン画面に追加しました。"));
    }

    void aFailedSplitShowsTheFixedText()
    {
        const TaskItem now = madeTask(u("a"));
        ChatDesk desk({now}, now.id);
        desk.say(u("分割して"));
        QVERIFY(desk.answer(HttpServer::completion(u("no object"))));
        QCOMPARE(desk.lastText(), u("分割案を作れませんでした。APIキーとモデル設定を確認してください。"));
    }

    void aNewProposalTakesThePlaceOfAPendingOne()
    {
        ChatDesk desk(threeTasks(), std::nullopt);
        desk.fakes.store.setActive(desk.fakes.task(u("a")));
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.answer(ChatDesk::order({desk.fakes.task(u("c")).id})));
        QVERIFY(desk.card());
        QVERIFY(click(desk.view, splitButton));
        QVERIFY(!desk.card());
        QVERIFY(desk.answer(ChatDesk::subtasks({u("一つ目")}), 2));
        QVERIFY(labelSaying(*desk.card(), u("1. 一つ目")));
        QVERIFY(!labelSaying(*desk.card(), u("1. c")));
    }

    void aQuestionLeavesAPendingProposalInPlace()
    {
        ChatDesk desk(threeTasks());
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.answer(ChatDesk::order({desk.fakes.task(u("c")).id})));
        desk.say(u("なぜ？"));
        QVERIFY(desk.card());
        QVERIFY(desk.answer(HttpServer::completion(u("はい")), 2));
        QVERIFY(desk.card());
    }

    void aProposalMayBeAskedForWhileThePanelSorts()
    {
        ChatDesk desk(threeTasks());
        desk.fakes.store.prioritizeTasksWithLLM();
        QVERIFY(desk.waitForRequest());
        QVERIFY(click(desk.view, sortButton));
        QVERIFY(desk.waitForRequest(2));
    }

    void aChatThatIsClosedMidRequestHasTheAnswerOnReturn()
    {
        ChatDesk desk;
        desk.say(u("次は？"));
        QVERIFY(desk.waitForRequest());
        desk.view.hide();
        QVERIFY(desk.answer(HttpServer::completion(u("aから。"))));
        desk.view.show();
        QVERIFY(desk.bubble(u("次は？")));
        QVERIFY(desk.bubble(u("aから。")));
    }

    void aChatThatGoesMidRequestIsHarmless()
    {
        QPointer<QTcpSocket> socket;
        {
            ChatDesk desk;
            desk.say(u("次は？"));
            QVERIFY(desk.waitForRequest());
            socket = desk.waiting.last();
        }
        QVERIFY(!socket);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::AIChatViewTest)
#include "ai_chat_view_test.moc"
