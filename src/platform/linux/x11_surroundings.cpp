// SPDX-License-Identifier: MIT
#include "platform/linux/x11_surroundings.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace wrenfold {
X11Surroundings::X11Surroundings(const X11Connection &connection)
    : m_connection(connection)
    , m_atoms(connection.atoms({"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST_STACKING", "_NET_CURRENT_DESKTOP",
                                "_NET_WM_STATE", "_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_HIDDEN",
                                "_NET_WM_DESKTOP"}))
{
}

bool X11Surroundings::dependOn(xcb_atom_t rootProperty) const
{
    return rootProperty == m_atoms[ActiveWindow] || rootProperty == m_atoms[Stacking] ||
           rootProperty == m_atoms[CurrentDesktop];
}

PanelSurroundings X11Surroundings::around(xcb_window_t window) const
{
    PanelSurroundings surroundings;
    const QWindow *focused = QGuiApplication::focusWindow();
    surroundings.isFocusOurs = focused != nullptr;
    surroundings.isFocusHere = focused && x11IdOf(*focused) == window;
    const std::vector<uint32_t> active = m_connection.rootNumbers(m_atoms[ActiveWindow]);
    surroundings.active = active.empty() ? 0 : active.front();

    const std::vector<xcb_window_t> stacking =
        m_connection.rootNumbers(m_atoms[Stacking]); // From the lowest.
    const auto placeInStack = std::find(stacking.begin(), stacking.end(), window);
    const QRect place = rectOf(window);
    for (const xcb_window_t fullScreen : fullScreenInSight(stacking)) {
        if (!rectOf(fullScreen).intersects(place))
            continue;
        surroundings.fullScreen.push_back(fullScreen);
        if (std::find(placeInStack, stacking.end(), fullScreen) != stacking.end())
            surroundings.fullScreenAbove.push_back(fullScreen);
    }
    return surroundings;
}

bool X11Surroundings::liesAbove(xcb_window_t upper, xcb_window_t lower) const
{
    const std::vector<xcb_window_t> stacking = m_connection.rootNumbers(m_atoms[Stacking]);
    const auto lowerAt = std::find(stacking.begin(), stacking.end(), lower);
    return std::find(lowerAt, stacking.end(), upper) != stacking.end();
}

std::vector<xcb_window_t> X11Surroundings::fullScreenInSight(const std::vector<xcb_window_t> &windows) const
{
    struct Questions
    {
        xcb_window_t window;
        xcb_get_property_cookie_t state;
        xcb_get_property_cookie_t desktop;
    };
    std::vector<Questions> asked;
    for (const xcb_window_t window : windows)
        asked.push_back(
            {window, m_connection.ask(window, m_atoms[State]), m_connection.ask(window, m_atoms[Desktop])});
    const std::vector<uint32_t> currentDesktop = m_connection.rootNumbers(m_atoms[CurrentDesktop]);
    std::vector<xcb_window_t> found;
    for (const Questions &questions : asked) {
        const std::vector<uint32_t> state = numbersOf(m_connection.answer(questions.state));
        const std::vector<uint32_t> desktop = numbersOf(m_connection.answer(questions.desktop));
        const bool isHere =
            desktop.empty() || desktop.front() == allDesktops || contains(currentDesktop, desktop.front());
        if (contains(state, m_atoms[FullScreen]) && !contains(state, m_atoms[Hidden]) && isHere)
            found.push_back(questions.window);
    }
    return found;
}

QRect X11Surroundings::rectOf(xcb_window_t window) const
{
    const auto sizeCookie = xcb_get_geometry(m_connection, window);
    const auto placeCookie = xcb_translate_coordinates(m_connection, window, m_connection.root(), 0, 0);
    // Handed a place for the error, xcb does not put it among the events, where Qt would warn of it.
    xcb_generic_error_t *error = nullptr;
    const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(m_connection, sizeCookie, &error));
    std::free(std::exchange(error, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_connection, placeCookie, &error));
    std::free(error);
    return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

} // namespace wrenfold
