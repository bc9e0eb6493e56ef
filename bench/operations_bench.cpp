// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "platform/linux/file_preferences.h"
#include "platform/system_clock.h"
#include "support/bench_file_system.h"
#include "support/budget.h"
#include "support/painting_time.h"
#include "support/quiet_services.h"
#include "support/sample_state.h"
#include "views/focus_panel_view.h"
#include "views/row_list_view.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <QWindow>

#include <benchmark/benchmark.h>
#include <map>
#include <random>

namespace {

using namespace wrenfold;

/// A store on a folder that is not flushed, and the panel's content that shows it in a window.
class PanelOnDisk
{
public:
    explicit PanelOnDisk(int taskCount)
    {
        if (m_preferences.write(FocusStore::storageKey(), encodeSavedState(sampleState(taskCount))))
            return;
        m_store.emplace(m_quiet.with(m_preferences, m_clock), FocusStore::Options{.monitorInbox = false});
        m_view = new FocusPanelView(*m_store, m_clock,
                                    {[] {}, [] {}, [](const QPoint &) {}, [](const QUrl &) {}, [] {}, [] {}},
                                    &m_window);
        m_window.resize(344, 500);
        m_view->setGeometry(m_window.rect());
        m_view->setFocus();
        m_window.show();
        QCoreApplication::processEvents();
        m_store->save(); // Makes the day's copy.
    }

    [[nodiscard]] bool isReady() const { return m_store && m_window.isVisible(); }
    [[nodiscard]] FocusStore &store() { return *m_store; }
    [[nodiscard]] RowListView &list()
    {
        return *m_view->findChild<RowListView *>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// What the pointer does at a place of the list, with its left button.
    void pointer(QEvent::Type type, const QPoint &inList)
    {
        const QPointF place = list().viewport()->mapTo(&m_window, inList);
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, place, m_window.mapToGlobal(place), isMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.windowHandle(), &event);
    }

private:
    BenchFolder m_folder;
    SystemClock m_clock;
    FileSystemWithoutFlush m_fileSystem;
    FilePreferences m_preferences{m_folder.path(), m_clock, m_fileSystem};
    QuietServices m_quiet;
    std::optional<FocusStore> m_store;
    QWidget m_window;
    FocusPanelView *m_view = nullptr;
};

/// An open top-level task: one of those in sight or any, by turns.
TaskItem anyOpenTask(const FocusStore &store, std::mt19937 &random)
{
    const TaskList &tasks = store.tasks.value();
    const auto range = quint32(random() % 2 ? std::min<qsizetype>(tasks.size(), 10) : tasks.size());
    for (;;) {
        const TaskItem &task = tasks[random() % range];
        if (task.isOpen() && task.isTopLevel())
            return task;
    }
}

using Samples = std::map<std::string, std::vector<double>>;

/// One of each operation, then the four are undone, so that the list stays as long as it is.
void measureRound(PanelOnDisk &panel, std::mt19937 &random, Samples &samples)
{
    FocusStore &store = panel.store();
    const auto note = [&](const char *name, auto operation) {
        samples[name].push_back(millisecondsUntilPainted(operation));
    };
    note("add", [&] { store.addTask(QStringLiteral("思いついたことを書く"), false); });
    const TaskItem done = anyOpenTask(store, random);
    note("done", [&] { store.toggleDone(done); });
    const TaskItem deferred = anyOpenTask(store, random);
    note("defer", [&] { store.deferTask(deferred, TaskQuadrant::importantNotUrgent); });
    const TaskItem moving = anyOpenTask(store, random);
    const TaskItem target = anyOpenTask(store, random);
    store.beginTaskReorder();
    note("move", [&] {
        store.moveTask(moving.id, target.id, true);
        store.endTaskReorder();
    });
    while (store.canUndo.value())
        note("undo", [&] { store.undo(); });
}

void operations(benchmark::State &state)
{
    PanelOnDisk panel(int(state.range(0)));
    if (!panel.isReady()) {
        state.SkipWithError("there is no panel");
        return;
    }
    const TaskList before = panel.store().tasks.value();
    std::mt19937 random(3);
    Samples samples;
    for (auto _ : state)
        measureRound(panel, random, samples);
    if (panel.store().tasks.value() != before || panel.store().hasUnsavedChanges())
        state.SkipWithError("the list is not as it was, or not saved");
    for (auto &[name, values] : samples) {
        state.counters[name] = percentile(99, values);
        if (name != "any")
            samples["any"].insert(samples["any"].end(), values.begin(), values.end());
    }
    state.counters["any"] = percentile(99, samples["any"]);
    state.counters["anyMedian"] = percentile(50, samples["any"]);
}
BENCHMARK(operations)->Arg(10)->Arg(1'000)->Arg(10'000)->Iterations(100);
BENCHMARK(operations)->Arg(100'000)->Iterations(25);

/// The first task in sight is dragged over the others and back, again and again.
void drag(benchmark::State &state)
{
    PanelOnDisk panel(int(state.range(0)));
    if (!panel.isReady()) {
        state.SkipWithError("there is no panel");
        return;
    }
    FocusStore &store = panel.store();
    const TaskList before = store.tasks.value();
    store.isReorderKeyPressed.set(true); // So that the row may be taken hold of anywhere.
    RowListView &list = panel.list();
    const QRect first = *list.rowFrame({PanelRow::Kind::Task, store.visibleTasks().first().id});
    constexpr int besideTheEdge = 40; // Where the list does not begin to scroll.
    constexpr int step = 12;
    std::vector<double> samples;
    for (auto _ : state) {
        int y = first.center().y();
        panel.pointer(QEvent::MouseButtonPress, {first.center().x(), y});
        for (const int direction : {1, -1}) {
            while (direction > 0 ? y < list.viewport()->height() - besideTheEdge
                                 : y > first.center().y() - step) {
                y += direction * step;
                const auto move = [&] { panel.pointer(QEvent::MouseMove, {first.center().x(), y}); };
                samples.push_back(millisecondsUntilPainted(move));
            }
            if (direction > 0 && store.tasks.value() == before)
                state.SkipWithError("nothing was dragged");
        }
        panel.pointer(QEvent::MouseButtonRelease, {first.center().x(), y});
    }
    if (store.tasks.value() != before || store.isQuadrantDropActive.value())
        state.SkipWithError("the drag did not end where it began");
    state.counters["move"] = percentile(99, samples);
    state.counters["moveMedian"] = percentile(50, samples);
}
BENCHMARK(drag)->Arg(1'000)->Iterations(20);

/// One notch of the wheel over the list.
void turnWheel(RowListView &list, int direction)
{
    QWidget &viewport = *list.viewport();
    const QPointF place = viewport.rect().center();
    QWheelEvent event(place, viewport.mapToGlobal(place), {}, {0, -120 * direction}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&viewport, &event);
}

void turnPage(RowListView &list, int direction)
{
    list.verticalScrollBar()->triggerAction(direction > 0 ? QAbstractSlider::SliderPageStepAdd
                                                          : QAbstractSlider::SliderPageStepSub);
}

/// The list is scrolled down and back up. The step must move it.
void scroll(benchmark::State &state, void (*step)(RowListView &, int))
{
    PanelOnDisk panel(int(state.range(0)));
    if (!panel.isReady()) {
        state.SkipWithError("there is no panel");
        return;
    }
    std::vector<double> samples;
    for (auto _ : state) {
        for (const int direction : {1, -1}) {
            for (int i = 0; i < 100; ++i) {
                const int before = panel.list().verticalScrollBar()->value();
                samples.push_back(millisecondsUntilPainted([&] { step(panel.list(), direction); }));
                if (panel.list().verticalScrollBar()->value() == before)
                    state.SkipWithError("the list stands still");
            }
        }
    }
    state.counters["frame"] = percentile(99, samples);
    state.counters["frameMedian"] = percentile(50, samples);
}
BENCHMARK_CAPTURE(scroll, wheel, turnWheel)->Arg(10'000)->Iterations(3);
BENCHMARK_CAPTURE(scroll, page, turnPage)->Arg(10'000)->Iterations(3);

std::vector<Budget> budgets()
{
    std::vector<Budget> result;
    for (const char *size : {"10", "1000", "10000", "100000"}) {
        const bool isBound = std::string(size) == "10000";
        result.push_back({"any operation, " + std::string(size) + " tasks, 99th percentile", "ms",
                          "operations/" + std::string(size), "", "any",
                          isBound ? std::optional(16.0) : std::nullopt});
    }
    result.push_back({"  10,000 tasks, median", "ms", "operations/10000", "", "anyMedian", {}});
    for (const char *name : {"add", "done", "defer", "move", "undo"})
        result.push_back({"  " + std::string(name) + ", 10,000 tasks, 99th percentile", "ms",
                          "operations/10000", "", name, 16});
    result.push_back(
        {"drag, 1,000 tasks, a move of the pointer, 99th percentile", "ms", "drag/1000", "", "move", 16});
    result.push_back({"  median", "ms", "drag/1000", "", "moveMedian", {}});
    for (const auto &[what, benchmark] :
         {std::pair("wheel", "scroll/wheel/10000"), {"page", "scroll/page/10000"}}) {
        result.push_back({"scrolling 10,000 tasks by the " + std::string(what) + ", a frame, 99th percentile",
                          "ms", benchmark, "", "frame", 16});
        result.push_back({"  median", "ms", benchmark, "", "frameMedian", {}});
    }
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=false"));
    const QApplication application(argc, argv);
    return measureBudgets(argc, argv, budgets(), 5);
}
