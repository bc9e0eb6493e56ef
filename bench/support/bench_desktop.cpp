// SPDX-License-Identifier: MIT
#include "support/bench_desktop.h"

#include "model/focus_store.h"
#include "support/sample_state.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>

#include <cstdlib>
#include <memory>
#include <poll.h>

namespace wrenfold {

namespace {

constexpr int patience = 10'000; // Milliseconds.

const xcb_screen_t *screenOf(xcb_connection_t *connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

} // namespace

BenchDesktop::~BenchDesktop()
{
    if (m_connection)
        xcb_disconnect(m_connection);
    for (QProcess *process : {&m_windowManager, &m_server}) {
        process->terminate();
        process->waitForFinished();
    }
}

QString BenchDesktop::start(int taskCount)
{
    if (const QString error = m_bus.start(); !error.isEmpty())
        return error;
    for (const char *folder : {"config", "runtime"}) {
        if (!QDir(m_home.path()).mkpath(QLatin1String(folder)))
            return QStringLiteral("cannot make a home");
    }
    QFile::setPermissions(m_home.filePath(QStringLiteral("runtime")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!save(sampleState(taskCount)))
        return QStringLiteral("cannot save tasks");
    m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_server.start(QStringLiteral("Xvfb"),
                   QStringLiteral("-displayfd 1 -nolisten tcp -noreset -br -screen 0 1280x800x24")
                       .split(QLatin1Char(' ')));
    while (!m_server.canReadLine()) { // It prints its number when it listens.
        if (!m_server.waitForReadyRead())
            return m_server.errorString();
    }
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine()).trimmed();
    m_connection = xcb_connect(m_display.toLatin1().constData(), nullptr);
    if (xcb_connection_has_error(m_connection))
        return QStringLiteral("cannot connect to the X server");
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, screenOf(m_connection)->root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_connection);
    return isMiddleBlack() ? QString() : QStringLiteral("the screen is not black");
}

bool BenchDesktop::startWindowManager()
{
    m_windowManager.setProcessEnvironment(environment());
    m_windowManager.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_windowManager.start(QStringLiteral("openbox"), {});
    const QDeadlineTimer deadline(patience);
    // It says that it is there before it is; the list of its windows comes last.
    while (!tool(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_CLIENT_LIST")})
                .contains(QLatin1String("window id"))) {
        if (deadline.hasExpired())
            return false;
    }
    return true;
}

QProcessEnvironment BenchDesktop::environment() const
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("HOME"), m_home.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.filePath(QStringLiteral("runtime")));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.address());
    return environment;
}

QString BenchDesktop::tool(const QString &name, const QStringList &arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(name, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

bool BenchDesktop::save(const SavedState &state) const
{
    const QString folder = configFolder() + QLatin1String("/Wrenfold/");
    QFile file(folder + FocusStore::storageKey());
    return QDir().mkpath(folder) && file.open(QIODevice::WriteOnly) &&
           file.write(encodeSavedState(state)) > 0;
}

bool BenchDesktop::waitForPicture()
{
    if (!waitForMapping(patience))
        return false;
    const QDeadlineTimer deadline(patience);
    while (isMiddleBlack()) {
        if (deadline.hasExpired())
            return false;
    }
    return true;
}

bool BenchDesktop::waitForBlack()
{
    const QDeadlineTimer deadline(patience);
    while (!isMiddleBlack()) {
        if (deadline.hasExpired())
            return false;
    }
    while (xcb_generic_event_t *old = xcb_poll_for_event(m_connection))
        std::free(old);
    return true;
}

bool BenchDesktop::waitForMapping(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired()) {
        while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
            const int type = event->response_type & 0x7F;
            std::free(event);
            if (type == XCB_MAP_NOTIFY)
                return true;
        }
        pollfd input = {xcb_get_file_descriptor(m_connection), POLLIN, 0};
        ::poll(&input, 1, int(deadline.remainingTime()));
    }
    return false;
}

bool BenchDesktop::isMiddleBlack()
{
    const xcb_screen_t *screen = screenOf(m_connection);
    const auto x = int16_t(screen->width_in_pixels / 2);
    const auto y = int16_t(screen->height_in_pixels / 2);
    const auto cookie = xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, x, y, 1, 1, ~0u);
    const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> reply(
        xcb_get_image_reply(m_connection, cookie, nullptr), &std::free);
    if (!reply)
        return true;
    const uint8_t *pixel = xcb_get_image_data(reply.get());
    return pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0;
}

} // namespace wrenfold
