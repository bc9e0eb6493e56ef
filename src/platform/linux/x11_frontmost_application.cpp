// SPDX-License-Identifier: MIT
#include "platform/linux/x11_frontmost_application.h"

#include "app/application_id.h"
#include "platform/clock.h"
#include "platform/installed_applications.h"
#include "platform/linux/process_program.h"

#include <QGuiApplication>
#include <QSysInfo>
#include <QWindow>

#include <algorithm>

namespace wrenfold {
namespace {

enum Atom {
    Supported,
    ActiveWindow,
    ClientList,
    CurrentDesktop,
    ChangeState,
    GtkApplicationID,
    DesktopFile,
    Pid,
    ClientMachine,
    Desktop,
    WindowType,
    TypeDesktop,
    TypeDock,
};

std::vector<QByteArray> atomNames()
{
    return {"_NET_SUPPORTED",           "_NET_ACTIVE_WINDOW",  "_NET_CLIENT_LIST",
            "_NET_CURRENT_DESKTOP",     "WM_CHANGE_STATE",     "_GTK_APPLICATION_ID",
            "_KDE_NET_WM_DESKTOP_FILE", "_NET_WM_PID",         "WM_CLIENT_MACHINE",
            "_NET_WM_DESKTOP",          "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP",
            "_NET_WM_WINDOW_TYPE_DOCK"};
}

bool isOurWindow(xcb_window_t window)
{
    const QWindowList windows = QGuiApplication::allWindows();
    return std::any_of(windows.begin(), windows.end(),
                       [window](const QWindow *ours) { return ours->handle() && x11IdOf(*ours) == window; });
}

/// Also a window that Qt does not know of, such as the desktop's own file dialog.
bool isOurs(const WindowIdentity &identity)
{
    return isOwnWindowName(identity.windowClass) || isOwnWindowName(identity.windowInstance);
}

} // namespace

struct X11FrontmostApplication::IdentityQuestions
{
    xcb_get_property_cookie_t gtkApplicationID;
    xcb_get_property_cookie_t desktopFile;
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t pid;
    xcb_get_property_cookie_t clientMachine;
};

struct X11FrontmostApplication::PlaceQuestions
{
    xcb_get_property_cookie_t desktop;
    xcb_get_property_cookie_t windowType;
};

X11FrontmostApplication::X11FrontmostApplication(InstalledApplications &installed, Clock &clock)
    : m_installed(installed)
    , m_clock(clock)
    , m_atoms(m_connection.atoms(atomNames()))
{
    connect(&m_installed, &InstalledApplications::loaded, this, &X11FrontmostApplication::identify);
}

X11FrontmostApplication::~X11FrontmostApplication()
{
    stop();
}

Availability X11FrontmostApplication::availability() const
{
    if (!contains(m_connection.rootNumbers(m_atoms[Supported]), m_atoms[ActiveWindow]))
        return {Availability::Level::NotAvailable,
                QStringLiteral("The window manager does not tell which window is active.")};
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return {Availability::Level::Limited,
                QStringLiteral("Only windows that run through Xwayland are seen.")};
    return {};
}

void X11FrontmostApplication::start()
{
    if (m_isStarted)
        return;
    m_isStarted = true;
    m_connection.listenToRootProperties();
    qGuiApp->installNativeEventFilter(this);
    m_installed.refresh();
    readActiveWindow();
}

void X11FrontmostApplication::stop()
{
    if (!m_isStarted)
        return;
    m_isStarted = false;
    qGuiApp->removeNativeEventFilter(this);
    listen(m_activeWindow, XCB_EVENT_MASK_NO_EVENT);
    m_activeWindow = XCB_WINDOW_NONE;
    m_known.reset();
    m_lastKnown.reset();
}

std::optional<RunningApplication> X11FrontmostApplication::current() const
{
    // The window manager does not know of one that it does not manage.
    if (m_isStarted && QGuiApplication::focusWindow())
        return RunningApplication{applicationID(), std::nullopt};
    constexpr qint64 bridged = 500;
    if (m_known || !m_lastKnown)
        return m_known;
    const qint64 unknownFor = m_unknownSince.msecsTo(m_clock.now());
    return unknownFor >= 0 && unknownFor < bridged ? m_lastKnown : std::nullopt;
}

bool X11FrontmostApplication::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    switch (typeOf(*event)) {
    case XCB_PROPERTY_NOTIFY: {
        const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event);
        if (change->window == m_connection.root() && change->atom == m_atoms[ActiveWindow])
            readActiveWindow();
        else if (change->window == m_activeWindow && !m_known)
            identify();
        break;
    }
    case XCB_MAP_NOTIFY:
    case XCB_UNMAP_NOTIFY:
        // In both the window that it is about stands in the same place.
        if (reinterpret_cast<const xcb_unmap_notify_event_t *>(event)->window == m_activeWindow)
            identify();
        break;
    case XCB_DESTROY_NOTIFY:
        // Nothing to bridge: it does not come back.
        if (reinterpret_cast<const xcb_destroy_notify_event_t *>(event)->window == m_activeWindow) {
            m_known.reset();
            m_lastKnown.reset();
        }
        break;
    default:
        break;
    }
    return false;
}

void X11FrontmostApplication::readActiveWindow()
{
    const std::vector<uint32_t> active = m_connection.rootNumbers(m_atoms[ActiveWindow]);
    const xcb_window_t window = active.empty() ? xcb_window_t(XCB_WINDOW_NONE) : active.front();
    if (window != m_activeWindow)
        listen(m_activeWindow, XCB_EVENT_MASK_NO_EVENT);
    m_activeWindow = window;
    // Some window managers go on naming a window that has gone.
    listen(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    identify();
}

void X11FrontmostApplication::listen(xcb_window_t window, uint32_t events) const
{
    if (window == XCB_WINDOW_NONE || isOurWindow(window))
        return;
    // Checked, with the answer thrown away: Qt would warn of a window that has gone meanwhile.
    const auto cookie =
        xcb_change_window_attributes_checked(m_connection, window, XCB_CW_EVENT_MASK, &events);
    xcb_discard_reply(m_connection, cookie.sequence);
}

bool X11FrontmostApplication::isShown(xcb_window_t window) const
{
    const auto cookie = xcb_get_window_attributes(m_connection, window);
    xcb_generic_error_t *error = nullptr;
    const X11Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection, cookie, &error));
    std::free(error);
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

void X11FrontmostApplication::identify()
{
    if (!m_isStarted)
        return;
    std::optional<RunningApplication> application = this->application(m_activeWindow);
    if (m_known && !application) {
        m_lastKnown = m_known;
        m_unknownSince = m_clock.now();
    }
    // Some programs name their window only after they have shown it. Of one that is known no change matters: a title may
    // change many times a second.
    if (m_known.has_value() != application.has_value() || !application)
        listen(m_activeWindow, application
                                   ? XCB_EVENT_MASK_STRUCTURE_NOTIFY
                                   : XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    m_known = std::move(application);
}

std::optional<RunningApplication> X11FrontmostApplication::application(xcb_window_t window) const
{
    if (window == XCB_WINDOW_NONE)
        return std::nullopt;
    if (isOurWindow(window))
        return RunningApplication{applicationID(), std::nullopt};
    const WindowIdentity identity = this->identity(askIdentity(window));
    if (identity == WindowIdentity{} || !isShown(window))
        return std::nullopt;
    if (isOurs(identity))
        return RunningApplication{applicationID(), std::nullopt};
    m_installed.refresh();
    if (!m_installed.isLoaded())
        return std::nullopt;
    return m_installed.entries().application(identity);
}

X11FrontmostApplication::IdentityQuestions X11FrontmostApplication::askIdentity(xcb_window_t window) const
{
    return {m_connection.ask(window, m_atoms[GtkApplicationID]),
            m_connection.ask(window, m_atoms[DesktopFile]), m_connection.ask(window, XCB_ATOM_WM_CLASS),
            m_connection.ask(window, m_atoms[Pid]), m_connection.ask(window, m_atoms[ClientMachine])};
}

WindowIdentity X11FrontmostApplication::identity(const IdentityQuestions &questions) const
{
    const auto text = [this](xcb_get_property_cookie_t cookie) {
        return QString::fromUtf8(bytesOf(m_connection.answer(cookie)));
    };
    WindowIdentity identity;
    identity.gtkApplicationID = text(questions.gtkApplicationID);
    identity.desktopFile = text(questions.desktopFile);
    // The instance and the class, each with a zero behind it.
    const QList<QByteArray> names = bytesOf(m_connection.answer(questions.windowClass)).split('\0');
    identity.windowInstance = QString::fromUtf8(names.value(0));
    identity.windowClass = QString::fromUtf8(names.value(1));
    const std::vector<uint32_t> pid = numbersOf(m_connection.answer(questions.pid));
    const QString machine = text(questions.clientMachine);
    // A number of another machine's would be that of some other program here.
    if (!pid.empty() && machine == QSysInfo::machineHostName())
        identity.program = processProgram(pid.front());
    return identity;
}

void X11FrontmostApplication::hide(const RunningApplication &application)
{
    struct Window
    {
        xcb_window_t id;
        IdentityQuestions identity;
        PlaceQuestions place;
    };
    std::vector<Window> windows;
    for (const xcb_window_t id : m_connection.rootNumbers(m_atoms[ClientList])) {
        if (!isOurWindow(id))
            windows.push_back(
                {id,
                 askIdentity(id),
                 {m_connection.ask(id, m_atoms[Desktop]), m_connection.ask(id, m_atoms[WindowType])}});
    }
    const std::vector<uint32_t> desktop = m_connection.rootNumbers(m_atoms[CurrentDesktop]);
    for (const Window &window : windows) {
        const bool isHere = canBeHidden(window.place, desktop.empty() ? 0 : desktop.front());
        constexpr uint32_t iconic = 3;
        const WindowIdentity identity = this->identity(window.identity);
        if (m_installed.entries().application(identity) == application && !isOurs(identity) && isHere)
            m_connection.sendToWindowManager(window.id, m_atoms[ChangeState], {iconic});
    }
    xcb_flush(m_connection);
}

bool X11FrontmostApplication::canBeHidden(const PlaceQuestions &questions, uint32_t currentDesktop) const
{
    const std::vector<uint32_t> desktop = numbersOf(m_connection.answer(questions.desktop));
    const std::vector<uint32_t> types = numbersOf(m_connection.answer(questions.windowType));
    const bool isHere =
        desktop.empty() || desktop.front() == currentDesktop || desktop.front() == allDesktops;
    return isHere && !contains(types, m_atoms[TypeDesktop]) && !contains(types, m_atoms[TypeDock]);
}

} // namespace wrenfold
