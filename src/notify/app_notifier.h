// SPDX-License-Identifier: MIT
#pragma once

#include "platform/notification_center.h"

namespace wrenfold {

/// The one way by which the program posts notifications. Callers never wait and never learn the outcome; it goes
/// into the log.
class AppNotifier
{
public:
    /// `center` must outlive the notifier.
    explicit AppNotifier(NotificationCenter &center);

    /// Asks the desktop for permission, once in a run. The answer changes nothing here.
    void requestPermissionIfNeeded();

    /// Posts, whatever the desktop has said to the question before; asks it first if nobody has.
    void notify(const Notification &notification);

private:
    NotificationCenter &m_center;
    bool m_isPermissionRequested = false;
};

} // namespace wrenfold
