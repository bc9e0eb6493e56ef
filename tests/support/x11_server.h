// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <QList>
#include <QTest>
#include <QWindow>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

/// What a test asks the X server through Qt's connection.
namespace wrenfold::x11 {

using Values = QList<uint32_t>;

inline xcb_connection_t *connection()
{
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}
inline xcb_window_t root()
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
}
inline xcb_window_t idOf(const QWindow &window)
{
    return static_cast<xcb_window_t>(window.winId());
}

inline xcb_atom_t atom(const char *name)
{
    const auto cookie = xcb_intern_atom(connection(), 0, static_cast<uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(connection(), cookie, nullptr);
    const xcb_atom_t answer = reply->atom;
    std::free(reply);
    return answer;
}

inline Values valuesOf(xcb_window_t window, const char *name)
{
    const auto cookie =
        xcb_get_property(connection(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024);
    xcb_get_property_reply_t *reply = xcb_get_property_reply(connection(), cookie, nullptr);
    if (!reply)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(reply));
    const Values values(first, first + (reply->format == 32 ? reply->value_len : 0));
    std::free(reply);
    return values;
}

inline void setValues(xcb_window_t window, const char *name, const Values &atoms)
{
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom(name), XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(atoms.size()), atoms.constData());
}

/// Which of the panel's states the window lacks. A window manager that does not know STICKY is let off that
/// one: to some, being on every desktop says it all.
inline QList<QByteArray> missingStates(const QWindow &window)
{
    const Values states = valuesOf(idOf(window), "_NET_WM_STATE");
    const Values supported = valuesOf(root(), "_NET_SUPPORTED");
    QList<QByteArray> missing;
    for (const char *name :
         {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}) {
        if (!states.contains(atom(name)))
            missing.append(name);
    }
    const xcb_atom_t sticky = atom("_NET_WM_STATE_STICKY");
    if (!states.contains(sticky) && (supported.isEmpty() || supported.contains(sticky)))
        missing.append("_NET_WM_STATE_STICKY");
    return missing;
}

/// Waits until something is so and stays so. Qt, the window manager and the panel write over each other's wishes, and the
/// panel repeats its own: what is true at one look may be what was before.
template<typename Condition>
bool comesToStay(Condition condition)
{
    constexpr int longerThanARepetition = 500;
    QDeadlineTimer deadline(10000);
    while (!deadline.hasExpired()) {
        if (QTest::qWaitFor(condition) &&
            !QTest::qWaitFor([&] { return !condition(); }, longerThanARepetition))
            return true;
    }
    return false;
}

/// Waits until the panel's wishes are met.
inline bool comeToBeMet(const QWindow &window)
{
    const Values everyDesktop = {0xFFFFFFFF};
    return comesToStay([&] {
        return valuesOf(idOf(window), "_NET_WM_DESKTOP") == everyDesktop && missingStates(window).isEmpty();
    });
}

inline bool isMapped(const QWindow &window)
{
    const auto cookie = xcb_get_window_attributes(connection(), idOf(window));
    auto *reply = xcb_get_window_attributes_reply(connection(), cookie, nullptr);
    const bool answer = reply && reply->map_state != XCB_MAP_STATE_UNMAPPED;
    std::free(reply);
    return answer;
}

/// Whether window managers leave the window alone.
inline bool isUnmanaged(const QWindow &window)
{
    const auto cookie = xcb_get_window_attributes(connection(), idOf(window));
    auto *reply = xcb_get_window_attributes_reply(connection(), cookie, nullptr);
    const bool answer = reply && reply->override_redirect;
    std::free(reply);
    return answer;
}

/// The window in sight at a point of the screen, be it a window manager's frame; zero for the root itself.
inline xcb_window_t windowAt(const QPoint &point)
{
    const auto cookie =
        xcb_translate_coordinates(connection(), root(), root(), int16_t(point.x()), int16_t(point.y()));
    auto *reply = xcb_translate_coordinates_reply(connection(), cookie, nullptr);
    const xcb_window_t answer = reply->child;
    std::free(reply);
    return answer;
}

/// The window among the root's children that this one is, or lies in.
inline xcb_window_t topLevelOf(xcb_window_t window)
{
    for (;;) {
        auto *reply = xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr);
        const xcb_window_t parent = reply ? reply->parent : root();
        std::free(reply);
        if (parent == root())
            return window;
        window = parent;
    }
}

} // namespace wrenfold::x11
