// SPDX-License-Identifier: MIT
#include "support/bench_desktop.h"
#include "support/budget.h"
#include "support/running_program.h"
#include "support/sample_state.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>
#include <optional>

namespace {

using namespace wrenfold;

BenchDesktop *desktop = nullptr; ///< Lives as long as main().

/// A program on the desktop of the bench, timed until its first picture. Leaves the screen black.
class TimedProgram
{
public:
    TimedProgram(const QString &name, const QStringList &arguments)
    {
        QElapsedTimer timer;
        timer.start();
        m_program.emplace(*desktop, name, arguments);
        m_hasPicture = desktop->waitForPicture();
        m_secondsToPicture = double(timer.nsecsElapsed()) / 1e9;
        m_processorToPicture = m_program->processorMilliseconds();
    }
    ~TimedProgram()
    {
        m_program.reset();
        if (!desktop->waitForBlack())
            std::fputs("a window stays on the screen\n", stderr);
    }
    Q_DISABLE_COPY_MOVE(TimedProgram)

    [[nodiscard]] bool hasPicture() const { return m_hasPicture; }
    [[nodiscard]] double secondsToPicture() const { return m_secondsToPicture; }

    /// Milliseconds that its threads have been running until then.
    [[nodiscard]] double processorToPicture() const { return m_processorToPicture; }
    [[nodiscard]] double residentMegabytes() const { return m_program->residentMegabytes(); }

private:
    std::optional<RunningProgram> m_program;
    bool m_hasPicture = false;
    double m_secondsToPicture = 0;
    double m_processorToPicture = 0;
};

void start(benchmark::State &state, const char *name, const QStringList &arguments)
{
    for (auto _ : state) {
        const TimedProgram program(QLatin1String(name), arguments);
        if (!program.hasPicture())
            state.SkipWithError("nothing was painted");
        state.SetIterationTime(program.secondsToPicture());
        state.counters["processor"] = program.processorToPicture();
        letPass(300); // What is made right after the first picture counts too.
        state.counters["resident"] = program.residentMegabytes();
    }
}

/// With so many tasks saved.
void panel(benchmark::State &state)
{
    if (!desktop->save(sampleState(int(state.range(0))))) {
        state.SkipWithError("cannot save tasks");
        return;
    }
    start(state, "wrenfold", {});
}
BENCHMARK(panel)->Arg(20)->Arg(50)->Arg(10'000)->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(start, bareWindow, "bare_window", QStringList())->UseManualTime()->Iterations(1);
BENCHMARK_CAPTURE(start, lineOfText, "bare_window", QStringList(QStringLiteral("--line")))
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK_CAPTURE(start, bareRows, "bare_window", QStringList(QStringLiteral("--rows")))
    ->UseManualTime()
    ->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    BenchDesktop benchDesktop;
    desktop = &benchDesktop;
    if (const QString error = benchDesktop.start(50); !error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    return measureBudgets(
        argc, argv,
        {
            {"start to the first picture, 50 tasks / bare window, empty",
             "x",
             "panel/50",
             "start/bareWindow",
             "",
             {}},
            {"  / bare window with one line of text", "x", "panel/50", "start/lineOfText", "", 2},
            {"  / bare window with 40 Japanese labels", "x", "panel/50", "start/bareRows", "", {}},
            {"  processor time / bare window with one line of text",
             "x",
             "panel/50",
             "start/lineOfText",
             "processor",
             {}},
            {"resident memory with the panel shown / bare window, empty",
             "x",
             "panel/50",
             "start/bareWindow",
             "resident",
             {}},
            {"  / bare window with one line of text", "x", "panel/50", "start/lineOfText", "resident", 1.6},
            {"  / bare window with 40 Japanese labels", "x", "panel/50", "start/bareRows", "resident", {}},
            {"  20 tasks / bare window with one line of text",
             "x",
             "panel/20",
             "start/lineOfText",
             "resident",
             {}},
            {"  10,000 tasks / bare window with one line of text",
             "x",
             "panel/10000",
             "start/lineOfText",
             "resident",
             {}},
        },
        15);
}
