// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_companion_windows.h"
#include "platform/linux/x11_compositor.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace wrenfold {

/// The panel's window under X11, through Qt's own connection: to be made after the application object and
/// used while that exists. Questions to the server wait for its answer, not for the window manager's.
class X11PanelWindow : public QObject, public PanelWindow, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    X11PanelWindow();
    ~X11PanelWindow() override;

    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] Availability workspacesAvailability() const override;
    [[nodiscard]] Qt::WindowFlags flags() const override;
    void watchTranslucency(std::function<void(bool)> listener) override
    {
        m_compositor.watch(std::move(listener));
    }
    void pin(QWindow &window, PanelLevel level) override;
    void bringBack(QWindow &window) override;
    void accompany(QWindow &window, CompanionKind kind) override;

private:
    enum Atom { ManagerState, UserTime, UserTimeWindow };

    bool eventFilter(QObject *watched, QEvent *event) override;
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

    void sendWishes();
    void managerStateChanged(); ///< Of the panel.

    void judge();
    void judgeThePanel();
    void leaveManager();
    void showUnmanaged();
    void returnToManager();
    void setUserTime(uint32_t time);
    void takeUpKeyboard();

    [[nodiscard]] xcb_window_t id() const { return x11IdOf(*m_window); }
    [[nodiscard]] bool isInSight() const { return m_window && m_window->isVisible(); }
    [[nodiscard]] bool isWithdrawn() const;

    const X11Connection m_connection;
    const std::vector<xcb_atom_t> m_atoms;
    const X11WindowWishes m_wishes;
    const X11Surroundings m_surroundings;
    X11CompanionWindows m_companions;
    X11Compositor m_compositor;
    QPointer<QWindow> m_window;
    PanelLevel m_level = PanelLevel::Floating;
    PanelStanding m_standing;
    bool m_isRaisingDue = false; ///< Of the window that has the keyboard, above the panel.
    QTimer m_settled;            ///< Runs until everybody has written what he writes when a window is shown.
    QTimer m_judgement;    ///< Runs until the next turn of the event loop; several events then count as one.
    QTimer m_farewell;     ///< Runs while the window manager has yet to let go of the window.
    QTimer m_keyboardLoss; ///< Runs while the window manager may yet give somebody the keyboard.
};

} // namespace wrenfold
