// SPDX-License-Identifier: MIT
#include "ai/chat_completions.h"

#include "ai/ai_error.h"
#include "model/saved_state.h"
#include "model/uuid_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringEncoder>

namespace wrenfold {

namespace {

QString orNotSet(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("not set") : text;
}

ChatCompletionRequest request(const QString &model, const QString &system, const QString &user,
                              double temperature)
{
    return {.model = model,
            .messages = {{QStringLiteral("system"), system}, {QStringLiteral("user"), user}},
            .temperature = temperature};
}

const auto onlyJson = QStringLiteral("Return compact JSON only. No markdown.");

/// Far more lists and objects than any answer needs. Read, each takes many times its text's room, and newer versions of
/// Qt end the program where there is none left.
constexpr qsizetype mostContainers = 100'000;

QJsonObject objectIn(const QByteArray &bytes)
{
    if (bytes.count('[') + bytes.count('{') > mostContainers)
        throw AIError::decoding(QStringLiteral("too many lists and objects"));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw AIError::decoding(error.errorString());
    if (!document.isObject())
        throw AIError::decoding(QStringLiteral("no object"));
    return document.object();
}

QJsonArray arrayMember(const QJsonObject &object, const QString &name)
{
    const QJsonValue value = object.value(name);
    if (!value.isArray())
        throw AIError::decoding(QStringLiteral("no array called ") + name);
    return value.toArray();
}

QString stringMember(const QJsonObject &object, const QString &name)
{
    const QJsonValue value = object.value(name);
    if (!value.isString())
        throw AIError::decoding(QStringLiteral("no text called ") + name);
    return value.toString();
}

QStringList stringsMember(const QJsonObject &object, const QString &name)
{
    QStringList strings;
    for (const QJsonValue value : arrayMember(object, name)) {
        if (!value.isString())
            throw AIError::decoding(QStringLiteral("something else than a text in ") + name);
        strings.append(value.toString());
    }
    return strings;
}

ChatMessage messageIn(const QJsonValue &choice)
{
    const QJsonValue message = choice.toObject().value(QStringLiteral("message"));
    if (!message.isObject())
        throw AIError::decoding(QStringLiteral("a choice without a message"));
    return {stringMember(message.toObject(), QStringLiteral("role")),
            stringMember(message.toObject(), QStringLiteral("content"))};
}

} // namespace

QByteArray ChatCompletionRequest::toJson() const
{
    QJsonArray messageArray;
    for (const ChatMessage &message : messages)
        messageArray.append(QJsonObject{{QStringLiteral("role"), message.role},
                                        {QStringLiteral("content"), message.content}});
    QJsonArray pluginArray;
    for (const AutoRouterPlugin &plugin : plugins)
        pluginArray.append(
            QJsonObject{{QStringLiteral("id"), plugin.id},
                        {QStringLiteral("cost_quality_tradeoff"), plugin.costQualityTradeoff}});
    const QJsonObject object = {
        {QStringLiteral("model"), model.isEmpty() ? SavedState::defaultModel() : model},
        {QStringLiteral("messages"), messageArray},
        {QStringLiteral("plugins"), pluginArray},
        {QStringLiteral("temperature"), temperature},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

ChatCompletionRequest makePriorityRequest(const TaskList &tasks, const std::optional<QUuid> &activeTaskID,
                                          const QString &mediumGoal, const QString &model)
{
    QStringList lines;
    for (const TaskItem &task : tasks)
        lines.append(QStringLiteral("- id: ") + uuidText(task.id) + QStringLiteral("\n  title: ") +
                     task.title);
    const QString prompt =
        QStringLiteral("You are prioritizing a small ADHD-friendly TODO list.\n"
                       "Return only JSON in this exact shape: {\"ordered_ids\":[\"uuid-1\",\"uuid-2\"]}.\n"
                       "Put the highest priority task first.\n"
                       "Prefer tasks that are concrete, unblock work, and match the medium-term goal.\n"
                       "Keep every provided id exactly once.\n\n"
                       "Medium-term goal: ") +
        orNotSet(mediumGoal) + QStringLiteral("\nCurrent NOW task id: ") +
        orNotSet(activeTaskID ? uuidText(*activeTaskID) : QString()) + QStringLiteral("\n\nTODOs:\n") +
        lines.join(QLatin1Char('\n'));
    return request(model, onlyJson, prompt, 0.1);
}

ChatCompletionRequest makeSplitRequest(const TaskItem &task, const QString &mediumGoal, const QString &model)
{
    const QString prompt =
        QStringLiteral("Split this TODO into 3 to 6 concrete subtasks for an ADHD-friendly task list.\n"
                       "Return only JSON in this exact shape: {\"subtasks\":[\"subtask 1\",\"subtask 2\"]}.\n"
                       "Keep each subtask short and actionable.\n\n"
                       "Medium-term goal: ") +
        orNotSet(mediumGoal) + QStringLiteral("\nTODO: ") + task.title;
    return request(model, onlyJson, prompt, 0.2);
}

ChatCompletionRequest makeChatRequest(const QString &prompt, const TaskList &tasks, const QString &mediumGoal,
                                      const QString &model)
{
    QStringList lines;
    for (const TaskItem &task : tasks)
        lines.append(QStringLiteral("- ") + task.title);
    const QString user = QStringLiteral("User request:\n") + prompt +
                         QStringLiteral("\n\nMedium-term goal:\n") + orNotSet(mediumGoal) +
                         QStringLiteral("\n\nOpen TODOs:\n") +
                         (lines.isEmpty() ? QStringLiteral("No open TODOs.") : lines.join(QLatin1Char('\n')));
    return request(model,
                   QStringLiteral("You are an ADHD-friendly TODO copilot. Reply in concise Japanese. Prefer "
                                  "concrete next actions, small subtasks, and priority reasoning. Do not use "
                                  "markdown tables."),
                   user, 0.3);
}

QString completionContent(const QByteArray &body)
{
    QStringList contents;
    for (const QJsonValue choice : arrayMember(objectIn(body), QStringLiteral("choices")))
        contents.append(messageIn(choice).content);
    if (contents.isEmpty())
        throw AIError(OpenRouterSorterError::missingContent);
    return contents.first();
}

QByteArray extractedObject(const QString &content)
{
    const qsizetype first = content.indexOf(QLatin1Char('{'));
    const qsizetype last = content.lastIndexOf(QLatin1Char('}'));
    const bool hasBoth = first >= 0 && last >= 0;
    if (hasBoth && last < first)
        throw AIError(OpenRouterSorterError::missingContent);
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QByteArray bytes =
        encoder.encode(hasBoth ? QStringView(content).mid(first, last - first + 1) : QStringView(content));
    if (encoder.hasError()) // Half a surrogate pair, for instance.
        throw AIError(OpenRouterSorterError::missingContent);
    return bytes;
}

QList<QUuid> orderedIDs(const QString &content)
{
    QList<QUuid> ids;
    for (const QString &text :
         stringsMember(objectIn(extractedObject(content)), QStringLiteral("ordered_ids"))) {
        if (const std::optional<QUuid> id = uuidFromText(text))
            ids.append(*id);
    }
    return ids;
}

QStringList splitTitles(const QString &content)
{
    return stringsMember(objectIn(extractedObject(content)), QStringLiteral("subtasks"));
}

} // namespace wrenfold
