// SPDX-License-Identifier: MIT
#include "platform/linux/kwin_frontmost_application.h"

#include "app/application_id.h"
#include "app/debug_log.h"
#include "platform/installed_applications.h"
#include "platform/linux/kwin_script_text.h"
#include "platform/linux/process_program.h"

#include <QCoreApplication>

#include <utility>

namespace wrenfold {
namespace {

const auto kwinService = QStringLiteral("org.kde.KWin");
const auto busService = QStringLiteral("org.freedesktop.DBus");
const auto objectPath = QStringLiteral("/dev/tolvane/Wrenfold/ActiveWindow"); // As the scripts have it.

/// One that is killed cannot take its scripts away; the names are fixed so that the next one does.
const auto reporterName = QStringLiteral("dev.tolvane.Wrenfold.ActiveWindow");
const auto minimizerName = QStringLiteral("dev.tolvane.Wrenfold.MinimizeWindows");

/// More than anybody has applications; a window that renames itself all the time fills no memory.
constexpr qsizetype mostSeen = 200;

} // namespace

KWinFrontmostApplication::KWinFrontmostApplication(InstalledApplications &installed,
                                                   std::chrono::milliseconds patience)
    : m_installed(installed)
    , m_patience(patience)
    , m_reporter(reporterName, patience)
    , m_minimizer(minimizerName, patience)
{
    m_retry.setSingleShot(true);
    m_retry.setInterval(patience);
    connect(&m_retry, &QTimer::timeout, this, &KWinFrontmostApplication::advance);
    connect(&m_reporter, &KWinScript::failed, this, &KWinFrontmostApplication::fail);
    connect(&m_minimizer, &KWinScript::failed, this, [](const QString &reason) {
        qCInfo(DebugLog::guard).noquote() << QStringLiteral("No windows were hidden: %1").arg(reason);
    });
    connect(&m_installed, &InstalledApplications::loaded, this, &KWinFrontmostApplication::identify);
}

KWinFrontmostApplication::~KWinFrontmostApplication()
{
    stop();
}

void KWinFrontmostApplication::start()
{
    if (m_isStarted)
        return;
    m_isStarted = true;
    m_installed.refresh();
    advance();
}

void KWinFrontmostApplication::stop()
{
    m_isStarted = false;
    m_retry.stop();
    m_reporter.unload();
    m_minimizer.unload();
    forgetWindow();
}

void KWinFrontmostApplication::advance()
{
    if (!m_isStarted || m_isConnecting)
        return;
    if (m_connection && m_connection->isConnected()) {
        m_retry.stop();
        m_reporter.run(*m_connection, reportActiveWindowScript(m_connection->baseService()));
        return;
    }
    m_isConnecting = true;
    m_connection.reset();
    m_bus.connect(m_patience, this, [this](const QDBusConnection &connection) { serve(connection); });
}

void KWinFrontmostApplication::serve(const QDBusConnection &connection)
{
    m_isConnecting = false;
    m_connection.emplace(connection);
    if (!m_connection->isConnected())
        return fail(QStringLiteral("There is no session bus that answers."));
    m_connection->follow(BusSignal::nameOwnerChanged(kwinService), this,
                         SLOT(nameOwnerChanged(QDBusMessage)));
    m_connection->follow(BusSignal::disconnected(), this, SLOT(disconnected()));
    m_connection->offer(objectPath, this);
    advance();
}

void KWinFrontmostApplication::hide(const RunningApplication &application)
{
    if (m_reporter.kwin().isEmpty())
        return;
    QList<WindowIdentity> windows;
    for (const WindowIdentity &window : std::as_const(m_seen)) {
        if (m_installed.entries().application(window) == application)
            windows.append(window);
    }
    const QByteArray script = minimizeWindowsScript(m_connection->baseService(), windows);
    if (!windows.isEmpty() && !(m_minimizer.isBusy() && m_minimizer.text() == script))
        m_minimizer.run(*m_connection, script);
}

void KWinFrontmostApplication::Changed(const QString &windowClass, const QString &windowInstance,
                                       const QString &desktopFile, const QString &pid)
{
    if (!isCalledByKWin())
        return;
    m_reporter.confirm();
    m_availability = {};
    forgetWindow();
    WindowIdentity window;
    window.windowClass = windowClass;
    window.windowInstance = windowInstance;
    window.desktopFile = desktopFile;
    window.program = processProgram(pid.toLongLong());
    m_isOurWindowActive = pid.toLongLong() == QCoreApplication::applicationPid() ||
                          isOwnWindowName(windowClass) || isOwnWindowName(desktopFile);
    if (window == WindowIdentity{} || m_isOurWindowActive)
        return identify();
    m_window = window;
    m_seen.removeAll(window);
    m_seen.append(window);
    if (m_seen.size() > mostSeen)
        m_seen.removeFirst();
    m_installed.refresh();
    identify();
}

void KWinFrontmostApplication::WindowsMinimized()
{
    if (isCalledByKWin())
        m_minimizer.unload();
}

bool KWinFrontmostApplication::isCalledByKWin() const
{
    return calledFromDBus() && !m_reporter.kwin().isEmpty() && message().service() == m_reporter.kwin();
}

void KWinFrontmostApplication::identify()
{
    m_current.reset();
    if (m_isOurWindowActive)
        m_current = RunningApplication{applicationID(), std::nullopt};
    else if (m_window && m_installed.isLoaded())
        m_current = m_installed.entries().application(*m_window);
}

void KWinFrontmostApplication::forgetWindow()
{
    m_window.reset();
    m_isOurWindowActive = false;
    identify();
}

void KWinFrontmostApplication::fail(const QString &reason)
{
    forgetWindow();
    if (!m_isStarted)
        return;
    if (m_availability.reason != reason)
        qCInfo(DebugLog::guard).noquote() << QStringLiteral("The active window is not known: %1").arg(reason);
    m_availability = {Availability::Level::NotAvailable, reason};
    m_retry.start();
}

void KWinFrontmostApplication::nameOwnerChanged(const QDBusMessage &signal)
{
    if (!m_isStarted || signal.service() != busService)
        return;
    m_minimizer.unload();
    m_reporter.unload();
    if (signal.arguments().value(2).toString().isEmpty())
        return fail(QStringLiteral("KWin is not running."));
    forgetWindow();
    advance();
}

void KWinFrontmostApplication::disconnected()
{
    m_minimizer.unload();
    m_reporter.unload();
    fail(QStringLiteral("There is no session bus that answers."));
}

} // namespace wrenfold
