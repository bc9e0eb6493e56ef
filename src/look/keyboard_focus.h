// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

namespace wrenfold {

/// Whether a widget that has the focus shows it: only when the focus came by keyboard, as a click shows
/// itself where it went.
class KeyboardFocus
{
public:
    /// To be called from focusInEvent().
    void arrived(Qt::FocusReason reason)
    {
        // Coming back from another window or a menu, the focus is shown as before.
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
            reason == Qt::MenuBarFocusReason)
            return;
        m_isShown = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                    reason == Qt::ShortcutFocusReason;
    }

    [[nodiscard]] bool isShown() const { return m_isShown; }

private:
    bool m_isShown = false;
};

} // namespace wrenfold
