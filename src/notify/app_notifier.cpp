// SPDX-License-Identifier: MIT
#include "notify/app_notifier.h"

#include "app/debug_log.h"

namespace wrenfold {

AppNotifier::AppNotifier(NotificationCenter &center)
    : m_center(center)
{
}

void AppNotifier::requestPermissionIfNeeded()
{
    if (m_isPermissionRequested)
        return;
    m_isPermissionRequested = true; // Before the question, so that a post meanwhile does not ask again.
    m_center.requestAuthorization([](bool isGranted, const NotificationCenter::Error &error) {
        if (error)
            qCWarning(DebugLog::app).noquote() << QStringLiteral("notification auth error: ") + *error;
        else
            qCInfo(DebugLog::app).noquote()
                << QStringLiteral("notification permission granted=") + DebugLog::word(isGranted);
    });
}

void AppNotifier::notify(const Notification &notification)
{
    requestPermissionIfNeeded();
    m_center.post(notification, [identifier =
                                     notification.identifier](const NotificationCenter::Error &error) {
        if (error)
            qCWarning(DebugLog::app).noquote() << QStringLiteral("notification schedule failed: ") + *error;
        else if (DebugLog::isVerbose())
            qCDebug(DebugLog::app).noquote() << QStringLiteral("notification posted: ") + identifier;
    });
}

} // namespace wrenfold
