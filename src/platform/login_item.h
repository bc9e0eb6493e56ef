// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace wrenfold {

enum class LoginItemStatus {
    NotRegistered,
    Enabled,          ///< The desktop starts the program at login.
    RequiresApproval, ///< Registered, but switched off in the desktop's own settings.
    NotFound,         ///< Registered, but the program that would be started has gone.
};

/// Whether the desktop starts this program when the user logs in. Each call looks anew; nothing is kept.
class LoginItem
{
public:
    virtual ~LoginItem() = default;

    /// What went wrong, in one line for the user; nothing when nothing did.
    using Error = std::optional<QString>;

    [[nodiscard]] virtual LoginItemStatus status() const = 0;

    /// From the next login on the desktop starts the executable that runs now, whatever the status was before.
    [[nodiscard]] virtual Error registerProgram() = 0;

    /// The desktop starts it no more. No error where it was not registered.
    [[nodiscard]] virtual Error unregisterProgram() = 0;
};

} // namespace wrenfold
