// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "support/bench_desktop.h"
#include "support/budget.h"
#include "support/sample_state.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <benchmark/benchmark.h>

namespace {

using namespace wrenfold;

BenchDesktop *desktop = nullptr; ///< Lives as long as main().

/// The number behind `key` in a status file of the kernel's.
double statusValue(const QString &path, const QByteArray &key)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).simplified().split(' ').first().toDouble();
    }
    return 0;
}

void letPass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A program on the desktop of the bench. Ends with this object.
class RunningProgram
{
public:
    RunningProgram(const QString &name, const QStringList &arguments)
    {
        m_process.setProcessEnvironment(desktop->environment());
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_timer.start();
        m_process.start(QCoreApplication::applicationDirPath() + QLatin1Char('/') + name, arguments);
        m_hasPicture = desktop->waitForPicture();
        m_secondsToPicture = double(m_timer.nsecsElapsed()) / 1e9;
        m_processorToPicture = processorMilliseconds();
    }
    ~RunningProgram()
    {
        m_process.terminate();
        m_process.waitForFinished();
        if (!desktop->waitForBlack())
            std::fputs("a window stays on the screen\n", stderr);
    }
    Q_DISABLE_COPY_MOVE(RunningProgram)

    [[nodiscard]] bool hasPicture() const { return m_hasPicture; }
    [[nodiscard]] double secondsToPicture() const { return m_secondsToPicture; }

    /// Milliseconds that its threads have been running until then, on however busy a machine.
    [[nodiscard]] double processorToPicture() const { return m_processorToPicture; }

    [[nodiscard]] double residentMegabytes() const
    {
        return statusValue(folder() + QLatin1String("/status"), "VmRSS") * 1024 / 1'000'000;
    }

    /// How often its threads went to sleep, and so had been awake, since they started.
    [[nodiscard]] double sleeps() const
    {
        return overThreads([](const QString &thread) {
            return statusValue(thread + QLatin1String("/status"), "voluntary_ctxt_switches");
        });
    }

private:
    [[nodiscard]] double processorMilliseconds() const
    {
        return overThreads([](const QString &thread) {
            QFile file(thread + QLatin1String("/schedstat"));
            return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').first().toDouble() / 1e6 : 0;
        });
    }

    template<typename Figure>
    [[nodiscard]] double overThreads(Figure figure) const
    {
        double sum = 0;
        const QString tasks = folder() + QLatin1String("/task/");
        for (const QString &thread : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            sum += figure(tasks + thread);
        return sum;
    }

    [[nodiscard]] QString folder() const { return QStringLiteral("/proc/%1").arg(m_process.processId()); }

    QProcess m_process;
    QElapsedTimer m_timer;
    bool m_hasPicture = false;
    double m_secondsToPicture = 0;
    double m_processorToPicture = 0;
};

void start(benchmark::State &state, const char *name, const QStringList &arguments)
{
    for (auto _ : state) {
        const RunningProgram program(QLatin1String(name), arguments);
        if (!program.hasPicture())
            state.SkipWithError("nothing was painted");
        state.SetIterationTime(program.secondsToPicture());
        state.counters["processor"] = program.processorToPicture();
        letPass(300); // What is made right after the first picture counts too.
        state.counters["resident"] = program.residentMegabytes();
    }
}
BENCHMARK_CAPTURE(start, panel, "wrenfold", QStringList())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(start, bareWindow, "bare_window", QStringList())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(start, lineOfText, "bare_window", QStringList(QStringLiteral("--line")))
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(start, bareRows, "bare_window", QStringList(QStringLiteral("--rows")))
    ->UseManualTime()
    ->Iterations(1);

/// Twenty seconds of nobody doing anything, once the toolkit has settled: its font cache looks after itself 10
/// and 20 seconds after it was filled, then every five minutes, and its pool's threads end after 30 seconds.
void idle(benchmark::State &state)
{
    const RunningProgram program(QStringLiteral("wrenfold"), {});
    for (auto _ : state) {
        if (!program.hasPicture())
            state.SkipWithError("nothing was painted");
        letPass(35'000);
        const double before = program.sleeps();
        letPass(20'000);
        state.counters["wakeups"] = program.sleeps() - before;
    }
}
BENCHMARK(idle)->Iterations(1)->Repetitions(1);

bool saveTasks(int count)
{
    const QString folder = desktop->configFolder() + QLatin1String("/Wrenfold/");
    QFile file(folder + FocusStore::storageKey());
    return QDir().mkpath(folder) && file.open(QIODevice::WriteOnly) &&
           file.write(encodeSavedState(sampleState(count))) > 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    BenchDesktop benchDesktop;
    desktop = &benchDesktop;
    if (const QString error = benchDesktop.start(); !error.isEmpty() || !saveTasks(50)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    return measureBudgets(
        argc, argv,
        {
            {"start to the first picture, 50 tasks / bare window, empty",
             "x",
             "start/panel",
             "start/bareWindow",
             "",
             {}},
            {"  / bare window with one line of text", "x", "start/panel", "start/lineOfText", "", 2},
            {"  / bare window with 40 Japanese labels", "x", "start/panel", "start/bareRows", "", {}},
            {"  processor time / bare window with one line of text",
             "x",
             "start/panel",
             "start/lineOfText",
             "processor",
             {}},
            {"resident memory with the panel shown / bare window, empty",
             "x",
             "start/panel",
             "start/bareWindow",
             "resident",
             {}},
            {"  / bare window with one line of text", "x", "start/panel", "start/lineOfText", "resident",
             1.6},
            {"  / bare window with 40 Japanese labels", "x", "start/panel", "start/bareRows", "resident", {}},
            {"wake-ups in 20 s, timer stopped, no field focused", "", "idle", "", "wakeups", 0},
        },
        15);
}
