// SPDX-License-Identifier: MIT
#include "app/launch_options.h"

#include <algorithm>

namespace wrenfold {

namespace {

/// The arguments behind the one at `index` up to the next option.
QStringList titlesAfter(qsizetype index, const QStringList &arguments)
{
    const auto begin = arguments.begin() + index + 1;
    const auto end = std::find_if(begin, arguments.end(), [](const QString &argument) {
        return argument.startsWith(QLatin1String("--"));
    });
    return {begin, end};
}

LaunchOptions usageError(const QString &text)
{
    LaunchOptions options;
    options.mode = LaunchOptions::Mode::UsageError;
    options.usageError = text;
    return options;
}

LaunchOptions debugRequest(LaunchOptions::Mode mode, const QStringList &titles, const QStringList &arguments)
{
    LaunchOptions options;
    options.mode = mode;
    options.taskTitles = titles;
    options.mediumGoal = debugValue(QStringLiteral("--goal"), arguments);
    return options;
}

LaunchOptions plain(LaunchOptions::Mode mode)
{
    LaunchOptions options;
    options.mode = mode;
    return options;
}

} // namespace

LaunchOptions LaunchOptions::parse(const QStringList &arguments)
{
    if (const qsizetype index = arguments.indexOf(QStringLiteral("--debug-split")); index >= 0) {
        if (index + 1 == arguments.size())
            return wrenfold::usageError(QStringLiteral("--debug-split requires a task title"));
        return debugRequest(Mode::DebugSplit, {arguments[index + 1]}, arguments);
    }
    if (const qsizetype index = arguments.indexOf(QStringLiteral("--debug-sort")); index >= 0) {
        const QStringList titles = titlesAfter(index, arguments);
        if (titles.size() < 2)
            return wrenfold::usageError(QStringLiteral("--debug-sort requires at least two task titles"));
        return debugRequest(Mode::DebugSort, titles, arguments);
    }
    if (arguments.contains(QStringLiteral("--debug-preserve-completed")))
        return plain(Mode::DebugPreserveCompleted);
    if (arguments.contains(QStringLiteral("--help")) || arguments.contains(QStringLiteral("-h")))
        return plain(Mode::Help);
    if (arguments.contains(QStringLiteral("--version")) || arguments.contains(QStringLiteral("-v")))
        return plain(Mode::Version);
    return plain(Mode::Interactive);
}

QString LaunchOptions::help()
{
    return QStringLiteral("Usage: wrenfold [OPTION]...\n"
                          "A small floating panel with today's tasks, one of them pinned as NOW.\n"
                          "Started a second time, it shows the panel of the program that runs already.\n"
                          "\n"
                          "  --verbose                   write diagnostic lines to the log\n"
                          "  -h, --help                  show this help and exit\n"
                          "  -v, --version               show the version and exit\n"
                          "\n"
                          "Without a window, as JSON on standard output:\n"
                          "  --debug-split TITLE         ask the AI for subtasks of a task\n"
                          "  --debug-sort TITLE TITLE... ask the AI to order tasks\n"
                          "  --goal VALUE                the goal that both go by\n"
                          "  --debug-preserve-completed  check that ordering loses no task\n"
                          "\n"
                          "Environment:\n"
                          "  WRENFOLD_DEBUG=1            the same as --verbose\n");
}

QString debugValue(const QString &key, const QStringList &arguments)
{
    const qsizetype index = arguments.indexOf(key);
    return index < 0 ? QString() : arguments.value(index + 1);
}

} // namespace wrenfold
