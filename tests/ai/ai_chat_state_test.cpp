// SPDX-License-Identifier: MIT
#include "ai/ai_chat_state.h"
#include "ai/ai_error.h"
#include "model/store_on_fakes.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

const AIError unreachable = AIError::transport(QStringLiteral("no route"));

QString lastText(const AIChatState &state)
{
    return state.messages.constLast().text;
}

/// The idle state after a request of this kind: nothing runs, and this was said.
bool isIdle(const AIChatState &state, const char *text)
{
    return !state.isSending && state.activityText.isEmpty() && lastText(state) == u(text) &&
           state.messages.constLast().role == AIChatMessage::Role::assistant;
}

/// A state in which a sort is pending.
AIChatState withProposal()
{
    AIChatState state;
    state.propose(sortProposal({}, {}));
    return state;
}

} // namespace

/// The chat as a value: what is said, what is asked for, and what comes of it.
class AIChatStateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void itBeginsWithAGreeting()
    {
        const AIChatState state;
        QCOMPARE(state.messages.size(), 1);
        QVERIFY(isIdle(state, "TODOを見ながら、優先順位・分割・次にやる一手を一緒に整理できます。"));
        QVERIFY(!state.messages[0].id.isNull());
        QVERIFY(!state.pendingProposal);
    }

    void onlySpacesAreNotSent()
    {
        AIChatState state;
        for (const char *blank : {"", "   ", "\n\t ", "\u3000"})
            QVERIFY(!state.say(u(blank)));
        QCOMPARE(state.messages.size(), 1);
    }

    void whatIsSaidIsTrimmed()
    {
        AIChatState state;
        QCOMPARE(state.say(u("  何から？ \n")), AIChatRequest::Answer);
        QCOMPARE(lastText(state), u("何から？"));
        QCOMPARE(state.messages.constLast().role, AIChatMessage::Role::user);
    }

    void nothingIsSaidWhileARequestRuns()
    {
        AIChatState state;
        QVERIFY(state.begin(AIChatRequest::Answer));
        QVERIFY(!state.say(u("もう一つ")));
        QVERIFY(!state.begin(AIChatRequest::Sort));
        QCOMPARE(state.messages.size(), 1);
        QCOMPARE(state.activityText, u("AIが回答を作成中..."));
    }

    void eachMessageHasAnIdentifierOfItsOwn()
    {
        AIChatState state;
        state.answer(u("はい"));
        state.answer(u("はい"));
        QVERIFY(state.messages[1].id != state.messages[2].id);
    }

    void intents_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<AIChatRequest>("request");
        for (const char *text : {"並べ替えて", "ソートして", "優先順に", "Please SORT my list", "resorting"})
            QTest::newRow(text) << u(text) << AIChatRequest::Sort;
        for (const char *text : {"分割して", "サブタスクを作って", "SPLIT it", "Split"})
            QTest::newRow(text) << u(text) << AIChatRequest::Split;
        for (const char *text : {"次は？", "並び替え", "ｓｏｒｔ", "さぶたすく",
                                 "今のTODOを見て、最初にやるべき1つと理由を短く教えて"})
            QTest::newRow(text) << u(text) << AIChatRequest::Answer;
    }
    void intents()
    {
        QFETCH(const QString, text);
        QTEST(requestOf(text), "request");
    }

    void anEnglishMessageWithTheWordSortInCapitalsIsASortRequest()
    {
        QCOMPARE(requestOf(u("Please SORT my list")), AIChatRequest::Sort);
    }

    void aMessageThatMatchesBothIsASortRequest()
    {
        const QString both = u("優先するサブタスクは？");
        QVERIFY(isSortIntent(both));
        QVERIFY(isSplitIntent(both));
        QCOMPARE(requestOf(both), AIChatRequest::Sort);
    }

    void anAnswerIsShownAsItCame()
    {
        AIChatState state;
        QVERIFY(state.begin(AIChatRequest::Answer));
        state.answer({});
        QVERIFY(isIdle(state, ""));
    }

    void failures_data()
    {
        QTest::addColumn<AIChatRequest>("request");
        QTest::addColumn<QString>("activity");
        QTest::addColumn<QString>("text");
        QTest::newRow("answer") << AIChatRequest::Answer << u("AIが回答を作成中...")
                                << u("AIに接続できませんでした。設定画面でOpenRouter "
                                     "APIキーを取り込んでからもう一度試してください。");
        QTest::newRow("sort") << AIChatRequest::Sort << u("TODOの優先順位を検討中...")
                              << u("並べ替え案を作れませんでした。APIキーとモデル設定を確認してください。");
        QTest::newRow("split") << AIChatRequest::Split << u("NOWの分割案を検討中...")
                               << u("分割案を作れませんでした。APIキーとモデル設定を確認してください。");
    }
    void failures()
    {
        QFETCH(const AIChatRequest, request);
        QFETCH(const QString, text);
        AIChatState state;
        QVERIFY(state.begin(request));
        QVERIFY(state.isSending);
        QTEST(state.activityText, "activity");
        state.fail(request, unreachable);
        QVERIFY(isIdle(state, qPrintable(text)));
        QVERIFY(!lastText(state).contains(unreachable.description()));
    }

    void tooFewTasksHaveATextOfTheirOwn()
    {
        AIChatState state;
        QVERIFY(state.begin(AIChatRequest::Sort));
        state.fail(AIChatRequest::Sort, AIError(OpenRouterSorterError::notEnoughTasks));
        QVERIFY(isIdle(state, "並べ替えるには未完了TODOが2つ以上必要です。"));
    }

    void aProposalOfAnOrderNamesTheTasks()
    {
        const TaskList tasks = {madeTask(u("a")), madeTask(u("b"))};
        const AIActionProposal proposal = sortProposal({tasks[1].id, tasks[0].id}, tasks);
        QCOMPARE(proposal.title, u("この順番で並べ替えますか？"));
        QCOMPARE(proposal.detail, u("目標とNOWを見て、上から着手しやすい順に並べています。"));
        QCOMPARE(proposal.confirmTitle, u("はい、反映"));
        QCOMPARE(proposal.items, QStringList({u("b"), u("a")}));
    }

    void anUnknownIdentifierHasNoItemButIsPassedOn()
    {
        const TaskList tasks = {madeTask(u("a")), madeTask(u("b"))};
        const QList<QUuid> ids = {tasks[1].id, QUuid::createUuid(), tasks[0].id};
        const AIActionProposal proposal = sortProposal(ids, tasks);
        QCOMPARE(proposal.items, QStringList({u("b"), u("a")}));
        QCOMPARE(std::get<AIActionProposal::Sort>(proposal.action).ids, ids);
    }

    void aProposalOfASplitNamesTheTask()
    {
        const TaskItem task = madeTask(u("A & B_c <b>x</b>"));
        const AIActionProposal proposal = splitProposal(task, {u(" 一 "), u("二")});
        QCOMPARE(proposal.title, u("このサブタスクを追加しますか？"));
        QCOMPARE(proposal.detail, u("「A & B_c <b>x</b>」の下に追加します。"));
        QCOMPARE(proposal.confirmTitle, u("はい、追加"));
        QCOMPARE(proposal.items, QStringList({u(" 一 "), u("二")}));
        const auto expected = AIActionProposal::Split{task.id, proposal.items};
        QCOMPARE(std::get<AIActionProposal::Split>(proposal.action), expected);
    }

    void aProposalWaitsForTheUser()
    {
        AIChatState state;
        QVERIFY(state.begin(AIChatRequest::Split));
        state.propose(splitProposal(madeTask(u("a")), {u("b")}));
        QVERIFY(isIdle(state, "分割案を作りました。内容を確認してからTODOに追加できます。"));
        QVERIFY(state.pendingProposal);
        state.confirmProposal();
        QVERIFY(isIdle(state, "サブタスクをメイン画面に追加しました。"));
        QVERIFY(!state.pendingProposal);
    }

    void aConfirmedOrderIsReported()
    {
        AIChatState state = withProposal();
        QVERIFY(isIdle(state, "並べ替え案を作りました。内容を確認してから反映できます。"));
        state.confirmProposal();
        QVERIFY(isIdle(state, "並べ替えをメイン画面に反映しました。"));
        QVERIFY(!state.pendingProposal);
    }

    void aCancelledProposalIsReported()
    {
        AIChatState state = withProposal();
        state.cancelProposal();
        QVERIFY(isIdle(state, "提案は反映せずに閉じました。"));
        QVERIFY(!state.pendingProposal);
    }

    void aNewProposalRequestPutsThePendingOneAway()
    {
        for (const AIChatRequest request : {AIChatRequest::Sort, AIChatRequest::Split}) {
            AIChatState state = withProposal();
            QVERIFY(state.begin(request));
            QVERIFY(!state.pendingProposal);
        }
    }

    void aQuestionLeavesThePendingProposal()
    {
        AIChatState state = withProposal();
        QVERIFY(state.begin(AIChatRequest::Answer));
        QVERIFY(state.pendingProposal);
        state.answer(u("はい"));
        QVERIFY(state.pendingProposal);
    }

    void thatThereIsNoTaskToSplitIsNotSaidWhileARequestRuns()
    {
        AIChatState state;
        QVERIFY(state.begin(AIChatRequest::Answer));
        state.missTaskToSplit();
        QCOMPARE(state.messages.size(), 1);
    }

    void withoutATaskToSplitNothingIsPutAway()
    {
        AIChatState state = withProposal();
        state.missTaskToSplit();
        QVERIFY(isIdle(state, "NOWに固定されたTODOがまだありません。"));
        QVERIFY(state.pendingProposal);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::AIChatStateTest)
#include "ai_chat_state_test.moc"
