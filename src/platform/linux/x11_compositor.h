// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_connection.h"

#include <QAbstractNativeEventFilter>

#include <functional>

namespace wrenfold {

/// Whether a compositor runs, which shows what is behind the transparent parts of windows.
class X11Compositor : private QAbstractNativeEventFilter
{
public:
    explicit X11Compositor(const X11Connection &connection); ///< Must outlive this object.
    ~X11Compositor() override;
    Q_DISABLE_COPY_MOVE(X11Compositor)

    /// Calls `listener` at once and on each change. An empty one ends it.
    void watch(std::function<void(bool)> listener);

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    [[nodiscard]] bool isRunning() const;

    const X11Connection &m_connection;
    const xcb_atom_t m_selection; ///< The one that compositors own.
    int m_selectionEvent = 0; ///< The number of the event that tells of its owners; 0: the server does not.
    bool m_isRunning = false; ///< As the listener knows it.
    std::function<void(bool)> m_listener;
};

} // namespace wrenfold
