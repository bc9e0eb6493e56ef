// SPDX-License-Identifier: MIT
#pragma once

#include "ai/chat_completions.h"
#include "ai/http_exchange.h"
#include "ai/service_origin.h"

#include <QFuture>
#include <QObject>
#include <QUuid>

namespace wrenfold {

/// The program's one network client. It keeps nothing from one request to the next, several may run at once, and every
/// failure is an AIError in the future. When this object goes, its futures are cancelled.
class OpenRouterTaskSorter
{
public:
    explicit OpenRouterTaskSorter(ServiceOrigin origin, const HttpExchange::Limits &limits = {});

    /// The tasks' identifiers in the service's order; see orderedIDs().
    [[nodiscard]] QFuture<QList<QUuid>>
    prioritizedTaskIDs(const TaskList &tasks, const std::optional<QUuid> &activeTaskID,
                       const QString &mediumGoal, const QString &apiKeyOverride, const QString &model);
    /// Titles of subtasks, as they came.
    [[nodiscard]] QFuture<QStringList> splitTask(const TaskItem &task, const QString &mediumGoal,
                                                 const QString &apiKeyOverride, const QString &model);
    /// The answer to a question about the tasks, trimmed; it may be empty.
    [[nodiscard]] QFuture<QString> chat(const QString &prompt, const TaskList &tasks,
                                        const QString &mediumGoal, const QString &apiKeyOverride,
                                        const QString &model);

private:
    /// Sends the request and hands on the text of the answer.
    template<typename Read>
    auto ask(const QString &apiKeyOverride, const ChatCompletionRequest &request, Read read)
        -> QFuture<decltype(read(QString()))>;
    [[nodiscard]] QNetworkRequest networkRequest(const QString &apiKey) const;

    const ServiceOrigin m_origin;
    const HttpExchange::Limits m_limits;
    QObject m_exchanges; ///< Parent of those under way, which end with it.
};

} // namespace wrenfold
