// SPDX-License-Identifier: MIT
#pragma once

#include "platform/frontmost_application.h"

#include <QDateTime>

#include <chrono>

namespace wrenfold {

/// What the guard does about the application in front.
enum class GuardStep {
    None,
    Warn,  ///< Stage 1: a blocked application has come to the front.
    Hide,  ///< Stage 2: it is still there after the grace interval, or again after the next one.
    Clear, ///< It has been left in time.
};

/// How the guard names an application: to tell it from others, and to the user.
struct GuardedApplication
{
    explicit GuardedApplication(const RunningApplication &application);

    QString key;
    QString displayName;

    [[nodiscard]] QString warningStatus() const;
    [[nodiscard]] QString blockedStatus() const;
    [[nodiscard]] QString notificationBody() const;
};

/// The warning that is pending, if one is.
class GuardWarning
{
public:
    static constexpr std::chrono::milliseconds graceInterval{2500};

    /// Decides for the moment `now`, and remembers it. `blocked` is the application in front if it is a blocked one.
    GuardStep check(const std::optional<GuardedApplication> &blocked, const QDateTime &now);

    void clear();

private:
    std::optional<QString> m_warnedKey;          ///< Of the application that is warned about.
    std::optional<QDateTime> m_warningStartedAt; ///< The warning, or the last hide.
};

} // namespace wrenfold
