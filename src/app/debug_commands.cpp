// SPDX-License-Identifier: MIT
#include "app/debug_commands.h"

#include "model/task_ordering.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace wrenfold {

namespace {

/// Whether all of it was written.
bool print(std::FILE *stream, const QByteArray &text)
{
    const std::size_t written = std::fwrite(text.constData(), 1, std::size_t(text.size()), stream);
    return std::fflush(stream) == 0 && written == std::size_t(text.size());
}

/// Checks that ordering drops neither completed tasks nor subtasks.
int runDebugPreserveCompleted()
{
    const auto make = [](const char *title, double secondsSince1970) {
        return TaskItem::make(QLatin1String(title), Timestamp::fromSecondsSince1970(secondsSince1970));
    };
    const TaskItem first = make("first open", 10);
    const TaskItem second = make("second open", 20);
    TaskItem child = make("child under first", 30);
    child.parentID = first.id;
    TaskItem completed = make("completed task", 40);
    completed.isDone = true;
    completed.completedAt = Timestamp::fromDateTime(QDateTime::currentDateTimeUtc());

    const TaskList ordered =
        TaskOrdering::applyPriorityOrder({first, second, child, completed}, {second.id, first.id});

    QJsonArray titles;
    for (const TaskItem &task : ordered)
        titles.append(task.title);
    const QJsonObject verdict = {
        {QStringLiteral("titles"), titles},
        {QStringLiteral("contains_child"), titles.contains(child.title)},
        {QStringLiteral("contains_completed"), titles.contains(completed.title)},
        {QStringLiteral("count"), int(ordered.size())},
    };
    const bool isPrinted = print(stdout, QJsonDocument(verdict).toJson());
    return isPrinted && ordered.size() == 4 ? 0 : 1;
}

} // namespace

std::optional<int> runDebugCommandIfNeeded(const LaunchOptions &options)
{
    switch (options.mode) {
    case LaunchOptions::Mode::UsageError:
        print(stderr, options.usageError.toUtf8() + '\n');
        return 2;
    case LaunchOptions::Mode::DebugPreserveCompleted:
        return runDebugPreserveCompleted();
    case LaunchOptions::Mode::DebugSplit:
        print(stderr, "debug split failed: this version makes no AI requests yet\n");
        return 1;
    case LaunchOptions::Mode::DebugSort:
        print(stderr, "debug sort failed: this version makes no AI requests yet\n");
        return 1;
    case LaunchOptions::Mode::Help:
    case LaunchOptions::Mode::Version:
    case LaunchOptions::Mode::Interactive:
        break;
    }
    return std::nullopt;
}

} // namespace wrenfold
