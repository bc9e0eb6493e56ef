// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace wrenfold {

struct ChatMessage
{
    QString role; ///< "system" or "user".
    QString content;

    friend bool operator==(const ChatMessage &, const ChatMessage &) = default;
};

struct AutoRouterPlugin
{
    QString id = QStringLiteral("auto-router");
    int costQualityTradeoff = 10;
};

/// The body of a request to the chat-completions service.
struct ChatCompletionRequest
{
    QString model; ///< Empty for the default one.
    QList<ChatMessage> messages;
    QList<AutoRouterPlugin> plugins = {AutoRouterPlugin()};
    double temperature = 0;

    [[nodiscard]] QByteArray toJson() const;
};

/// Asks for the tasks' identifiers, the most important first.
[[nodiscard]] ChatCompletionRequest makePriorityRequest(const TaskList &tasks,
                                                        const std::optional<QUuid> &activeTaskID,
                                                        const QString &mediumGoal, const QString &model);
/// Asks for three to six subtasks.
[[nodiscard]] ChatCompletionRequest makeSplitRequest(const TaskItem &task, const QString &mediumGoal,
                                                     const QString &model);
/// Asks anything, with the open tasks as context.
[[nodiscard]] ChatCompletionRequest makeChatRequest(const QString &prompt, const TaskList &tasks,
                                                    const QString &mediumGoal, const QString &model);

// What follows reads answers, and throws AIError for what it cannot read.

/// The text of the answer's first choice.
[[nodiscard]] QString completionContent(const QByteArray &body);

/// From the first brace to the last one, which leaves out fences and prose around an object; the whole text where
/// there are none.
[[nodiscard]] QByteArray extractedObject(const QString &content);

/// The answer to a makePriorityRequest(); what is no identifier is left out. May name tasks twice, and ones that were
/// not sent.
[[nodiscard]] QList<QUuid> orderedIDs(const QString &content);

/// The answer to a makeSplitRequest(), as it came.
[[nodiscard]] QStringList splitTitles(const QString &content);

} // namespace wrenfold
