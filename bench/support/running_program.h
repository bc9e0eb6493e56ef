// SPDX-License-Identifier: MIT
#pragma once

#include "support/bench_desktop.h"

#include <QProcess>

namespace wrenfold {

/// A program from the folder of the benchmarks, or from a path, running on their desktop. Ends with this object. The
/// figures are the kernel's; they are 0 once the program has ended.
class RunningProgram
{
public:
    RunningProgram(const BenchDesktop &desktop, const QString &name, const QStringList &arguments);
    ~RunningProgram();
    Q_DISABLE_COPY_MOVE(RunningProgram)

    /// Whether it has written this to its log until now.
    [[nodiscard]] bool hasSaid(const QByteArray &text);

    [[nodiscard]] double residentMegabytes() const;

    /// The kernel's names of its threads, in order. A thread that ends takes its figures along.
    [[nodiscard]] QStringList threads() const;

    /// How often its threads went to sleep, and so had been awake, since they started.
    [[nodiscard]] double sleeps() const;

    /// Milliseconds that its threads have been running, on however busy a machine.
    [[nodiscard]] double processorMilliseconds() const;

private:
    [[nodiscard]] QString folder() const;

    QProcess m_process;
    QByteArray m_output;
};

/// Lets the benchmark do nothing for a while.
void letPass(int milliseconds);

} // namespace wrenfold
