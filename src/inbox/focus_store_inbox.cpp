// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "inbox/inbox_file.h"
#include "inbox/inbox_reader.h"
#include "inbox/inbox_watcher.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"

#include <QFile>

#include <utility>

namespace wrenfold {

namespace {

void removeFiles(const QList<InboxItem> &items)
{
    for (const InboxItem &item : items) {
        // Another candidate may have been written in its place, which nobody has seen yet.
        if (InboxFile::decode(item.fileURL) == item)
            QFile::remove(item.fileURL.toLocalFile());
    }
}

} // namespace

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

void FocusStore::takeInbox(QList<InboxItem> items, bool notifyNewItems)
{
    // Approved ones are tasks already, also while their files have to wait.
    items.removeIf([this](const InboxItem &item) { return m_unsavedApprovals.contains(item); });
    QSet<QString> ids;
    QString firstNewText;
    qsizetype newCount = 0;
    for (const InboxItem &item : std::as_const(items)) {
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
    forgetInboxItems(items);
    m_unsavedApprovals += items;
    // While the document cannot be saved, the file is all that would be left of the task.
    if (!hasUnsavedChanges())
        removeSavedApprovals();
}

void FocusStore::removeSavedApprovals()
{
    removeFiles(std::exchange(m_unsavedApprovals, {}));
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
    removeFiles(items);
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
