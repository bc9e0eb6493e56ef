// SPDX-License-Identifier: MIT
#pragma once

#include "model/saved_state.h"
#include "support/private_bus.h"

#include <QProcess>
#include <QTemporaryDir>

#include <xcb/xcb.h>

namespace wrenfold {

/// An X server, a session bus and a home of its own for the programs that are measured. Black.
class BenchDesktop
{
public:
    BenchDesktop() = default;
    ~BenchDesktop();
    Q_DISABLE_COPY_MOVE(BenchDesktop)

    /// Without a window manager, and with that many tasks saved for Wren Fold. The answer is empty or what went
    /// wrong.
    [[nodiscard]] QString start(int taskCount);

    /// Puts another document in the place of the one that Wren Fold will find, which must not be running.
    [[nodiscard]] bool save(const SavedState &state) const;

    /// False when openbox does not manage windows within ten seconds.
    [[nodiscard]] bool startWindowManager();

    [[nodiscard]] QProcessEnvironment environment() const;

    /// What a tool prints here, without the line break at its end; empty when it fails.
    [[nodiscard]] QString tool(const QString &name, const QStringList &arguments) const;

    /// Waits until something is painted at the middle of the screen: for a window to be mapped, then for the
    /// pixel to change. False when that takes longer than ten seconds.
    [[nodiscard]] bool waitForPicture();

    /// Waits until the middle of the screen is black again.
    [[nodiscard]] bool waitForBlack();

private:
    [[nodiscard]] QString configFolder() const { return m_home.filePath(QStringLiteral("config")); }
    [[nodiscard]] bool waitForMapping(int milliseconds);
    [[nodiscard]] bool isMiddleBlack();

    QTemporaryDir m_home;
    PrivateBus m_bus;
    QProcess m_server;
    QProcess m_windowManager;
    QString m_display;
    xcb_connection_t *m_connection = nullptr;
};

} // namespace wrenfold
