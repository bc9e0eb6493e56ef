// SPDX-License-Identifier: MIT
#include "ai/openrouter_task_sorter.h"

#include "ai/ai_error.h"
#include "ai/openrouter_api_key_provider.h"

#include <algorithm>
#include <utility>

namespace wrenfold {

namespace {

/// Whether the key fits into a line of the request's head. The key itself must not get into an error's text.
bool fitsIntoHeader(const QString &key)
{
    return std::none_of(key.begin(), key.end(),
                        [](QChar character) { return character.category() == QChar::Other_Control; });
}

} // namespace

OpenRouterTaskSorter::OpenRouterTaskSorter(ServiceOrigin origin, const HttpExchange::Limits &limits)
    : m_origin(std::move(origin))
    , m_limits(limits)
{
}

QFuture<QList<QUuid>> OpenRouterTaskSorter::prioritizedTaskIDs(const TaskList &tasks,
                                                               const std::optional<QUuid> &activeTaskID,
                                                               const QString &mediumGoal,
                                                               const QString &apiKeyOverride,
                                                               const QString &model)
{
    return ask(apiKeyOverride, makePriorityRequest(tasks, activeTaskID, mediumGoal, model), orderedIDs);
}

QFuture<QStringList> OpenRouterTaskSorter::splitTask(const TaskItem &task, const QString &mediumGoal,
                                                     const QString &apiKeyOverride, const QString &model)
{
    return ask(apiKeyOverride, makeSplitRequest(task, mediumGoal, model), splitTitles);
}

QFuture<QString> OpenRouterTaskSorter::chat(const QString &prompt, const TaskList &tasks,
                                            const QString &mediumGoal, const QString &apiKeyOverride,
                                            const QString &model)
{
    return ask(apiKeyOverride, makeChatRequest(prompt, tasks, mediumGoal, model),
               [](const QString &content) { return content.trimmed(); });
}

template<typename Read>
auto OpenRouterTaskSorter::ask(const QString &apiKeyOverride, const ChatCompletionRequest &request, Read read)
    -> QFuture<decltype(read(QString()))>
{
    using Result = decltype(read(QString()));
    try {
        const QString key = OpenRouterAPIKeyProvider::apiKey(apiKeyOverride);
        if (m_origin.error)
            throw AIError::transport(*m_origin.error);
        if (!fitsIntoHeader(key))
            throw AIError::transport(QStringLiteral("the key holds control characters"));
        // Read on another thread: an answer may be as long as 16 MiB.
        return HttpExchange::post(networkRequest(key), request.toJson(), m_limits, &m_exchanges)
            .then(QtFuture::Launch::Async,
                  [read](const QByteArray &body) { return read(completionContent(body)); });
    } catch (const AIError &error) {
        return QtFuture::makeExceptionalFuture<Result>(error);
    }
}

QNetworkRequest OpenRouterTaskSorter::networkRequest(const QString &apiKey) const
{
    QUrl url = m_origin.url;
    url.setPath(QStringLiteral("/api/v1/chat/completions"));
    QNetworkRequest request(url);
    request.setRawHeader("Authorization", "Bearer " + apiKey.toUtf8());
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    request.setRawHeader("X-OpenRouter-Title", "Wrenfold");
    return request;
}

} // namespace wrenfold
