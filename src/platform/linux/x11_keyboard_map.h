// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_connection.h"

#include <initializer_list>

namespace wrenfold {

/// Which keys of an X11 session's keyboard stand for what, as it was when this was made.
class X11KeyboardMap
{
public:
    explicit X11KeyboardMap(const X11Connection &connection);

    /// The key that types this without Shift: in the first of the user's layouts, else in the second. Zero without one.
    [[nodiscard]] xcb_keycode_t keyFor(xcb_keysym_t keysym) const;

    /// The mask of the modifier that one of these keys works; zero without one.
    [[nodiscard]] uint16_t modifierOf(std::initializer_list<xcb_keysym_t> keysyms) const;

private:
    [[nodiscard]] xcb_keysym_t at(int key, int column) const;
    [[nodiscard]] bool means(xcb_keycode_t key, std::initializer_list<xcb_keysym_t> keysyms) const;

    const int m_firstKey;
    X11Reply<xcb_get_keyboard_mapping_reply_t> m_keys;
    X11Reply<xcb_get_modifier_mapping_reply_t> m_modifiers;
};

} // namespace wrenfold
