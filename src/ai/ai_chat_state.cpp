// SPDX-License-Identifier: MIT
#include "ai/ai_chat_state.h"

#include "ai/ai_error.h"

#include <QHash>

namespace wrenfold {

namespace {

QString activityOf(AIChatRequest request)
{
    switch (request) {
    case AIChatRequest::Sort:
        return QStringLiteral("TODOの優先順位を検討中...");
    case AIChatRequest::Split:
        return QStringLiteral("NOWの分割案を検討中...");
    case AIChatRequest::Answer:
        break;
    }
    return QStringLiteral("AIが回答を作成中...");
}

QString failureOf(AIChatRequest request, const AIError &error)
{
    switch (request) {
    case AIChatRequest::Sort:
        return error.sorterError() == OpenRouterSorterError::notEnoughTasks
                   ? QStringLiteral("並べ替えるには未完了TODOが2つ以上必要です。")
                   : QStringLiteral("並べ替え案を作れませんでした。APIキーとモデル設定を確認してください。");
    case AIChatRequest::Split:
        return QStringLiteral("分割案を作れませんでした。APIキーとモデル設定を確認してください。");
    case AIChatRequest::Answer:
        break;
    }
    return QStringLiteral(
        "AIに接続できませんでした。設定画面でOpenRouter APIキーを取り込んでからもう一度試してください。");
}

bool isSort(const AIActionProposal &proposal)
{
    return std::holds_alternative<AIActionProposal::Sort>(proposal.action);
}

} // namespace

bool isSortIntent(const QString &text)
{
    return text.contains(QStringLiteral("並べ替")) || text.contains(QStringLiteral("ソート")) ||
           text.contains(QStringLiteral("優先")) ||
           text.contains(QStringLiteral("sort"), Qt::CaseInsensitive);
}

bool isSplitIntent(const QString &text)
{
    return text.contains(QStringLiteral("分割")) || text.contains(QStringLiteral("サブタスク")) ||
           text.contains(QStringLiteral("split"), Qt::CaseInsensitive);
}

AIChatRequest requestOf(const QString &text)
{
    if (isSortIntent(text))
        return AIChatRequest::Sort;
    return isSplitIntent(text) ? AIChatRequest::Split : AIChatRequest::Answer;
}

AIActionProposal sortProposal(const QList<QUuid> &ids, const TaskList &tasks)
{
    QHash<QUuid, QString> titles;
    for (const TaskItem &task : tasks)
        titles.insert(task.id, task.title);
    QStringList items;
    for (const QUuid &id : ids) {
        if (const auto title = titles.constFind(id); title != titles.constEnd())
            items.append(*title);
    }
    return {.id = QUuid::createUuid(),
            .title = QStringLiteral("この順番で並べ替えますか？"),
            .detail = QStringLiteral("目標とNOWを見て、上から着手しやすい順に並べています。"),
            .items = items,
            .confirmTitle = QStringLiteral("はい、反映"),
            .action = AIActionProposal::Sort{ids}};
}

AIActionProposal splitProposal(const TaskItem &parent, const QStringList &subtasks)
{
    return {.id = QUuid::createUuid(),
            .title = QStringLiteral("このサブタスクを追加しますか？"),
            .detail = QStringLiteral("「") + parent.title + QStringLiteral("」の下に追加します。"),
            .items = subtasks,
            .confirmTitle = QStringLiteral("はい、追加"),
            .action = AIActionProposal::Split{parent.id, subtasks}};
}

AIChatState::AIChatState()
{
    append(AIChatMessage::Role::assistant,
           QStringLiteral("TODOを見ながら、優先順位・分割・次にやる一手を一緒に整理できます。"));
}

std::optional<AIChatRequest> AIChatState::say(const QString &draft)
{
    const QString text = draft.trimmed();
    if (text.isEmpty() || isSending)
        return std::nullopt;
    append(AIChatMessage::Role::user, text);
    return requestOf(text);
}

bool AIChatState::begin(AIChatRequest request)
{
    if (isSending)
        return false;
    if (request != AIChatRequest::Answer)
        pendingProposal.reset();
    isSending = true;
    activityText = activityOf(request);
    return true;
}

void AIChatState::answer(const QString &text)
{
    end(text);
}

void AIChatState::propose(const AIActionProposal &proposal)
{
    pendingProposal = proposal;
    end(isSort(proposal) ? QStringLiteral("並べ替え案を作りました。内容を確認してから反映できます。")
                         : QStringLiteral("分割案を作りました。内容を確認してからTODOに追加できます。"));
}

void AIChatState::fail(AIChatRequest request, const AIError &error)
{
    end(failureOf(request, error));
}

void AIChatState::missTaskToSplit()
{
    if (!isSending)
        append(AIChatMessage::Role::assistant, QStringLiteral("NOWに固定されたTODOがまだありません。"));
}

void AIChatState::confirmProposal()
{
    append(AIChatMessage::Role::assistant, isSort(*pendingProposal)
                                               ? QStringLiteral("並べ替えをメイン画面に反映しました。")
                                               : QStringLiteral("サブタスクをメイン画面に追加しました。"));
    pendingProposal.reset();
}

void AIChatState::cancelProposal()
{
    pendingProposal.reset();
    append(AIChatMessage::Role::assistant, QStringLiteral("提案は反映せずに閉じました。"));
}

void AIChatState::append(AIChatMessage::Role role, const QString &text)
{
    messages.append({QUuid::createUuid(), role, text});
}

void AIChatState::end(const QString &text)
{
    append(AIChatMessage::Role::assistant, text);
    isSending = false;
    activityText.clear();
}

} // namespace wrenfold
