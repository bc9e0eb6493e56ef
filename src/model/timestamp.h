// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace wrenfold {

/// A moment as the saved document holds it. The number itself is kept, so that a moment read from a document
/// is written back bit for bit.
struct Timestamp
{
    static constexpr double offset = 978307200.0; ///< Seconds from 1970 to 2001.

    double secondsSince2001 = 0; ///< Seconds since 2001-01-01 00:00:00 UTC, with fraction.

    static Timestamp fromDateTime(const QDateTime &moment)
    {
        return {double(moment.toMSecsSinceEpoch()) / 1000.0 - offset};
    }
    static Timestamp fromSecondsSince1970(double seconds) { return {seconds - offset}; }

    friend auto operator<=>(const Timestamp &, const Timestamp &) = default;
};

} // namespace wrenfold
