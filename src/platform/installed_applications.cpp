// SPDX-License-Identifier: MIT
#include "platform/installed_applications.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QPromise>
#include <QSet>
#include <QStandardPaths>
#include <QThreadPool>

#include <memory>
#include <utility>

namespace wrenfold {
namespace {

qint64 timeOf(const QString &folder)
{
    const QFileInfo info(folder);
    return info.exists() ? info.lastModified().toMSecsSinceEpoch() : -1;
}

} // namespace

InstalledApplications::InstalledApplications()
{
    connect(&m_reading, &QFutureWatcherBase::finished, this, [this] {
        Reading reading = m_reading.result();
        m_entries = std::move(reading.entries);
        m_folders = std::move(reading.folders);
        m_isLoaded = true;
        Q_EMIT loaded();
    });
}

InstalledApplications::~InstalledApplications() = default;

void InstalledApplications::refresh()
{
    if (m_reading.isRunning())
        return;
    bool isCurrent = m_isLoaded;
    for (auto folder = m_folders.cbegin(); isCurrent && folder != m_folders.cend(); ++folder)
        isCurrent = timeOf(folder.key()) == folder.value();
    if (isCurrent)
        return;
    auto promise = std::make_shared<QPromise<Reading>>();
    m_reading.setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise] {
        promise->start();
        promise->addResult(read());
        promise->finish();
    });
}

InstalledApplications::Reading InstalledApplications::read()
{
    QList<DesktopEntry> entries;
    FolderTimes folders;
    QSet<QString> seen; // What the user has of a name hides what the system has of it.
    for (const QString &root : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        folders.insert(root, timeOf(root));
        QStringList paths;
        QDirIterator walk(root, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            if (walk.fileInfo().isDir())
                folders.insert(path, timeOf(path));
            else
                paths.append(path);
        }
        paths.sort();
        for (const QString &path : std::as_const(paths)) {
            const std::optional<DesktopEntry> entry = readDesktopEntry(path);
            if (entry && !seen.contains(entry->id)) {
                seen.insert(entry->id);
                entries.append(*entry);
            }
        }
    }
    return {DesktopEntries(std::move(entries)), std::move(folders)};
}

} // namespace wrenfold
