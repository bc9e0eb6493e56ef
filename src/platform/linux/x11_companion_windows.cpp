// SPDX-License-Identifier: MIT
#include "platform/linux/x11_companion_windows.h"

#include <QGuiApplication>

#include <algorithm>

namespace wrenfold {
namespace {

/// Or one of its dialogs.
bool hasKeyboard(const QWindow &window)
{
    const QWindow *focused = QGuiApplication::focusWindow();
    while (focused && focused != &window)
        focused = focused->transientParent();
    return focused;
}

} // namespace

X11CompanionWindows::X11CompanionWindows(const X11Surroundings &surroundings, const X11WindowWishes &wishes)
    : m_surroundings(surroundings)
    , m_wishes(wishes)
{
    m_settled.setSingleShot(true);
    m_settled.setInterval(std::chrono::milliseconds(250));
    m_settled.callOnTimeout([this] { repeatWishes(); });
}

void X11CompanionWindows::add(QWindow &window, CompanionKind kind)
{
    std::erase_if(m_companions, [&window](const Companion &companion) {
        return !companion.window || companion.window == &window;
    });
    const Companion &companion =
        m_companions.emplace_back(Companion{&window, kind, kind == CompanionKind::Floating});
    if (window.isVisible())
        tell(companion);
    else if (kind == CompanionKind::Floating)
        m_wishes.writeAtHand(window, companion.isAbove);
    m_settled.start();
}

bool X11CompanionWindows::areInSight() const
{
    return std::any_of(m_companions.begin(), m_companions.end(), [](const Companion &companion) {
        return companion.window && companion.window->isVisible();
    });
}

bool X11CompanionWindows::isHidden(xcb_window_t window) const
{
    return std::any_of(m_companions.begin(), m_companions.end(), [window](const Companion &companion) {
        return companion.window && !companion.window->isVisible() && x11IdOf(*companion.window) == window;
    });
}

void X11CompanionWindows::judge()
{
    for (Companion &companion : m_companions) {
        if (!companion.window || !companion.window->isVisible())
            continue;
        const bool isAbove = hasToBeAbove(companion);
        if (isAbove == companion.isAbove)
            continue;
        companion.isAbove = isAbove;
        tell(companion);
    }
}

void X11CompanionWindows::repeatWishes() const
{
    for (const Companion &companion : m_companions) {
        if (companion.window && companion.window->isVisible())
            tell(companion);
    }
}

void X11CompanionWindows::raiseAbove(const QWindow &panel) const
{
    for (const Companion &companion : m_companions) {
        if (!companion.window || !companion.window->isVisible() || !hasKeyboard(*companion.window) ||
            !m_surroundings.liesAbove(x11IdOf(panel), x11IdOf(*companion.window)))
            continue;
        companion.window->raise();
        QGuiApplication::focusWindow()->raise(); // Its dialog, perhaps.
    }
}

void X11CompanionWindows::tell(const Companion &companion) const
{
    if (companion.kind == CompanionKind::Floating)
        m_wishes.keepAtHand(*companion.window, companion.isAbove);
    else
        m_wishes.keepAbove(*companion.window, companion.isAbove);
}

bool X11CompanionWindows::hasToBeAbove(const Companion &companion) const
{
    using Kind = PanelStanding::Kind;
    const PanelSurroundings surroundings = m_surroundings.around(x11IdOf(*companion.window));
    if (companion.kind == CompanionKind::Floating) {
        const PanelStanding current{companion.isAbove ? Kind::Above : Kind::Ordinary};
        return nextStanding(current, PanelLevel::Floating, surroundings).kind == Kind::Above;
    }
    // Between two windows none is active for a moment.
    if (!surroundings.isFocusOurs && surroundings.active == 0)
        return companion.isAbove;
    return hasKeyboard(*companion.window);
}

} // namespace wrenfold
