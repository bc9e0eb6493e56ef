// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace wrenfold {

/// A moment as the saved document holds it. The number itself is kept, so that a moment read from a document
/// is written back bit for bit (but for the sign of a zero, which Qt's reader drops).
struct Timestamp
{
    double secondsSince2001 = 0; ///< Seconds since 2001-01-01 00:00:00 UTC, with fraction.

    static Timestamp fromDateTime(const QDateTime &moment)
    {
        return {double(moment.toMSecsSinceEpoch() - 1000 * secondsFrom1970To2001) / 1000.0};
    }
    static Timestamp fromSecondsSince1970(double seconds)
    {
        return {seconds - double(secondsFrom1970To2001)};
    }

    static constexpr qint64 secondsFrom1970To2001 = 978307200;

    friend auto operator<=>(const Timestamp &, const Timestamp &) = default;
};

} // namespace wrenfold
