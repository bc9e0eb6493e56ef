// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTest>

#include <memory>

/// What a test asks of the sway session that it runs in.
namespace wrenfold::sway {

/// What swaymsg prints; the test fails when it cannot be run.
[[nodiscard]] QByteArray message(const QStringList &arguments);

/// Runs a command of sway's; the test fails when sway refuses it.
void run(const QString &command);

/// Ends the session.
void end();

/// The app_id, or for X11 windows the class, of every window on a workspace, in the tree's order. The scratchpad is
/// "__i3_scratch".
[[nodiscard]] QStringList windowsOn(const QString &workspace);

/// A window of a program of its own, in front, until this object goes.
class Window
{
public:
    explicit Window(const QString &appID);
    ~Window();
    Q_DISABLE_COPY_MOVE(Window)

private:
    QProcess m_program;
};

} // namespace wrenfold::sway
