// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace wrenfold {

/// While an object of this class lives, the token with which the desktop let us come to the front is where Qt looks for it
/// when a window asks to be activated. It is good for one activation, and no business of child processes.
class ActivationToken
{
public:
    /// An empty token is none.
    explicit ActivationToken(const QByteArray &token)
    {
        if (!token.isEmpty())
            qputenv(variable, token);
    }
    ~ActivationToken() { qunsetenv(variable); }
    Q_DISABLE_COPY_MOVE(ActivationToken)

    /// The token that this process was started with; empty without one.
    [[nodiscard]] static QByteArray ofThisStart() { return qgetenv(variable); }

private:
    static constexpr auto variable = "XDG_ACTIVATION_TOKEN";
};

} // namespace wrenfold
