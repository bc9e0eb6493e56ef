// SPDX-License-Identifier: MIT
#pragma once

#include "model/inbox_item.h"

#include <QList>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>

namespace wrenfold {

class Clock;
class ScheduledCall;

/// Reads the candidates of the inbox folder. However many there are, the main thread is given back every few
/// milliseconds; a few are read before read() returns.
class InboxReader
{
public:
    /// What was read, oldest first, and whether any of the calls that led to it wanted new ones announced.
    using Done = std::function<void(const QList<InboxItem> &items, bool notifyNewItems)>;

    /// `clock` must outlive the reader.
    InboxReader(Clock &clock, Done done);
    ~InboxReader();

    /// Calls `done` when all has been read; not at all if the folder cannot be listed. While a reading is under way,
    /// any number of calls lead to one more after it.
    void read(bool notifyNewItems);

    /// Leaves the candidate out of a reading that is under way: its file has been taken care of.
    void forget(const QString &id);

private:
    void begin(bool notifyNewItems);
    void readSlice();
    void finish();

    Clock &m_clock;
    const Done m_done;
    QStringList m_names; ///< Still to be read, the last one first.
    QList<InboxItem> m_items;
    QSet<QString> m_forgotten;
    bool m_isReading = false;
    bool m_notifyNewItems = false;
    std::optional<bool> m_next; ///< Whether the next reading is to announce new ones, if there is to be one.
    std::unique_ptr<ScheduledCall> m_slice;
};

} // namespace wrenfold
