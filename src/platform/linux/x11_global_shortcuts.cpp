// SPDX-License-Identifier: MIT
#include "platform/linux/x11_global_shortcuts.h"

#include "platform/linux/x11_keyboard_map.h"
#include "platform/linux/xcb_xkb.h"

#include <QGuiApplication>

#include <algorithm>
#include <utility>

namespace wrenfold {
namespace {

// Numbers of the X protocol's keysyms; those of letters are their codes.
constexpr xcb_keysym_t altLeft = 0xFFE9;
constexpr xcb_keysym_t altRight = 0xFFEA;
constexpr xcb_keysym_t superLeft = 0xFFEB;
constexpr xcb_keysym_t superRight = 0xFFEC;
constexpr xcb_keysym_t numLock = 0xFF7F;

/// The rest of an event's state are the pointer's buttons and the layout.
constexpr uint16_t allModifiers = 0xFF;

/// The key in the letter's place on an ANSI keyboard, for layouts without Latin letters.
xcb_keycode_t placeOf(uint32_t keyCode)
{
    switch (keyCode) {
    case VirtualKey::P:
        return 33;
    case VirtualKey::H:
        return 43;
    case VirtualKey::T:
        return 28;
    default:
        return 0;
    }
}

} // namespace

X11GlobalShortcuts::X11GlobalShortcuts()
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(m_connection, &xcb_xkb_id);
    if (extension && extension->present)
        m_keyboardEvent = extension->first_event;
    qGuiApp->installNativeEventFilter(this);
}

X11GlobalShortcuts::~X11GlobalShortcuts()
{
    qGuiApp->removeNativeEventFilter(this);
    for (const Registration &registration : m_registrations) {
        if (registration.grab)
            release(*registration.grab);
    }
}

Availability X11GlobalShortcuts::availability() const
{
    QStringList refused = m_refused;
    bool hasOthers = false;
    for (const Registration &registration : m_registrations) {
        if (registration.grab)
            hasOthers = true;
        else
            refused << nameOf(registration.shortcut);
    }
    return availabilityWithout(refused, hasOthers);
}

bool X11GlobalShortcuts::registerShortcut(const GlobalShortcut &shortcut)
{
    const QString name = nameOf(shortcut);
    m_refused.removeAll(name);
    std::optional<Grab> grab = grabFor(shortcut, X11KeyboardMap(m_connection));
    if (!grab || !take(*grab)) {
        m_refused << name;
        return false;
    }
    m_registrations.push_back({shortcut, std::move(grab)});
    return true;
}

void X11GlobalShortcuts::unregisterShortcut(uint32_t id)
{
    const auto found =
        std::find_if(m_registrations.begin(), m_registrations.end(),
                     [id](const Registration &registration) { return registration.shortcut.id == id; });
    if (found == m_registrations.end())
        return;
    if (found->grab)
        release(*found->grab);
    m_registrations.erase(found);
}

std::optional<X11GlobalShortcuts::Grab> X11GlobalShortcuts::grabFor(const GlobalShortcut &shortcut,
                                                                    const X11KeyboardMap &map)
{
    Grab grab;
    grab.key = map.keyFor(letterOf(shortcut.keyCode).unicode());
    if (grab.key == 0)
        grab.key = placeOf(shortcut.keyCode);
    const uint16_t alt = map.modifierOf({altLeft, altRight});
    const uint16_t super = map.modifierOf({superLeft, superRight});
    const bool wantsAlt = shortcut.modifiers & HotKeyModifier::option;
    const bool wantsSuper = shortcut.modifiers & HotKeyModifier::command;
    if (grab.key == 0 || (wantsAlt && alt == 0) || (wantsSuper && super == 0))
        return {};
    const bool wantsControl = shortcut.modifiers & HotKeyModifier::control;
    grab.modifiers = static_cast<uint16_t>((wantsControl ? XCB_MOD_MASK_CONTROL : 0) | (wantsAlt ? alt : 0) |
                                           (wantsSuper ? super : 0));
    const uint16_t num = map.modifierOf({numLock});
    const uint16_t caps = XCB_MOD_MASK_LOCK;
    for (const uint16_t locks : {uint16_t(0), caps, num, static_cast<uint16_t>(num | caps)})
        grab.lockVariants.push_back(static_cast<uint16_t>(grab.modifiers | locks));
    return grab;
}

bool X11GlobalShortcuts::take(const Grab &grab) const
{
    std::vector<xcb_void_cookie_t> cookies;
    for (const uint16_t modifiers : grab.lockVariants)
        cookies.push_back(xcb_grab_key_checked(m_connection, 0, m_connection.root(), modifiers, grab.key,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    bool isGranted = true;
    for (const xcb_void_cookie_t cookie : cookies) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
        isGranted = isGranted && !error;
    }
    if (!isGranted)
        release(grab);
    return isGranted;
}

void X11GlobalShortcuts::release(const Grab &grab) const
{
    for (const uint16_t modifiers : grab.lockVariants)
        xcb_ungrab_key(m_connection, grab.key, m_connection.root(), modifiers);
    xcb_flush(m_connection);
}

void X11GlobalShortcuts::regrabLater()
{
    // A change of layout comes as a handful of events.
    if (!std::exchange(m_isRegrabDue, true))
        QMetaObject::invokeMethod(this, &X11GlobalShortcuts::regrab, Qt::QueuedConnection);
}

void X11GlobalShortcuts::regrab()
{
    m_isRegrabDue = false;
    const X11KeyboardMap map(m_connection);
    std::vector<std::optional<Grab>> wanted;
    for (Registration &registration : m_registrations) {
        wanted.push_back(grabFor(registration.shortcut, map));
        // All are released before any is taken: two may change places.
        if (registration.grab && registration.grab != wanted.back()) {
            release(*registration.grab);
            registration.grab.reset();
        }
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        Registration &registration = m_registrations[i];
        if (!registration.grab && wanted[i] && take(*wanted[i]))
            registration.grab = wanted[i];
    }
}

bool X11GlobalShortcuts::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto &event = *static_cast<const xcb_generic_event_t *>(message);
    // With the type's highest bit, which says that a program made the event up, it is none of these.
    if (event.response_type == XCB_KEY_PRESS)
        return keyPressed(*static_cast<const xcb_key_press_event_t *>(message));
    if (event.response_type == XCB_KEY_RELEASE)
        keyReleased(*static_cast<const xcb_key_release_event_t *>(message));
    else if (isKeyboardChange(event))
        regrabLater();
    return false;
}

bool X11GlobalShortcuts::keyPressed(const xcb_key_press_event_t &event)
{
    const auto found = std::find_if(
        m_registrations.begin(), m_registrations.end(), [&event](const Registration &registration) {
            const auto modifiers = static_cast<uint16_t>(event.state & allModifiers);
            return registration.grab && registration.grab->key == event.detail &&
                   std::count(registration.grab->lockVariants.begin(), registration.grab->lockVariants.end(),
                              modifiers) != 0;
        });
    if (found == m_registrations.end())
        return false;
    // A key that is held comes up and goes down again at the same moment; on connections that ask for it, it only goes
    // down.
    const bool isRepeat = m_lastPressed == event.detail && (!m_releasedAt || *m_releasedAt == event.time);
    m_lastPressed = event.detail;
    m_releasedAt.reset();
    if (!isRepeat && m_handler.pressed)
        m_handler.pressed(found->shortcut.id);
    // From a press on the root Qt takes but its time, which window managers want to see when a window of ours then asks
    // for the keyboard. A press in a window comes when that has grabbed the keyboard, as menus do.
    return event.event != m_connection.root();
}

void X11GlobalShortcuts::keyReleased(const xcb_key_release_event_t &event)
{
    if (event.detail == m_lastPressed)
        m_releasedAt = event.time;
}

bool X11GlobalShortcuts::isKeyboardChange(const xcb_generic_event_t &event) const
{
    if (event.response_type == XCB_MAPPING_NOTIFY)
        return true;
    // Qt has asked for these.
    return m_keyboardEvent != 0 && event.response_type == m_keyboardEvent &&
           (event.pad0 == XCB_XKB_MAP_NOTIFY || event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY);
}

} // namespace wrenfold
