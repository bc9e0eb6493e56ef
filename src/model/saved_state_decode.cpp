// SPDX-License-Identifier: MIT
#include "model/saved_state.h"
#include "model/uuid_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wrenfold {

namespace {

// decodeValue() reads one value into `out`; false when its type is wrong.

bool decodeValue(const QJsonValue &value, bool &out)
{
    out = value.toBool();
    return value.isBool();
}

bool decodeValue(const QJsonValue &value, QString &out)
{
    out = value.toString();
    return value.isString();
}

/// A number that stands for an integer, however it is written.
bool decodeValue(const QJsonValue &value, qint64 &out)
{
    // What is no integer of 64 bits answers with whatever it is given. Asking toDouble() instead would round the
    // largest ones out of range.
    out = value.toInteger(0);
    return out == value.toInteger(1);
}

bool decodeValue(const QJsonValue &value, Timestamp &out)
{
    out.secondsSince2001 = value.toDouble();
    return value.isDouble();
}

bool decodeValue(const QJsonValue &value, QUuid &out)
{
    const std::optional<QUuid> id = uuidFromText(value.toString());
    out = id.value_or(QUuid());
    return id.has_value();
}

bool decodeValue(const QJsonValue &value, TaskQuadrant &out)
{
    const std::optional<TaskQuadrant> quadrant = quadrantFromRawValue(value.toString());
    out = quadrant.value_or(out);
    return quadrant.has_value();
}

/// A provider of a later version counts as none chosen.
bool decodeValue(const QJsonValue &value, AIProvider &out)
{
    out = aiProviderFromRawValue(value.toString()).value_or(out);
    return value.isString();
}

bool decodeValue(const QJsonValue &value, TaskItem &out);
bool decodeValue(const QJsonValue &value, BlockedApp &out);
template<typename T>
bool decodeValue(const QJsonValue &value, QList<T> &out);

template<typename T>
bool decodeValue(const QJsonValue &value, std::optional<T> &out)
{
    return decodeValue(value, out.emplace());
}

template<typename T>
bool decodeValue(const QJsonValue &value, QList<T> &out)
{
    const QJsonArray array = value.toArray();
    out.clear();
    out.reserve(array.size());
    for (const QJsonValue element : array) {
        if (!decodeValue(element, out.emplaceBack()))
            return false;
    }
    return value.isArray();
}

/// Reads the members of one object; whether all went well is asked at the end.
class MemberReader
{
public:
    explicit MemberReader(const QJsonValue &value)
        : m_object(value.toObject())
        , m_isValid(value.isObject())
    {
    }

    [[nodiscard]] bool isValid() const { return m_isValid; }

    template<typename T>
    void required(const char *key, T &out)
    {
        m_isValid = m_isValid && decodeValue(m_object.value(QLatin1String(key)), out);
    }

    /// Leaves `out` as it is when the member is absent or null.
    template<typename T>
    void optional(const char *key, T &out)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        if (!value.isUndefined() && !value.isNull())
            m_isValid = m_isValid && decodeValue(value, out);
    }

private:
    QJsonObject m_object;
    bool m_isValid;
};

bool decodeValue(const QJsonValue &value, TaskItem &out)
{
    MemberReader reader(value);
    reader.required("id", out.id);
    reader.required("title", out.title);
    reader.required("isDone", out.isDone);
    reader.required("createdAt", out.createdAt);
    reader.optional("completedAt", out.completedAt);
    reader.optional("parentID", out.parentID);
    reader.optional("isExpanded", out.isExpanded);
    reader.optional("isDeferred", out.isDeferred);
    reader.optional("quadrant", out.quadrant);
    return reader.isValid();
}

bool decodeValue(const QJsonValue &value, BlockedApp &out)
{
    MemberReader reader(value);
    reader.required("id", out.id);
    reader.required("name", out.name);
    reader.optional("bundleIdentifier", out.bundleIdentifier);
    reader.optional("path", out.path);
    return reader.isValid();
}

/// Documents of the first versions list the blocked applications by name only.
void decodeBlockedApps(MemberReader &reader, QList<BlockedApp> &blockedApps)
{
    std::optional<QStringList> names;
    std::optional<QList<BlockedApp>> apps;
    reader.optional("blockedAppNames", names);
    reader.optional("blockedApps", apps);
    if (apps) {
        blockedApps = *apps;
    } else if (names) {
        blockedApps.clear();
        for (const QString &name : *names)
            blockedApps.append({name, name, std::nullopt, std::nullopt});
    }
}

bool isRetiredModel(const QString &model)
{
    return model == QLatin1String("openrouter/auto") ||
           model == QLatin1String("deepseek/deepseek-chat-v3.1:free") ||
           model == QLatin1String("deepseek/deepseek-chat-v3.1");
}

bool decodeState(const QJsonValue &value, SavedState &out)
{
    MemberReader reader(value);
    reader.required("tasks", out.tasks);
    reader.optional("activeTaskID", out.activeTaskID);
    reader.optional("mediumGoal", out.mediumGoal);
    reader.optional("isTodoListHidden", out.isTodoListHidden);
    reader.optional("isFocusGuardEnabled", out.isFocusGuardEnabled);
    decodeBlockedApps(reader, out.blockedApps);
    reader.optional("selectedAIProvider", out.selectedAIProvider);
    reader.optional("apiKeyOverride", out.apiKeyOverride);
    reader.optional("openRouterModel", out.openRouterModel);
    reader.optional("codexIntegrationEnabled", out.codexIntegrationEnabled);
    reader.optional("chatGPTIntegrationEnabled", out.chatGPTIntegrationEnabled);
    reader.optional("ollamaIntegrationEnabled", out.ollamaIntegrationEnabled);
    reader.optional("ollamaBaseURL", out.ollamaBaseURL);
    reader.optional("autoSortAfterAdding", out.autoSortAfterAdding);
    reader.optional("isCompletedSectionExpanded", out.isCompletedSectionExpanded);
    reader.optional("isDeferredSectionExpanded", out.isDeferredSectionExpanded);
    reader.optional("isQuadrantBoardVisible", out.isQuadrantBoardVisible);
    reader.required("isHardPinned", out.isHardPinned);
    reader.optional("workDurationMinutes", out.workDurationMinutes);
    reader.optional("breakDurationMinutes", out.breakDurationMinutes);
    reader.optional("launchAtLogin", out.launchAtLogin);
    reader.optional("sprintNudgesEnabled", out.sprintNudgesEnabled);
    reader.optional("alwaysShowMenubarTimer", out.alwaysShowMenubarTimer);
    if (isRetiredModel(out.openRouterModel))
        out.openRouterModel = SavedState::defaultModel();
    return reader.isValid();
}

} // namespace

std::optional<TaskItem> decodeTask(const QJsonValue &value)
{
    TaskItem task;
    return decodeValue(value, task) ? std::optional(task) : std::nullopt;
}

std::optional<SavedState> decodeSavedState(const QByteArray &document)
{
    const QJsonDocument json = QJsonDocument::fromJson(document);
    SavedState state;
    if (!json.isObject() || !decodeState(json.object(), state))
        return std::nullopt;
    return state;
}

} // namespace wrenfold
