// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

/// What the desktop knows the program by: the name of its desktop entry and of what it owns on the bus.
inline constexpr auto applicationIDLiteral = "dev.tolvane.Wrenfold";

[[nodiscard]] inline QString applicationID()
{
    return QLatin1String(applicationIDLiteral);
}

/// Whether a window that calls itself so is one of the program's.
[[nodiscard]] inline bool isOwnWindowName(const QString &name)
{
    return name.compare(applicationID(), Qt::CaseInsensitive) == 0 ||
           name.compare(QLatin1String("wrenfold"), Qt::CaseInsensitive) == 0;
}

} // namespace wrenfold
