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

} // namespace wrenfold
