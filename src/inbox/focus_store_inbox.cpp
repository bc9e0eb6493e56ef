// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "inbox/inbox_reader.h"
#include "inbox/inbox_watcher.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"

#include <QFile>

namespace wrenfold {

void FocusStore::monitorInbox(FolderWatch &folderWatch)
{
    m_inboxWatcher = std::make_shared<InboxWatcher>(folderWatch, m_clock);
    m_inboxWatcher->onChange = [this] { reloadInbox(true); };
    m_inboxWatcher->start();
    reloadInbox(false);
}

void FocusStore::reloadInbox(bool notifyNewItems)
{
    if (!m_inboxReader) {
        m_inboxReader = std::make_shared<InboxReader>(
            m_clock, [this](const QList<InboxItem> &items, bool notify) { takeInbox(items, notify); });
    }
    m_inboxReader->read(notifyNewItems);
}

void FocusStore::takeInbox(const QList<InboxItem> &items, bool notifyNewItems)
{
    QSet<QString> ids;
    QString firstNewText;
    qsizetype newCount = 0;
    for (const InboxItem &item : items) {
        ids.insert(item.id);
        if (m_knownInboxIDs.contains(item.id))
            continue;
        if (newCount++ == 0)
            firstNewText = item.text;
    }
    m_knownInboxIDs = ids;
    inboxItems.set(items);
    qCInfo(DebugLog::store).noquote()
        << QStringLiteral("inbox reloaded items=%1 new=%2").arg(items.size()).arg(newCount);
    if (notifyNewItems && newCount > 0) {
        m_notifier.notify({QStringLiteral("wrenfold.inbox.arrival"),
                           QStringLiteral("📥 TODO候補が%1件届きました").arg(newCount), firstNewText});
    }
}

void FocusStore::approveInboxItem(const InboxItem &item, bool makeActive)
{
    addTopLevelTask(item.text, makeActive);
    removeApproved({item});
    flashStatus(QStringLiteral("InboxからTODOに追加しました"));
}

void FocusStore::approveAllInboxItems()
{
    const QList<InboxItem> items = inboxItems.value();
    if (items.isEmpty())
        return;
    {
        const ChangeGroup::Scope scope(m_changes);
        for (const InboxItem &item : items)
            addTopLevelTask(item.text, false);
    }
    removeApproved(items); // Only now that the tasks are saved, so that each is always in one place at least.
    flashStatus(QStringLiteral("Inboxの%1件をTODOに追加しました").arg(items.size()));
}

void FocusStore::removeApproved(const QList<InboxItem> &items)
{
    // While the document cannot be saved, the file is all that would be left of the task.
    if (hasUnsavedChanges())
        forgetInboxItems(items);
    else
        removeInboxFiles(items);
}

void FocusStore::dismissAllInboxItems()
{
    const QList<InboxItem> items = inboxItems.value();
    if (items.isEmpty())
        return;
    removeInboxFiles(items);
    flashStatus(QStringLiteral("Inboxの%1件を削除しました").arg(items.size()));
}

void FocusStore::removeInboxFile(const InboxItem &item)
{
    removeInboxFiles({item});
}

void FocusStore::removeInboxFiles(const QList<InboxItem> &items)
{
    for (const InboxItem &item : items)
        QFile::remove(item.fileURL.toLocalFile());
    forgetInboxItems(items);
}

void FocusStore::forgetInboxItems(const QList<InboxItem> &items)
{
    QSet<QString> ids;
    for (const InboxItem &item : items) {
        ids.insert(item.id);
        if (m_inboxReader)
            m_inboxReader->forget(item.id);
    }
    m_knownInboxIDs.subtract(ids);
    QList<InboxItem> left = inboxItems.value();
    left.removeIf([&](const InboxItem &item) { return ids.contains(item.id); });
    inboxItems.set(left);
}

} // namespace wrenfold
