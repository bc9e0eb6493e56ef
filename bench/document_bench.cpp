// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "model/uuid_text.h"
#include "platform/linux/file_preferences.h"
#include "platform/system_clock.h"
#include "support/bench_file_system.h"
#include "support/budget.h"
#include "support/quiet_services.h"
#include "support/sample_state.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace wrenfold;

/// Holds one value and writes nothing, so that loading is measured without the disk.
class PreferencesInMemory final : public Preferences
{
public:
    explicit PreferencesInMemory(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }
    [[nodiscard]] ReadResult read(const QString &) const override { return {ReadStatus::Found, m_bytes}; }
    [[nodiscard]] std::optional<QString> write(const QString &, const QByteArray &) override { return {}; }
    [[nodiscard]] std::optional<QString> keepAside(const QString &) override { return {}; }

private:
    QByteArray m_bytes;
};

void load(benchmark::State &state)
{
    PreferencesInMemory preferences(encodeSavedState(sampleState(int(state.range(0)))));
    SystemClock clock;
    for (auto _ : state) {
        QuietServices quiet;
        const FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        if (store.tasks.value().size() != state.range(0))
            state.SkipWithError("the document was not loaded");
    }
}
BENCHMARK(load)->Arg(10'000)->Unit(benchmark::kMillisecond);

void parseOnly(benchmark::State &state)
{
    const QByteArray bytes = encodeSavedState(sampleState(int(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(bytes));
}
BENCHMARK(parseOnly)->Arg(10'000)->Unit(benchmark::kMillisecond);

void encode(benchmark::State &state)
{
    const SavedState saved = sampleState(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeSavedState(saved));
}
BENCHMARK(encode)->Arg(10'000)->Unit(benchmark::kMillisecond);

QJsonObject toJsonObject(const TaskItem &task)
{
    QJsonObject object;
    object.insert(QLatin1String("id"), uuidText(task.id));
    object.insert(QLatin1String("title"), task.title);
    object.insert(QLatin1String("isDone"), task.isDone);
    object.insert(QLatin1String("createdAt"), task.createdAt.secondsSince2001);
    if (task.completedAt)
        object.insert(QLatin1String("completedAt"), task.completedAt->secondsSince2001);
    if (task.parentID)
        object.insert(QLatin1String("parentID"), uuidText(*task.parentID));
    object.insert(QLatin1String("isExpanded"), task.isExpanded);
    object.insert(QLatin1String("isDeferred"), task.isDeferred);
    object.insert(QLatin1String("quadrant"), rawValue(task.quadrant));
    return object;
}

/// The same list by way of Qt's tree, which is what JsonWriter is there to avoid. The document's few other
/// members are left out in its favour.
void encodeByQt(benchmark::State &state)
{
    const SavedState saved = sampleState(int(state.range(0)));
    for (auto _ : state) {
        QJsonArray tasks;
        for (const TaskItem &task : saved.tasks)
            tasks.append(toJsonObject(task));
        const QJsonObject document = {{QStringLiteral("tasks"), tasks}};
        benchmark::DoNotOptimize(QJsonDocument(document).toJson(QJsonDocument::Compact));
    }
}
BENCHMARK(encodeByQt)->Arg(10'000)->Unit(benchmark::kMillisecond);

/// From the state in memory to the document on disk, flushed.
void save(benchmark::State &state)
{
    const BenchFolder folder;
    SystemClock clock;
    FilePreferences preferences(folder.path(), clock);
    if (preferences.write(FocusStore::storageKey(), encodeSavedState(sampleState(int(state.range(0))))))
        state.SkipWithError("the document could not be written");
    QuietServices quiet;
    FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
    store.save(); // Makes the day's copy.
    for (auto _ : state)
        store.save();
    if (store.hasUnsavedChanges())
        state.SkipWithError("a save failed");
}
BENCHMARK(save)->Arg(50)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);

/// What putting bytes on disk for good takes at least.
bool replaceByRawCalls(int folder, const QByteArray &bytes)
{
    const int file = ::openat(folder, "document.tmp", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    return file >= 0 && ::write(file, bytes.constData(), size_t(bytes.size())) == bytes.size() &&
           ::fsync(file) == 0 && ::close(file) == 0 &&
           ::renameat(folder, "document.tmp", folder, "document") == 0 && ::fsync(folder) == 0;
}

void writeFlushRenameFlush(benchmark::State &state)
{
    const BenchFolder place;
    const int folder =
        ::open(QFile::encodeName(place.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const QByteArray bytes = encodeSavedState(sampleState(int(state.range(0))));
    for (auto _ : state) {
        if (!replaceByRawCalls(folder, bytes))
            state.SkipWithError("a call failed");
    }
    ::close(folder);
}
BENCHMARK(writeFlushRenameFlush)->Arg(50)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=false"));
    const QCoreApplication application(argc, argv);
    return measureBudgets(argc, argv,
                          {
                              {"load of 10,000 tasks / QJsonDocument parsing the same bytes", "x",
                               "load/10000", "parseOnly/10000", "", 2},
                              {"save of 10,000 tasks / write, flush, rename, flush of the same bytes", "x",
                               "save/10000", "writeFlushRenameFlush/10000", "", 1.5},
                              {"save of 50 tasks / write, flush, rename, flush of the same bytes", "x",
                               "save/50", "writeFlushRenameFlush/50", "", 1.5},
                              {"document of 10,000 tasks to bytes", "ms", "encode/10000", "", "", {}},
                              {"the same through QJsonDocument", "ms", "encodeByQt/10000", "", "", {}},
                          });
}
