// SPDX-License-Identifier: MIT
#include "guard/blocked_app_match.h"

#include <algorithm>

namespace wrenfold {

bool isBlocked(const RunningApplication &application, const QList<BlockedApp> &blockedApps)
{
    const QString runningName = application.localizedName.value_or(QString()).toLower();
    const QString runningID = application.bundleIdentifier.value_or(QString()).toLower();
    return std::any_of(blockedApps.begin(), blockedApps.end(), [&](const BlockedApp &entry) {
        const QString id = entry.bundleIdentifier.value_or(QString()).toLower();
        if (!id.isEmpty() && id == runningID)
            return true;
        const QString name = entry.name.trimmed().toLower();
        return !name.isEmpty() && (runningName.contains(name) || runningID.contains(name));
    });
}

} // namespace wrenfold
