// SPDX-License-Identifier: MIT
#include "app/debug_commands.h"

#include "ai/ai_answer.h"
#include "ai/openrouter_task_sorter.h"
#include "app/print.h"
#include "model/saved_state.h"
#include "model/task_list.h"
#include "model/task_ordering.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wrenfold {

namespace {

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

TaskList tasksTitled(const QStringList &titles)
{
    const Timestamp now = Timestamp::fromDateTime(QDateTime::currentDateTimeUtc());
    TaskList tasks;
    for (const QString &title : titles)
        tasks.append(TaskItem::make(title, now));
    return tasks;
}

/// Makes the request and prints what comes of it: the object, or what went wrong.
int runRequest(const char *command,
               const std::function<QFuture<QJsonObject>(OpenRouterTaskSorter &sorter)> &request)
{
    char name[] = "wrenfold";
    char *arguments[] = {name, nullptr};
    int count = 1;
    QCoreApplication application(count, arguments);
    OpenRouterTaskSorter sorter(ServiceOrigin::fromEnvironment());
    int status = 1;
    onAnswer(
        request(sorter), &application,
        [&](const QJsonObject &answer) {
            status = print(stdout, QJsonDocument(answer).toJson()) ? 0 : 1;
            QCoreApplication::quit();
        },
        [&](const AIError &error) {
            print(stderr, QByteArray(command) + " failed: " + error.description().toUtf8() + '\n');
            QCoreApplication::quit();
        });
    QCoreApplication::exec();
    return status;
}

int runDebugSort(const LaunchOptions &options)
{
    const TaskList tasks = tasksTitled(options.taskTitles);
    return runRequest("debug sort", [&](OpenRouterTaskSorter &sorter) {
        return sorter
            .prioritizedTaskIDs(tasks, std::nullopt, options.mediumGoal, {}, SavedState::defaultModel())
            .then([tasks](const QList<QUuid> &ids) {
                QJsonArray titles;
                for (const QUuid &id : ids) {
                    if (const TaskItem *task = findTask(tasks, id))
                        titles.append(task->title);
                }
                return QJsonObject{{QStringLiteral("ordered_tasks"), titles}};
            });
    });
}

int runDebugSplit(const LaunchOptions &options)
{
    const TaskItem task = tasksTitled(options.taskTitles).first();
    return runRequest("debug split", [&](OpenRouterTaskSorter &sorter) {
        return sorter.splitTask(task, options.mediumGoal, {}, SavedState::defaultModel())
            .then([](const QStringList &titles) {
                return QJsonObject{{QStringLiteral("subtasks"), QJsonArray::fromStringList(titles)}};
            });
    });
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
        return runDebugSplit(options);
    case LaunchOptions::Mode::DebugSort:
        return runDebugSort(options);
    case LaunchOptions::Mode::Help:
    case LaunchOptions::Mode::Version:
    case LaunchOptions::Mode::Interactive:
        break;
    }
    return std::nullopt;
}

} // namespace wrenfold
