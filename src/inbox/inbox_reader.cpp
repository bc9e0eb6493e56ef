// SPDX-License-Identifier: MIT
#include "inbox/inbox_reader.h"

#include "inbox/inbox_file.h"
#include "inbox/inbox_watcher.h"
#include "platform/clock.h"
#include "platform/regular_file.h"

#include <QElapsedTimer>

#include <algorithm>
#include <utility>

namespace wrenfold {

InboxReader::InboxReader(Clock &clock, Done done)
    : m_clock(clock)
    , m_done(std::move(done))
{
}

InboxReader::~InboxReader() = default;

void InboxReader::read(bool notifyNewItems)
{
    if (m_isReading)
        m_next = notifyNewItems || m_next.value_or(false);
    else
        begin(notifyNewItems);
}

void InboxReader::forget(const QString &id)
{
    if (m_isReading)
        m_forgotten.insert(id);
}

void InboxReader::begin(bool notifyNewItems)
{
    std::optional<QStringList> names = fileNames(InboxWatcher::inboxDirectory().toLocalFile());
    if (!names)
        return;
    std::reverse(names->begin(), names->end());
    m_names = *std::move(names);
    m_notifyNewItems = notifyNewItems;
    m_isReading = true;
    readSlice();
}

void InboxReader::readSlice()
{
    constexpr qint64 slice = 8; // Milliseconds: half a frame.
    const QUrl folder = InboxWatcher::inboxDirectory();
    QElapsedTimer time;
    time.start();
    while (!m_names.isEmpty() && time.elapsed() < slice) {
        const QString name = m_names.takeLast();
        if (!InboxFile::isCandidateName(name))
            continue;
        const QUrl file = QUrl::fromLocalFile(folder.toLocalFile() + u'/' + name);
        if (std::optional<InboxItem> item = InboxFile::decode(file))
            m_items.append(*std::move(item));
    }
    if (m_names.isEmpty())
        finish();
    else
        m_slice = m_clock.after(std::chrono::milliseconds(0), [this] { readSlice(); });
}

void InboxReader::finish()
{
    m_isReading = false;
    QList<InboxItem> items = std::exchange(m_items, {});
    const QSet<QString> forgotten = std::exchange(m_forgotten, {});
    items.removeIf([&](const InboxItem &item) { return forgotten.contains(item.id); });
    std::stable_sort(items.begin(), items.end(), [](const InboxItem &first, const InboxItem &second) {
        return first.receivedAt < second.receivedAt;
    });
    m_done(items, m_notifyNewItems);
    if (const std::optional<bool> next = std::exchange(m_next, {}))
        begin(*next);
}

} // namespace wrenfold
