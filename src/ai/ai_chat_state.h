// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_message.h"
#include "model/task_item.h"

#include <optional>

namespace wrenfold {

class AIError;

/// What the chat can ask the service for.
enum class AIChatRequest : std::uint8_t { Sort, Split, Answer };

// What a message of the user's asks for. One that asks for both an order and a split asks for an order.
[[nodiscard]] bool isSortIntent(const QString &text);
[[nodiscard]] bool isSplitIntent(const QString &text);
[[nodiscard]] AIChatRequest requestOf(const QString &text);

/// The order offered to the user; identifiers of no task have no item.
[[nodiscard]] AIActionProposal sortProposal(const QList<QUuid> &ids, const TaskList &tasks);
[[nodiscard]] AIActionProposal splitProposal(const TaskItem &parent, const QStringList &subtasks);

/// A conversation, and what happens to it. One request runs at a time: begin() starts it, and one of answer(), propose()
/// and fail() ends it.
struct AIChatState
{
    AIChatState(); ///< The assistant has said what it can do.

    QList<AIChatMessage> messages;
    bool isSending = false;
    QString activityText; ///< What is under way; empty when nothing is.
    std::optional<AIActionProposal> pendingProposal;

    /// The user sends a draft. Nothing happens, and nothing is returned, if it is blank or a request runs; otherwise the
    /// message is there, and what it asks for is to be begun.
    [[nodiscard]] std::optional<AIChatRequest> say(const QString &draft);

    /// False, and nothing happens, while a request runs.
    [[nodiscard]] bool begin(AIChatRequest request);
    void answer(const QString &text);
    void propose(const AIActionProposal &proposal);
    void fail(AIChatRequest request, const AIError &error);
    /// There is no task to split, so nothing is begun. Nothing happens while a request runs.
    void missTaskToSplit();

    /// The pending proposal has been applied, or put away.
    void confirmProposal();
    void cancelProposal();

private:
    void append(AIChatMessage::Role role, const QString &text);
    void end(const QString &text);
};

} // namespace wrenfold
