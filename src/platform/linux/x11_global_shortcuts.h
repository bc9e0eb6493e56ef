// SPDX-License-Identifier: MIT
#pragma once

#include "platform/global_shortcuts.h"
#include "platform/linux/x11_connection.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <optional>
#include <vector>

namespace wrenfold {

class X11KeyboardMap;

/// Global shortcuts of an X11 session, as key grabs on its root window: they hold whatever locks are on, and follow the
/// user's keyboard layout. Not for Xwayland, where a grab is granted and hears nothing while a Wayland window has the
/// keyboard.
class X11GlobalShortcuts final : public QObject, public GlobalShortcuts, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    X11GlobalShortcuts();
    ~X11GlobalShortcuts() override;

    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] bool asksUser() const override { return false; }
    void installEventHandler(const EventHandler &handler) override { m_handler = handler; }
    [[nodiscard]] bool hasEventHandler() const override { return static_cast<bool>(m_handler.pressed); }
    [[nodiscard]] bool registerShortcut(const GlobalShortcut &shortcut) override;
    void unregisterShortcut(uint32_t id) override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    struct Grab
    {
        xcb_keycode_t key = 0;
        uint16_t modifiers = 0;
        std::vector<uint16_t> lockVariants; ///< Of the modifiers, with each combination of the locks.

        friend bool operator==(const Grab &, const Grab &) = default;
    };
    struct Registration
    {
        GlobalShortcut shortcut;
        std::optional<Grab> grab; ///< Empty while another program holds the key, or no key has the letter.
    };

    /// What to grab on this keyboard; empty if it cannot be pressed there.
    static std::optional<Grab> grabFor(const GlobalShortcut &shortcut, const X11KeyboardMap &map);
    /// All variants or none. Whether they were granted.
    [[nodiscard]] bool take(const Grab &grab) const;
    void release(const Grab &grab) const;
    void regrabLater();
    void regrab();

    bool keyPressed(const xcb_key_press_event_t &event);
    void keyReleased(const xcb_key_release_event_t &event);
    [[nodiscard]] bool isKeyboardChange(const xcb_generic_event_t &event) const;

    X11Connection m_connection;
    uint8_t m_keyboardEvent = 0; ///< The type of the keyboard extension's events; zero without the extension.
    EventHandler m_handler;
    std::vector<Registration> m_registrations;
    QStringList m_refused; ///< The names of shortcuts that were refused when they were registered.
    xcb_keycode_t m_lastPressed = 0;
    std::optional<xcb_timestamp_t> m_releasedAt; ///< When that key came up; empty while it is down.
    bool m_isRegrabDue = false;
};

} // namespace wrenfold
