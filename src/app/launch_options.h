// SPDX-License-Identifier: MIT
#pragma once

#include <QProcessEnvironment>
#include <QStringList>

#include <optional>

namespace wrenfold {

/// What a start asks of the program that runs already; where none does, the start does it itself.
enum class Request { ShowPanel, TogglePanel, HidePanel, NewTodo, DesktopReport };

/// Its word: the option without its hyphens, and the name that desktops and other starts send.
[[nodiscard]] QString wordFor(Request request);
[[nodiscard]] std::optional<Request> requestNamed(const QString &word);

/// What the command line asks for. Options are compared as whole arguments; unknown ones are passed over, for they may
/// be the toolkit's.
struct LaunchOptions
{
    enum class Mode {
        Interactive,
        DebugSplit,
        DebugSort,
        DebugPreserveCompleted,
        UsageError, ///< Of a debug command.
        Help,
        Version,
    };

    Mode mode = Mode::Interactive;
    QStringList taskTitles;               ///< One for DebugSplit, two or more for DebugSort.
    QString mediumGoal;                   ///< For DebugSplit and DebugSort.
    QString usageError;                   ///< One line, without a line break.
    Request request = Request::ShowPanel; ///< Of an interactive start that is no demonstration.
    /// Started by the message bus, which then sends the request: `request` is unused.
    bool isBusService = false;
    bool isDemonstration = false; ///< On sample data: beside the running program, without the saved document.
    bool isBoardClosed = false;   ///< The demonstration starts without the quadrant board.

    /// `arguments` are those behind the program's path. A debug command wins over everything else; a split
    /// over a sort over the self-check.
    [[nodiscard]] static LaunchOptions parse(const QStringList &arguments,
                                             const QProcessEnvironment &environment = {});

    /// The text of --help.
    [[nodiscard]] static QString help();

    friend bool operator==(const LaunchOptions &, const LaunchOptions &) = default;
};

/// The first of an interactive start's arguments that looks like an option, with two hyphens, and is none of ours. To be
/// asked when the toolkit has taken out its own.
[[nodiscard]] std::optional<QString> unknownOption(const QStringList &arguments);

/// The argument behind the first one equal to `key`, whatever it looks like; empty when there is none.
[[nodiscard]] QString debugValue(const QString &key, const QStringList &arguments);

} // namespace wrenfold
