// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

namespace wrenfold {

/// Milliseconds until the operation is done, and what it changed in sight is painted.
template<typename Operation>
double millisecondsUntilPainted(Operation operation)
{
    QElapsedTimer timer;
    timer.start();
    operation();
    QCoreApplication::processEvents();
    return double(timer.nsecsElapsed()) / 1'000'000;
}

} // namespace wrenfold
