// SPDX-License-Identifier: MIT
#pragma once

#include "model/ai_provider.h"
#include "model/blocked_app.h"
#include "model/task_item.h"

class QJsonValue;

namespace wrenfold {

/// The document that holds everything, with the value of each member when the document lacks it. The members
/// bear the names of the document's keys; do not change them.
struct SavedState
{
    static QString defaultModel() { return QStringLiteral("~anthropic/claude-sonnet-latest"); }
    static QString defaultOllamaBaseURL() { return QStringLiteral("http://127.0.0.1:11434"); }

    TaskList tasks; ///< Required.
    std::optional<QUuid> activeTaskID;
    QString mediumGoal;
    bool isTodoListHidden = false;
    bool isFocusGuardEnabled = false;
    QList<BlockedApp> blockedApps = defaultBlockedApps(); ///< Read from "blockedAppNames" in old documents.
    AIProvider selectedAIProvider = AIProvider::openRouter;
    QString apiKeyOverride;
    QString openRouterModel = defaultModel();
    bool codexIntegrationEnabled = false;
    bool chatGPTIntegrationEnabled = false;
    bool ollamaIntegrationEnabled = false;
    QString ollamaBaseURL = defaultOllamaBaseURL();
    bool autoSortAfterAdding = false;
    bool isCompletedSectionExpanded = false;
    bool isDeferredSectionExpanded = true;
    bool isQuadrantBoardVisible = false;
    bool isHardPinned = true; ///< Required.
    qint64 workDurationMinutes = 25;
    qint64 breakDurationMinutes = 5;
    bool launchAtLogin = false; ///< Written, but the desktop's own answer counts.
    bool sprintNudgesEnabled = true;
    bool alwaysShowMenubarTimer = true;

    friend bool operator==(const SavedState &, const SavedState &) = default;
};

/// One task as the document holds it.
[[nodiscard]] QByteArray encodeTask(const TaskItem &task);

/// None when a required member is missing or a value is of a wrong type.
[[nodiscard]] std::optional<TaskItem> decodeTask(const QJsonValue &value);

/// The document as compact JSON.
[[nodiscard]] QByteArray encodeSavedState(const SavedState &state);

/// The state of a document; none when it is no JSON object, lacks a required member or holds a value of a
/// wrong type anywhere. Retired values are replaced by those of today; the list is not repaired and durations
/// are not bounded here.
[[nodiscard]] std::optional<SavedState> decodeSavedState(const QByteArray &document);

} // namespace wrenfold
