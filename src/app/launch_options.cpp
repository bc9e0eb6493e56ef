// SPDX-License-Identifier: MIT
#include "app/launch_options.h"

#include <algorithm>
#include <array>
#include <utility>

namespace wrenfold {

namespace {

constexpr std::array<std::pair<Request, QLatin1String>, 5> requestWords = {{
    {Request::ShowPanel, QLatin1String("show")},
    {Request::TogglePanel, QLatin1String("toggle-panel")},
    {Request::HidePanel, QLatin1String("hide-panel")},
    {Request::NewTodo, QLatin1String("new-todo")},
    {Request::DesktopReport, QLatin1String("desktop-report")},
}};

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

/// The request whose option this is. Showing the panel has none: a start without option does that.
std::optional<Request> requestOf(const QString &argument)
{
    if (!argument.startsWith(QLatin1String("--")))
        return std::nullopt;
    const std::optional<Request> request = requestNamed(argument.mid(2));
    return request == Request::ShowPanel ? std::nullopt : request;
}

/// The first request that is named counts.
Request requestIn(const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        if (const std::optional<Request> request = requestOf(argument))
            return *request;
    }
    return Request::ShowPanel;
}

LaunchOptions interactive(const QStringList &arguments, const QProcessEnvironment &environment)
{
    LaunchOptions options;
    options.isDemonstration =
        arguments.contains(QStringLiteral("--marketing-demo")) ||
        environment.value(QStringLiteral("WRENFOLD_MARKETING_DEMO")) == QLatin1String("1");
    if (!options.isDemonstration) {
        options.request = requestIn(arguments);
        options.isBusService = arguments.contains(QStringLiteral("--dbus-service"));
    }
    options.isBoardClosed = arguments.contains(QStringLiteral("--marketing-demo-closed"));
    return options;
}

} // namespace

QString wordFor(Request request)
{
    const auto *found = std::find_if(requestWords.begin(), requestWords.end(),
                                     [request](const auto &entry) { return entry.first == request; });
    return found == requestWords.end() ? QString() : QString(found->second);
}

std::optional<Request> requestNamed(const QString &word)
{
    const auto *found = std::find_if(requestWords.begin(), requestWords.end(),
                                     [&word](const auto &entry) { return entry.second == word; });
    return found == requestWords.end() ? std::nullopt : std::optional(found->first);
}

LaunchOptions LaunchOptions::parse(const QStringList &arguments, const QProcessEnvironment &environment)
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
    return interactive(arguments, environment);
}

std::optional<QString> unknownOption(const QStringList &arguments)
{
    // Those that an interactive start goes by, or passes over.
    const QStringList known = {QStringLiteral("--verbose"), QStringLiteral("--goal"),
                               QStringLiteral("--marketing-demo"), QStringLiteral("--marketing-demo-closed"),
                               QStringLiteral("--dbus-service")};
    for (const QString &argument : arguments) {
        if (argument.startsWith(QLatin1String("--")) && !known.contains(argument) && !requestOf(argument))
            return argument;
    }
    return std::nullopt;
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
                          "  --dbus-service              start hidden; the message bus sends what to do\n"
                          "  --marketing-demo            show sample tasks; nothing is read or saved\n"
                          "  --marketing-demo-closed     with these: leave the quadrant board closed\n"
                          "\n"
                          "What a key of the desktop may call; the running program is told:\n"
                          "  --toggle-panel              show the panel, or hide it\n"
                          "  --hide-panel                hide the panel\n"
                          "  --new-todo                  show the panel, ready to type a task\n"
                          "  --desktop-report            print what works on this desktop, and exit\n"
                          "\n"
                          "Without a window, as JSON on standard output:\n"
                          "  --debug-split TITLE         ask the AI for subtasks of a task\n"
                          "  --debug-sort TITLE TITLE... ask the AI to order tasks\n"
                          "  --goal VALUE                the goal that both go by\n"
                          "  --debug-preserve-completed  check that ordering loses no task\n"
                          "\n"
                          "Environment:\n"
                          "  WRENFOLD_DEBUG=1            the same as --verbose\n"
                          "  WRENFOLD_MARKETING_DEMO=1   the same as --marketing-demo\n");
}

QString debugValue(const QString &key, const QStringList &arguments)
{
    const qsizetype index = arguments.indexOf(key);
    return index < 0 ? QString() : arguments.value(index + 1);
}

} // namespace wrenfold
