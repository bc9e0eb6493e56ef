// SPDX-License-Identifier: MIT
#include "support/bench_desktop.h"
#include "support/budget.h"
#include "support/running_program.h"
#include "support/sample_state.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QPoint>
#include <QRegularExpression>

#include <benchmark/benchmark.h>
#include <functional>
#include <optional>
#include <vector>

namespace {

using namespace wrenfold;

BenchDesktop *desktop = nullptr; ///< Lives as long as main().
constexpr int taskCount = 50;

const QString panelTitle = QStringLiteral("Wren Fold");
const QString otherTitle = QStringLiteral("Bare window");
constexpr QPoint playButton(33, 37);   ///< In the panel.
constexpr QPoint closeButton(319, 77); ///< In the panel.

template<typename Condition>
bool waitFor(Condition condition)
{
    const QDeadlineTimer deadline(10'000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        letPass(50);
    }
    return true;
}

QString pointerTool(const QString &arguments)
{
    return desktop->tool(QStringLiteral("xdotool"), arguments.split(QLatin1Char(' ')));
}

/// The visible window with this title; empty when there is none.
QString windowTitled(const QString &title)
{
    return desktop->tool(QStringLiteral("xdotool"),
                         {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                          QLatin1Char('^') + title + QLatin1Char('$')});
}

/// Without waiting for the pointer to move, which it does not where it is there already: the server keeps the order.
void click(const QString &window, const QPoint &point)
{
    static_cast<void>(pointerTool(QStringLiteral("mousemove --window %1 %2 %3 click 1")
                                      .arg(window, QString::number(point.x()), QString::number(point.y()))));
}

/// Gives the keyboard and the pointer to the other window, so that nobody touches the panel.
bool turnToOtherWindow()
{
    const QString other = windowTitled(otherTitle);
    click(other, {170, 300});
    return waitFor([&] { return pointerTool(QStringLiteral("getwindowfocus")) == other; });
}

bool hidePanel()
{
    click(windowTitled(panelTitle), closeButton);
    return waitFor([] { return windowTitled(panelTitle).isEmpty(); }) && turnToOtherWindow();
}

/// Starts the program again, which shows the panel of the one that runs.
bool showPanel()
{
    const RunningProgram again(*desktop, QStringLiteral("wrenfold"), {});
    return waitFor([] { return !windowTitled(panelTitle).isEmpty(); });
}

/// Waits until nothing moves any more that what came before has set off: the toolkit's font cache looks after
/// itself 10 and 20 seconds after it was filled, then every five minutes, and its pool's threads end after 30.
void settle()
{
    letPass(35'000);
}

bool startTimer(RunningProgram &panel)
{
    click(windowTitled(panelTitle), playButton);
    return waitFor([&] { return panel.hasSaid("start phase=work"); });
}

/// What a program does in a second.
struct Rate
{
    double wakeups = 0;
    double processorPercent = 0; ///< Of one core.
};

/// Counts from its making on.
class Measurement
{
public:
    explicit Measurement(const RunningProgram &program)
        : m_program(program)
        , m_threads(program.threads())
        , m_sleeps(program.sleeps())
        , m_processor(program.processorMilliseconds())
    {
        m_time.start();
    }

    /// Nothing when a thread has begun or ended meanwhile, or the program has: the figures would be wrong.
    [[nodiscard]] std::optional<Rate> rate() const
    {
        const double milliseconds = double(m_time.nsecsElapsed()) / 1e6;
        const Rate result = {(m_program.sleeps() - m_sleeps) * 1000 / milliseconds,
                             (m_program.processorMilliseconds() - m_processor) * 100 / milliseconds};
        return m_threads.isEmpty() || m_program.threads() != m_threads ? std::nullopt : std::optional(result);
    }

private:
    const RunningProgram &m_program;
    QStringList m_threads;
    double m_sleeps;
    double m_processor;
    QElapsedTimer m_time;
};

/// Puts the figures into the table; false when there are none.
bool note(benchmark::State &state, const std::string &name, const Measurement &measurement)
{
    const auto rate = measurement.rate();
    if (!rate)
        return false;
    state.counters[name] = rate->wakeups;
    state.counters[name + "Processor"] = rate->processorPercent;
    return true;
}

/// A state that the panel is brought into, and how long to count there.
struct Step
{
    std::string name;
    int seconds;
    std::function<bool()> reach;
};

/// Takes the panel through the states, beside a window that paints a label anew each second and has the keyboard.
void measure(benchmark::State &state, const std::vector<Step> &steps, const RunningProgram &panel,
             const RunningProgram &other)
{
    for (auto _ : state) {
        for (const Step &step : steps) {
            if (!step.reach())
                return state.SkipWithError((step.name + " could not be reached").c_str());
            settle();
            const Measurement ofPanel(panel);
            const Measurement ofOther(other);
            letPass(step.seconds * 1000);
            if (!note(state, step.name, ofPanel) || !note(state, step.name + "Other", ofOther))
                return state.SkipWithError((step.name + ": threads have begun or ended").c_str());
        }
    }
}

bool areWindowsThere()
{
    return waitFor([] { return !windowTitled(panelTitle).isEmpty() && !windowTitled(otherTitle).isEmpty(); });
}

void wakeups(benchmark::State &state)
{
    if (!desktop->save(sampleState(taskCount)))
        return state.SkipWithError("cannot save tasks");
    const RunningProgram other(*desktop, QStringLiteral("bare_window"), {QStringLiteral("--clock")});
    RunningProgram panel(*desktop, QStringLiteral("wrenfold"), {});
    measure(state,
            {
                {"idleShown", 20, [] { return areWindowsThere() && turnToOtherWindow(); }},
                {"idleHidden", 20, hidePanel},
                {"runningShown", 60, [&] { return showPanel() && startTimer(panel) && turnToOtherWindow(); }},
                {"runningHidden", 30, hidePanel},
            },
            panel, other);
}
BENCHMARK(wakeups)->Iterations(1);

/// A status area's service that draws labels, and so is told of each change of the remaining time.
const QString labelHost =
    QStringLiteral("/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service");

bool isLabelDrawn()
{
    return waitFor([] {
        const QString report =
            desktop->tool(QCoreApplication::applicationDirPath() + QStringLiteral("/wrenfold"),
                          {QStringLiteral("--desktop-report")});
        return report.contains(
            QRegularExpression(QStringLiteral("^label: works"), QRegularExpression::MultilineOption));
    });
}

/// The timer running, and its remaining time in the status area too.
void labelled(benchmark::State &state)
{
    if (!desktop->save(sampleState(taskCount)))
        return state.SkipWithError("cannot save tasks");
    const RunningProgram host(*desktop, labelHost, {});
    const RunningProgram other(*desktop, QStringLiteral("bare_window"), {QStringLiteral("--clock")});
    RunningProgram panel(*desktop, QStringLiteral("wrenfold"), {});
    measure(
        state,
        {
            {"shown", 60,
             [&] { return areWindowsThere() && isLabelDrawn() && startTimer(panel) && turnToOtherWindow(); }},
            {"hidden", 30, hidePanel},
        },
        panel, other);
}
BENCHMARK(labelled)->Iterations(1);

/// With the focus guard on, and the timer stopped. The other window is none of a blocked application.
void guard(benchmark::State &state)
{
    SavedState saved = sampleState(taskCount);
    saved.isFocusGuardEnabled = true;
    if (!desktop->save(saved))
        return state.SkipWithError("cannot save tasks");
    const RunningProgram other(*desktop, QStringLiteral("bare_window"), {QStringLiteral("--clock")});
    RunningProgram panel(*desktop, QStringLiteral("wrenfold"), {});
    const auto isGuarding = [&] { return waitFor([&] { return panel.hasSaid("guard started"); }); };
    measure(state,
            {
                {"shown", 40, [&] { return areWindowsThere() && isGuarding() && turnToOtherWindow(); }},
                {"hidden", 40, hidePanel},
            },
            panel, other);
}
BENCHMARK(guard)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    BenchDesktop benchDesktop;
    desktop = &benchDesktop;
    if (const QString error = benchDesktop.start(taskCount);
        !error.isEmpty() || !benchDesktop.startWindowManager()) {
        std::fprintf(stderr, "no desktop: %s\n", qPrintable(error));
        return 1;
    }
    const auto linesOf = [](const char *name) {
        return [name](const char *what, const char *unit, const char *counter, std::optional<double> atMost) {
            return Budget{what, unit, name, "", counter, atMost};
        };
    };
    const auto line = linesOf("wakeups");
    const auto labelLine = linesOf("labelled");
    const auto guardLine = linesOf("guard");
    return measureBudgets(
        argc, argv,
        {
            line("wake-ups, timer stopped, panel shown, another window focused", "/s", "idleShown", 0),
            line("  hidden", "/s", "idleHidden", 0),
            line("wake-ups, timer running, panel shown, another window focused", "/s", "runningShown", 3.5),
            line("  hidden", "/s", "runningHidden", 1.2),
            line("  bare window that paints a label anew each second", "/s", "runningShownOther", {}),
            line("processor, timer running, panel shown", "%", "runningShownProcessor", 0.2),
            line("  hidden", "%", "runningHiddenProcessor", {}),
            line("  bare window that paints a label anew each second", "%", "runningShownOtherProcessor", {}),
            labelLine("wake-ups, timer running, label in the status area, panel shown", "/s", "shown", 5),
            labelLine("  hidden", "/s", "hidden", 3),
            labelLine("processor, timer running, label in the status area, panel shown", "%",
                      "shownProcessor", 0.2),
            labelLine("  hidden", "%", "hiddenProcessor", {}),
            guardLine("wake-ups, focus guard on, panel shown, another window focused", "/s", "shown", 1.5),
            guardLine("  hidden", "/s", "hidden", 1.5),
            guardLine("processor, focus guard on, panel shown", "%", "shownProcessor", {}),
            guardLine("  hidden", "%", "hiddenProcessor", {}),
        },
        1);
}
