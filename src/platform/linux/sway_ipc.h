// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalSocket>
#include <QObject>
#include <QTimer>

#include <functional>

namespace wrenfold {

/// Says by one of the names that a window gives itself (app_id, class or instance) whether it is meant.
using SwayWindowFilter = std::function<bool(const QString &name)>;

/// The con_ids of the windows on the focused workspace for which `isWanted`, in sway's answer to GET_TREE. None if the
/// answer makes no sense.
[[nodiscard]] QList<qint64> windowsOnFocusedWorkspace(const QByteArray &tree,
                                                      const SwayWindowFilter &isWanted);

/// One message of sway's socket, as sent and as received.
struct SwayMessage
{
    enum Type : quint32 { RunCommand = 0, GetTree = 4 };

    quint32 type = RunCommand;
    QByteArray payload;

    [[nodiscard]] QByteArray encoded() const;

    friend bool operator==(const SwayMessage &, const SwayMessage &) = default;
};

/// What has come from sway's socket so far.
struct SwayInput
{
    enum class State { Incomplete, Complete, Malformed };

    State state = State::Incomplete;
    SwayMessage message; ///< When complete.

    /// Reads one message. What is longer than any sensible answer counts as malformed, by its head alone.
    [[nodiscard]] static SwayInput parse(const QByteArray &bytes);
};

/// Puts windows out of sight in sway, which has no minimising: into the scratchpad, from where its user can bring them
/// back. Asks sway once, in the background, and is gone when it has answered or has let two seconds pass.
class SwayScratchpad : public QObject
{
    Q_OBJECT

public:
    /// `socket` is the path of sway's socket. Given up when `context` goes. Errors are logged.
    static void moveWindows(const QString &socket, const SwayWindowFilter &isWanted, QObject *context);

private:
    SwayScratchpad(const SwayWindowFilter &isWanted, QObject *context);

    void send(const SwayMessage &message);
    void read();
    void take(const SwayMessage &answer);
    void giveUp(const QString &reason);
    void finish();

    SwayWindowFilter m_isWanted;
    QLocalSocket m_socket;
    QByteArray m_received;
    QTimer m_patience;
};

} // namespace wrenfold
