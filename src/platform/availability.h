// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

/// Whether an ability works on this desktop, and if not (or not wholly), why.
struct Availability
{
    enum class Level { Works, Limited, NotAvailable };

    Level level = Level::Works;
    QString reason; ///< One line for the user; empty when it works.

    friend bool operator==(const Availability &, const Availability &) = default;
};

} // namespace wrenfold
