// SPDX-License-Identifier: MIT
#pragma once

#include "support/private_bus.h"

#include <QProcess>
#include <QTemporaryDir>

#include <xcb/xcb.h>

namespace wrenfold {

/// An X server, a session bus and an empty home of its own for the programs that are measured. Black, without
/// a window manager.
class BenchDesktop
{
public:
    BenchDesktop() = default;
    ~BenchDesktop();
    Q_DISABLE_COPY_MOVE(BenchDesktop)

    /// The answer is empty or what went wrong.
    [[nodiscard]] QString start();

    /// The folder for the programs' preferences.
    [[nodiscard]] QString configFolder() const { return m_home.filePath(QStringLiteral("config")); }
    [[nodiscard]] QProcessEnvironment environment() const;

    /// Waits until something is painted at the middle of the screen: for a window to be mapped, then for the
    /// pixel to change. False when that takes longer than ten seconds.
    [[nodiscard]] bool waitForPicture();

    /// Waits until the middle of the screen is black again.
    [[nodiscard]] bool waitForBlack();

private:
    [[nodiscard]] bool waitForMapping(int milliseconds);
    [[nodiscard]] bool isMiddleBlack();

    QTemporaryDir m_home;
    PrivateBus m_bus;
    QProcess m_server;
    QString m_display;
    xcb_connection_t *m_connection = nullptr;
};

} // namespace wrenfold
