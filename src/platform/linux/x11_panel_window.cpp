// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"

#include <QEvent>
#include <QGuiApplication>

#include <utility>

namespace wrenfold {

X11PanelWindow::X11PanelWindow()
    : m_atoms(m_connection.atoms({"WM_STATE", "_NET_WM_USER_TIME", "_NET_WM_USER_TIME_WINDOW"}))
    , m_wishes(m_connection)
    , m_surroundings(m_connection)
    , m_companions(m_surroundings, m_wishes)
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
        m_isRaisingDue = true;
        judge();
    });
    prepare(m_judgement, std::chrono::milliseconds(0), &X11PanelWindow::judge);
    prepare(m_farewell, patience, &X11PanelWindow::showUnmanaged);
    m_connection.listenToRootProperties();
    qGuiApp->installNativeEventFilter(this);
    prepare(m_keyboardLoss, settled, &X11PanelWindow::takeUpKeyboard);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow *focused) {
        m_isRaisingDue = true;
        m_judgement.start();
        if (!focused)
            m_keyboardLoss.start();
    });
}

X11PanelWindow::~X11PanelWindow()
{
    qGuiApp->removeNativeEventFilter(this);
}

Availability X11PanelWindow::availability() const
{
    if (!m_wishes.hasManager())
        return {Availability::Level::Limited, QStringLiteral("No window manager is running.")};
    if (!m_wishes.isAboveSupported())
        return {Availability::Level::Limited,
                QStringLiteral("The window manager does not keep windows above others.")};
    return {};
}

Availability X11PanelWindow::workspacesAvailability() const
{
    if (!m_wishes.hasManager())
        return availability();
    if (!m_wishes.isEveryWorkspaceSupported())
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
    m_wishes.leaveGroup(window);
    sendWishes();
    m_judgement.start();
}

void X11PanelWindow::bringBack(QWindow &window)
{
    m_wishes.bringToFront(window);
}

void X11PanelWindow::accompany(QWindow &window, CompanionKind kind)
{
    m_companions.add(window, kind);
}

void X11PanelWindow::sendWishes()
{
    if (m_standing.kind != PanelStanding::Kind::Unmanaged)
        m_wishes.keepAtHand(*m_window, m_standing.kind == PanelStanding::Kind::Above);
}

bool X11PanelWindow::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if (typeOf(*event) != XCB_PROPERTY_NOTIFY || !(isInSight() || m_companions.areInSight()))
        return false;
    const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event);
    if (change->window == m_connection.root() && m_surroundings.dependOn(change->atom))
        m_judgement.start();
    else if (isInSight() && change->window == id() && change->atom == m_atoms[ManagerState])
        managerStateChanged();
    return false;
}

void X11PanelWindow::managerStateChanged()
{
    // A window manager that takes the place of another begins with the panel as with any other window.
    if (!m_farewell.isActive())
        m_settled.start();
    else if (isWithdrawn())
        showUnmanaged();
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
    m_companions.judge();
    if (isInSight() && !m_settled.isActive() && !m_farewell.isActive())
        judgeThePanel();
    // Once for each reason: a window manager that has another mind is not argued with.
    if (isInSight() && std::exchange(m_isRaisingDue, false))
        m_companions.raiseAbove(*m_window);
}

/// When a window is hidden, openbox gives the keyboard to none of those that are on every workspace: without another
/// window nobody has it.
void X11PanelWindow::takeUpKeyboard()
{
    if (isInSight() && !QGuiApplication::focusWindow() &&
        m_companions.isHidden(m_surroundings.around(id()).active))
        m_window->requestActivate();
}

void X11PanelWindow::judgeThePanel()
{
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
    const std::vector<uint32_t> state = m_connection.numbers(id(), m_atoms[ManagerState]);
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
    m_wishes.writeAtHand(*m_window, m_standing.kind == PanelStanding::Kind::Above);
    setUserTime(0); // Who has the keyboard keeps it.
    xcb_map_window(m_connection, id());
    xcb_flush(m_connection);
}

void X11PanelWindow::setUserTime(uint32_t time)
{
    const std::vector<uint32_t> holder = m_connection.numbers(id(), m_atoms[UserTimeWindow]);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, holder.empty() ? id() : holder.front(),
                        m_atoms[UserTime], XCB_ATOM_CARDINAL, 32, 1, &time);
}

} // namespace wrenfold
