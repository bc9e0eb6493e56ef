// SPDX-License-Identifier: MIT
#include "model/json_writer.h"
#include "model/saved_state.h"

namespace wrenfold {

namespace {

void writeTask(JsonWriter &json, const TaskItem &task)
{
    json.beginObject();
    json.key("id");
    json.uuid(task.id);
    json.key("title");
    json.string(task.title);
    json.key("isDone");
    json.boolean(task.isDone);
    json.key("createdAt");
    json.number(task.createdAt.secondsSince2001);
    if (task.completedAt) {
        json.key("completedAt");
        json.number(task.completedAt->secondsSince2001);
    }
    if (task.parentID) {
        json.key("parentID");
        json.uuid(*task.parentID);
    }
    json.key("isExpanded");
    json.boolean(task.isExpanded);
    json.key("isDeferred");
    json.boolean(task.isDeferred);
    json.key("quadrant");
    json.string(rawValue(task.quadrant));
    json.endObject();
}

void writeBlockedApp(JsonWriter &json, const BlockedApp &app)
{
    json.beginObject();
    json.key("id");
    json.string(app.id);
    json.key("name");
    json.string(app.name);
    if (app.bundleIdentifier) {
        json.key("bundleIdentifier");
        json.string(*app.bundleIdentifier);
    }
    if (app.path) {
        json.key("path");
        json.string(*app.path);
    }
    json.endObject();
}

/// The members that are one value each, in the document's order behind the lists.
void writeSettings(JsonWriter &json, const SavedState &state)
{
    const auto boolean = [&json](const char *key, bool value) {
        json.key(key);
        json.boolean(value);
    };
    const auto string = [&json](const char *key, const QString &value) {
        json.key(key);
        json.string(value);
    };
    const auto integer = [&json](const char *key, qint64 value) {
        json.key(key);
        json.integer(value);
    };
    string("selectedAIProvider", rawValue(state.selectedAIProvider));
    string("apiKeyOverride", state.apiKeyOverride);
    string("openRouterModel", state.openRouterModel);
    boolean("codexIntegrationEnabled", state.codexIntegrationEnabled);
    boolean("chatGPTIntegrationEnabled", state.chatGPTIntegrationEnabled);
    boolean("ollamaIntegrationEnabled", state.ollamaIntegrationEnabled);
    string("ollamaBaseURL", state.ollamaBaseURL);
    boolean("autoSortAfterAdding", state.autoSortAfterAdding);
    boolean("isCompletedSectionExpanded", state.isCompletedSectionExpanded);
    boolean("isDeferredSectionExpanded", state.isDeferredSectionExpanded);
    boolean("isQuadrantBoardVisible", state.isQuadrantBoardVisible);
    boolean("isHardPinned", state.isHardPinned);
    integer("workDurationMinutes", state.workDurationMinutes);
    integer("breakDurationMinutes", state.breakDurationMinutes);
    boolean("launchAtLogin", state.launchAtLogin);
    boolean("sprintNudgesEnabled", state.sprintNudgesEnabled);
    boolean("alwaysShowMenubarTimer", state.alwaysShowMenubarTimer);
}

} // namespace

QByteArray encodeTask(const TaskItem &task)
{
    JsonWriter json;
    writeTask(json, task);
    return json.take();
}

QByteArray encodeSavedState(const SavedState &state)
{
    constexpr qsizetype usualBytesOfTask = 256;
    JsonWriter json(2048 + state.tasks.size() * usualBytesOfTask);
    json.beginObject();
    json.key("tasks");
    json.beginArray();
    for (const TaskItem &task : state.tasks)
        writeTask(json, task);
    json.endArray();
    if (state.activeTaskID) {
        json.key("activeTaskID");
        json.uuid(*state.activeTaskID);
    }
    json.key("mediumGoal");
    json.string(state.mediumGoal);
    json.key("isTodoListHidden");
    json.boolean(state.isTodoListHidden);
    json.key("isFocusGuardEnabled");
    json.boolean(state.isFocusGuardEnabled);
    json.key("blockedApps");
    json.beginArray();
    for (const BlockedApp &app : state.blockedApps)
        writeBlockedApp(json, app);
    json.endArray();
    writeSettings(json, state);
    json.endObject();
    return json.take();
}

} // namespace wrenfold
