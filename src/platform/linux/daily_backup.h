// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/file_system.h"

#include <QDate>
#include <QHash>
#include <QString>

namespace wrenfold {

/// For every day on which a key is written, its value as it was before that day's first write: the file
/// `backups/<key>.<yyyy-MM-dd>` in the preferences folder. Of each key the newest 14 are kept.
class DailyBackup
{
public:
    /// `folder` is the preferences folder. The file system must outlive this.
    DailyBackup(FileSystem &fileSystem, const QString &folder);

    /// To be called before every write. Copies what the key holds, unless it is absent or today's copy
    /// exists. A copy that fails must not stop the write: it goes into the log, once a day, and the next call
    /// tries again.
    void beforeWrite(const QString &key, QDate today);

private:
    void removeOldCopies(const QString &key);
    void logFailure(const QString &error, QDate today);

    FileSystem &m_fileSystem;
    QString m_folder;
    QString m_backups;
    QHash<QString, QDate> m_lastCopy; ///< The day of each key's last known copy.
    QDate m_lastFailureLogged;
};

} // namespace wrenfold
