// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"

#include <QEvent>
#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace wrenfold {
namespace {

constexpr uint32_t everyDesktop = 0xFFFFFFFF;

} // namespace

X11PanelWindow::X11PanelWindow()
    : m_atoms(m_connection.atoms({"_NET_SUPPORTED", "_NET_WM_DESKTOP", "_NET_WM_STATE", "_NET_WM_STATE_ABOVE",
                                  "_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR",
                                  "_NET_WM_STATE_SKIP_PAGER", "WM_STATE", "_NET_WM_USER_TIME",
                                  "_NET_WM_USER_TIME_WINDOW", "_NET_ACTIVE_WINDOW"}))
    , m_surroundings(m_connection)
    , m_compositor(m_connection)
{
    constexpr auto settled = std::chrono::milliseconds(250);
    constexpr auto patience = std::chrono::milliseconds(500);
    const auto prepare = [this](QTimer &timer, std::chrono::milliseconds interval, auto action) {
        timer.setSingleShot(true);
        timer.setInterval(interval);
        connect(&timer, &QTimer::timeout, this, action);
    };
    prepare(m_settled, settled, [this] {
        if (isInSight())
            sendWishes();
        judge();
    });
    prepare(m_judgement, std::chrono::milliseconds(0), &X11PanelWindow::judge);
    prepare(m_farewell, patience, &X11PanelWindow::showUnmanaged);
    m_connection.listenToRootProperties();
    qGuiApp->installNativeEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, &m_judgement, qOverload<>(&QTimer::start));
}

X11PanelWindow::~X11PanelWindow()
{
    qGuiApp->removeNativeEventFilter(this);
}

Availability X11PanelWindow::availability() const
{
    if (!hasManager())
        return {Availability::Level::Limited, QStringLiteral("No window manager is running.")};
    if (!isSupported(Above))
        return {Availability::Level::Limited,
                QStringLiteral("The window manager does not keep windows above others.")};
    return {};
}

Availability X11PanelWindow::workspacesAvailability() const
{
    if (!hasManager())
        return availability();
    if (!isSupported(Desktop))
        return {Availability::Level::Limited,
                QStringLiteral("The window manager does not put windows on every workspace.")};
    return {};
}

Qt::WindowFlags X11PanelWindow::flags() const
{
    return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

void X11PanelWindow::pin(QWindow &window, PanelLevel level)
{
    m_level = level;
    if (m_window != &window) {
        m_window = &window;
        window.installEventFilter(this);
    }
    if (!window.isVisible()) {
        // A window that comes into sight begins in the window manager's hands.
        m_farewell.stop();
        m_standing = {};
        window.setFlag(Qt::BypassWindowManagerHint, false);
        m_settled.start();
    }
    sendWishes();
    m_judgement.start();
}

void X11PanelWindow::bringBack(QWindow &window)
{
    // As a task bar does it: the window manager may refuse a program that asks for itself, and Qt asks nothing for a
    // window that is not in sight.
    constexpr uint32_t fromPager = 2;
    m_connection.sendToWindowManager(static_cast<xcb_window_t>(window.winId()), m_atoms[ActiveWindow],
                                     {fromPager, XCB_CURRENT_TIME});
    xcb_flush(m_connection);
}

void X11PanelWindow::accompany(QWindow &window, CompanionKind kind)
{
    window.setFlag(Qt::WindowStaysOnTopHint, kind == CompanionKind::Floating);
}

void X11PanelWindow::sendWishes()
{
    if (m_standing.kind == PanelStanding::Kind::Unmanaged)
        return;
    if (!hasManager()) {
        writeWishes();
        return;
    }
    constexpr uint32_t remove = 0;
    constexpr uint32_t add = 1;
    constexpr uint32_t fromApplication = 1;
    const uint32_t above = m_standing.kind == PanelStanding::Kind::Above ? add : remove;
    m_connection.sendToWindowManager(id(), m_atoms[Desktop], {everyDesktop, fromApplication});
    m_connection.sendToWindowManager(id(), m_atoms[State], {above, m_atoms[Above], 0, fromApplication});
    m_connection.sendToWindowManager(id(), m_atoms[State], {add, m_atoms[Sticky], 0, fromApplication});
    m_connection.sendToWindowManager(id(), m_atoms[State],
                                     {add, m_atoms[SkipTaskbar], m_atoms[SkipPager], fromApplication});
    // Full-screen windows have a layer of their own with some window managers only.
    if (m_standing.kind == PanelStanding::Kind::Ordinary)
        m_window->lower();
    xcb_flush(m_connection);
}

/// For a window manager that takes the window in later: it reads the wishes from the window.
void X11PanelWindow::writeWishes()
{
    std::vector<xcb_atom_t> states = {m_atoms[Sticky], m_atoms[SkipTaskbar], m_atoms[SkipPager]};
    if (m_standing.kind == PanelStanding::Kind::Above)
        states.push_back(m_atoms[Above]);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id(), m_atoms[Desktop], XCB_ATOM_CARDINAL, 32, 1,
                        &everyDesktop);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id(), m_atoms[State], XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(states.size()), states.data());
    xcb_flush(m_connection);
}

bool X11PanelWindow::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    constexpr uint8_t sentByClient = 0x80;
    if ((event->response_type & ~sentByClient) != XCB_PROPERTY_NOTIFY || !isInSight())
        return false;
    const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event);
    if (change->window == m_connection.root() && m_surroundings.dependOn(change->atom))
        m_judgement.start();
    else if (m_farewell.isActive() && change->window == id() && change->atom == m_atoms[ManagerState] &&
             isWithdrawn())
        showUnmanaged();
    return false;
}

bool X11PanelWindow::eventFilter(QObject *watched, QEvent *event)
{
    // No window manager gives it the keyboard.
    if (event->type() == QEvent::MouseButtonPress && m_standing.kind == PanelStanding::Kind::Unmanaged)
        m_window->requestActivate();
    return QObject::eventFilter(watched, event);
}

void X11PanelWindow::judge()
{
    if (!isInSight() || m_settled.isActive() || m_farewell.isActive())
        return;
    const PanelStanding next = nextStanding(m_standing, m_level, m_surroundings.around(id()));
    const PanelStanding before = std::exchange(m_standing, next);
    if (next == before)
        return;
    if (next.kind == PanelStanding::Kind::Unmanaged)
        leaveManager();
    else if (before.kind == PanelStanding::Kind::Unmanaged)
        returnToManager();
    else
        sendWishes();
    m_settled.start();
}

void X11PanelWindow::leaveManager()
{
    // Not hidden for Qt: to the program the panel stays in sight.
    xcb_unmap_window(m_connection, id());
    xcb_flush(m_connection);
    // Shown before the window manager has let go of it, it would be taken for one that it still has.
    m_farewell.start();
}

bool X11PanelWindow::isWithdrawn() const
{
    constexpr uint32_t withdrawn = 0;
    const std::vector<uint32_t> state =
        numbersOf(m_connection.answer(m_connection.ask(id(), m_atoms[ManagerState])));
    return state.empty() || state.front() == withdrawn;
}

void X11PanelWindow::showUnmanaged()
{
    m_farewell.stop();
    if (!isInSight())
        return;
    m_window->setFlag(Qt::BypassWindowManagerHint);
    const uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, id(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_map_window(m_connection, id());
    xcb_flush(m_connection);
    m_judgement.start(); // What has happened meanwhile was not looked at.
}

void X11PanelWindow::returnToManager()
{
    xcb_unmap_window(m_connection, id());
    m_window->setFlag(Qt::BypassWindowManagerHint, false);
    writeWishes();
    setUserTime(0); // Who has the keyboard keeps it.
    xcb_map_window(m_connection, id());
    xcb_flush(m_connection);
}

void X11PanelWindow::setUserTime(uint32_t time)
{
    const std::vector<uint32_t> holder =
        numbersOf(m_connection.answer(m_connection.ask(id(), m_atoms[UserTimeWindow])));
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, holder.empty() ? id() : holder.front(),
                        m_atoms[UserTime], XCB_ATOM_CARDINAL, 32, 1, &time);
}

/// A window manager is who redirects what is done to the root's children; properties may be left over from
/// one that has gone.
bool X11PanelWindow::hasManager() const
{
    const auto cookie = xcb_get_window_attributes(m_connection, m_connection.root());
    const X11Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
    return reply && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

bool X11PanelWindow::isSupported(Atom atom) const
{
    const std::vector<uint32_t> supported =
        numbersOf(m_connection.answer(m_connection.ask(m_connection.root(), m_atoms[Supported])));
    return std::find(supported.begin(), supported.end(), m_atoms[atom]) != supported.end();
}

} // namespace wrenfold
