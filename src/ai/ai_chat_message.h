// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QUuid>

#include <cstdint>
#include <variant>

namespace wrenfold {

/// One line of the chat's transcript.
struct AIChatMessage
{
    enum class Role : std::uint8_t { user, assistant };

    QUuid id; ///< Of its own, also where two texts are equal.
    Role role = Role::assistant;
    QString text; ///< Plain, as it came.

    friend bool operator==(const AIChatMessage &, const AIChatMessage &) = default;
};

/// A change of the list that the AI suggests and the user has yet to confirm.
struct AIActionProposal
{
    struct Sort
    {
        QList<QUuid> ids; ///< As the service gave them.

        friend bool operator==(const Sort &, const Sort &) = default;
    };
    struct Split
    {
        QUuid parentID;
        QStringList subtasks; ///< Titles, as the service gave them.

        friend bool operator==(const Split &, const Split &) = default;
    };
    using Action = std::variant<Sort, Split>;

    QUuid id;
    QString title;
    QString detail;
    QStringList items; ///< Shown numbered from 1.
    QString confirmTitle;
    Action action;

    friend bool operator==(const AIActionProposal &, const AIActionProposal &) = default;
};

} // namespace wrenfold
