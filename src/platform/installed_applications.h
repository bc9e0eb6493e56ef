// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_entries.h"

#include <QFutureWatcher>
#include <QHash>
#include <QObject>

namespace wrenfold {

/// The desktop entries of this system and this user, read in the background.
class InstalledApplications : public QObject
{
    Q_OBJECT

public:
    InstalledApplications();
    ~InstalledApplications() override;

    /// Reads the entries at first, and again when files have come to or gone from their folders since. Cheap when
    /// nothing has.
    void refresh();

    /// Whether they have been read at all.
    [[nodiscard]] bool isLoaded() const { return m_isLoaded; }
    [[nodiscard]] const DesktopEntries &entries() const { return m_entries; }

Q_SIGNALS:
    /// entries() has been read, for the first time or anew.
    void loaded();

private:
    using FolderTimes = QHash<QString, qint64>; ///< When each folder last changed, in milliseconds.
    struct Reading
    {
        DesktopEntries entries;
        FolderTimes folders;
    };

    [[nodiscard]] static Reading read();

    DesktopEntries m_entries;
    FolderTimes m_folders;
    bool m_isLoaded = false;
    QFutureWatcher<Reading> m_reading;
};

} // namespace wrenfold
