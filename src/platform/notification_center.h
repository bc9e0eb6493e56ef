// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <QString>

#include <functional>
#include <optional>

namespace wrenfold {

/// What the user is told outside our windows. Plain text; line breaks stay.
struct Notification
{
    QString identifier; ///< A newer notification of the same identifier takes the place of the older one.
    QString title;
    QString body;

    friend bool operator==(const Notification &, const Notification &) = default;
};

/// The desktop's notifications. Nothing here blocks: each question is answered once, on the main thread, at once or a
/// moment later (half a minute on a desktop that hangs), unless this object goes before. It must not go inside an answer.
class NotificationCenter
{
public:
    virtual ~NotificationCenter() = default;

    /// As the last answer or event of the desktop says; not available until there was one.
    [[nodiscard]] virtual Availability availability() const = 0;

    /// What went wrong, in one line; nothing when nothing did.
    using Error = std::optional<QString>;

    /// Asks whether this program may notify, and can.
    virtual void requestAuthorization(std::function<void(bool isGranted, const Error &error)> answered) = 0;

    /// Shows the notification now, with the desktop's sound for notifications.
    virtual void post(const Notification &notification, std::function<void(const Error &error)> posted) = 0;

    /// From now on `clicked` is called whenever the user clicks one of our notifications.
    virtual void onClick(std::function<void()> clicked) = 0;
};

} // namespace wrenfold
