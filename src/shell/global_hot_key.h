// SPDX-License-Identifier: MIT
#pragma once

#include "platform/global_shortcuts.h"

#include <functional>
#include <memory>

namespace wrenfold {

/// A key combination that runs an action whichever application is in front, from its creation to its destruction. To be
/// used on the main thread, while the application object exists.
class GlobalHotKey
{
public:
    /// "WNFD", by which the desktop tells our shortcuts from others.
    static constexpr int32_t signature = 0x574E4644;

    /// Null when the desktop refuses the combination. `keyCode` is one of VirtualKey and `modifiers` of HotKeyModifier;
    /// a negative value stops the program. `shortcuts` must outlive the hot key. The action always runs from the event
    /// loop, and not any more once the hot key has gone; it may destroy the hot key. A desktop that refuses later leaves
    /// a hot key without effect.
    [[nodiscard]] static std::unique_ptr<GlobalHotKey> create(GlobalShortcuts &shortcuts, int keyCode,
                                                              int modifiers, const QString &description,
                                                              std::function<void()> action);
    ~GlobalHotKey();
    GlobalHotKey(const GlobalHotKey &) = delete;
    GlobalHotKey &operator=(const GlobalHotKey &) = delete;

    /// Its number in this process: how many hot keys were tried by now, refused ones included.
    [[nodiscard]] uint32_t id() const { return m_id; }

    /// The number to hand out after this one; stops the program after the largest.
    [[nodiscard]] static uint32_t idAfter(uint32_t id);

private:
    GlobalHotKey(GlobalShortcuts &shortcuts, uint32_t id);

    GlobalShortcuts &m_shortcuts;
    const uint32_t m_id;
};

} // namespace wrenfold
