// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "platform/desktop_entries.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace wrenfold {

namespace {

BlockedApp blockedApp(const QString &path)
{
    if (const std::optional<DesktopEntry> entry = readDesktopEntry(path))
        return {entry->id, entry->name, entry->id, path};
    // Only the last extension is one: "Notes 2.1.app" is "Notes 2.1". A name that begins with its only dot has none.
    const QFileInfo file(path);
    const QString base = file.completeBaseName();
    return {path, base.isEmpty() ? file.fileName() : base, std::nullopt, path};
}

} // namespace

void FocusStore::addBlockedApp(const QUrl &url)
{
    if (!url.isLocalFile())
        return;
    const BlockedApp app = blockedApp(QDir::cleanPath(url.toLocalFile()));
    QList<BlockedApp> apps = blockedApps.value();
    if (std::any_of(apps.begin(), apps.end(), [&](const BlockedApp &entry) { return entry.id == app.id; }))
        return;
    apps.append(app);
    blockedApps.set(apps);
}

void FocusStore::removeBlockedApp(const BlockedApp &app)
{
    QList<BlockedApp> apps = blockedApps.value();
    apps.removeIf([&](const BlockedApp &entry) { return entry.id == app.id; });
    blockedApps.set(apps);
}

} // namespace wrenfold
