// SPDX-License-Identifier: MIT
#include "platform/linux/x11_keyboard_map.h"

#include <algorithm>

namespace wrenfold {

X11KeyboardMap::X11KeyboardMap(const X11Connection &connection)
    : m_firstKey(xcb_get_setup(connection)->min_keycode)
{
    const int count = xcb_get_setup(connection)->max_keycode - m_firstKey + 1;
    const auto keys = xcb_get_keyboard_mapping(connection, static_cast<xcb_keycode_t>(m_firstKey),
                                               static_cast<uint8_t>(count));
    const auto modifiers = xcb_get_modifier_mapping(connection);
    m_keys.reset(xcb_get_keyboard_mapping_reply(connection, keys, nullptr));
    m_modifiers.reset(xcb_get_modifier_mapping_reply(connection, modifiers, nullptr));
}

xcb_keycode_t X11KeyboardMap::keyFor(xcb_keysym_t keysym) const
{
    if (!m_keys || m_keys->keysyms_per_keycode == 0)
        return 0;
    const int columns = m_keys->keysyms_per_keycode;
    const int count = xcb_get_keyboard_mapping_keysyms_length(m_keys.get()) / columns;
    // The first two layouts have two columns each, without and with Shift.
    for (int column = 0; column < std::min(columns, 4); column += 2) {
        for (int key = m_firstKey; key < m_firstKey + count; ++key) {
            if (at(key, column) == keysym)
                return static_cast<xcb_keycode_t>(key);
        }
    }
    return 0;
}

uint16_t X11KeyboardMap::modifierOf(std::initializer_list<xcb_keysym_t> keysyms) const
{
    if (!m_keys || !m_modifiers)
        return 0;
    const xcb_keycode_t *key = xcb_get_modifier_mapping_keycodes(m_modifiers.get());
    for (int modifier = 0; modifier < 8; ++modifier) { // From Shift to Mod5, in the order of their bits.
        for (int i = 0; i < m_modifiers->keycodes_per_modifier; ++i, ++key) {
            if (means(*key, keysyms))
                return static_cast<uint16_t>(1U << modifier);
        }
    }
    return 0;
}

xcb_keysym_t X11KeyboardMap::at(int key, int column) const
{
    return xcb_get_keyboard_mapping_keysyms(
        m_keys.get())[(key - m_firstKey) * m_keys->keysyms_per_keycode + column];
}

bool X11KeyboardMap::means(xcb_keycode_t key, std::initializer_list<xcb_keysym_t> keysyms) const
{
    if (key < m_firstKey) // Unused places of the modifier map are zero.
        return false;
    for (int column = 0; column < m_keys->keysyms_per_keycode; ++column) {
        if (std::find(keysyms.begin(), keysyms.end(), at(key, column)) != keysyms.end())
            return true;
    }
    return false;
}

} // namespace wrenfold
