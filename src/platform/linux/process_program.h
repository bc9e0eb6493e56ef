// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

/// The file name of the program that runs under this process id on this machine; empty if it cannot be told.
[[nodiscard]] QString processProgram(qint64 pid);

} // namespace wrenfold
