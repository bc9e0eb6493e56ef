// SPDX-License-Identifier: MIT
#include "inbox/inbox_watcher.h"

#include "app/debug_log.h"
#include "platform/clock.h"
#include "platform/folder_watch.h"

#include <QDir>
#include <QStandardPaths>

namespace wrenfold {

InboxWatcher::InboxWatcher(FolderWatch &folderWatch, Clock &clock)
    : m_folderWatch(folderWatch)
    , m_clock(clock)
{
}

InboxWatcher::~InboxWatcher()
{
    m_folderWatch.stop();
}

QUrl InboxWatcher::inboxDirectory()
{
    return QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                               QStringLiteral("/Wrenfold/inbox"));
}

void InboxWatcher::start()
{
    const QString folder = inboxDirectory().toLocalFile();
    if (watch())
        qCInfo(DebugLog::store).noquote() << QStringLiteral("inbox watcher started: ") + folder;
    else
        qCWarning(DebugLog::store).noquote() << QStringLiteral("inbox watcher: cannot open ") + folder;
}

bool InboxWatcher::watch()
{
    const QString folder = inboxDirectory().toLocalFile();
    QDir().mkpath(folder);
    return m_folderWatch.start(folder, {[this] { scheduleChange(); }, [this] { watchAgain(); }});
}

void InboxWatcher::watchAgain()
{
    constexpr auto patience = std::chrono::seconds(10);
    if (watch()) {
        m_retry.reset();
        scheduleChange();
    } else {
        m_retry = m_clock.after(patience, [this] { watchAgain(); });
    }
}

void InboxWatcher::scheduleChange()
{
    constexpr auto quiet = std::chrono::milliseconds(200);
    m_change = m_clock.after(quiet, [this] {
        if (onChange)
            onChange();
    });
}

} // namespace wrenfold
