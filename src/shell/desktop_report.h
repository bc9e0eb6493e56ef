// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <QList>

namespace wrenfold {

struct Platform;

/// What the program can do on a desktop that lets it.
struct DesktopAbility
{
    QString name;
    Availability availability;
    QString remedy; ///< What the user can do where it does not wholly work; one line.
};

/// One line each: the name, how far it works and, where it does not wholly, why and what to do.
[[nodiscard]] QString desktopReport(const QList<DesktopAbility> &abilities);

/// The same of everything that this desktop is asked for, as things stand.
[[nodiscard]] QString desktopReport(const Platform &platform);

} // namespace wrenfold
