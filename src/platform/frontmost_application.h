// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <QString>

#include <optional>

namespace wrenfold {

/// An application that has windows on the screen. Texts from outside: to be shown as plain text.
struct RunningApplication
{
    /// The id of its desktop entry; none where no entry belongs to it.
    std::optional<QString> bundleIdentifier;
    /// The entry's name in the user's language, else what its windows say.
    std::optional<QString> localizedName;

    friend bool operator==(const RunningApplication &, const RunningApplication &) = default;
};

/// Which application is in front, and putting it out of sight. Works from start() to stop().
class FrontmostApplication
{
public:
    virtual ~FrontmostApplication() = default;

    [[nodiscard]] virtual Availability availability() const = 0;

    virtual void start() = 0;
    virtual void stop() = 0;

    /// The application of the active window; this program itself has applicationID(), and is in front while a window of
    /// its own has the keyboard. Nothing where no window is active, or nobody knows whose it is. Follows the desktop by
    /// itself: asking costs nothing.
    [[nodiscard]] virtual std::optional<RunningApplication> current() const = 0;

    /// To be called before a window of ours comes into sight that is not to be in front. Where the desktop puts every new
    /// window there, the application that is there now gets its place back.
    virtual void keepInFront() {}

    /// Asks the desktop to put the application's windows on this workspace out of sight. Returns at once; whether the
    /// desktop does so shows in current().
    virtual void hide(const RunningApplication &application) = 0;
};

} // namespace wrenfold
