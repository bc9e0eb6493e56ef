// SPDX-License-Identifier: MIT
#include "ai/openrouter_task_sorter.h"

#include "ai/ai_error.h"
#include "ai/openrouter_api_key_provider.h"

#include <QNetworkAccessManager>

#include <utility>

namespace wrenfold {

OpenRouterTaskSorter::OpenRouterTaskSorter(ServiceOrigin origin, const HttpExchange::Limits &limits)
    : m_origin(std::move(origin))
    , m_limits(limits)
{
}

OpenRouterTaskSorter::~OpenRouterTaskSorter() = default;

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
        if (!m_manager)
            m_manager = std::make_unique<QNetworkAccessManager>();
        // Read on another thread: an answer may be as long as 16 MiB.
        return HttpExchange::post(*m_manager, networkRequest(key), request.toJson(), m_limits)
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
