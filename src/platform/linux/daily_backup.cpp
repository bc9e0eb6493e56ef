// SPDX-License-Identifier: MIT
#include "platform/linux/daily_backup.h"

#include "app/debug_log.h"
#include "platform/linux/atomic_file.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr qsizetype copiesKept = 14;

QString copyName(const QString &key, QDate day)
{
    return key + QLatin1Char('.') + day.toString(Qt::ISODate);
}

/// Only names that we would give ourselves: whatever else lies in the folder is not ours to remove.
bool isCopyOf(const QString &key, const QString &name)
{
    const QDate day = QDate::fromString(name.mid(key.size() + 1), Qt::ISODate);
    return day.isValid() && name == copyName(key, day);
}

} // namespace

DailyBackup::DailyBackup(FileSystem &fileSystem, const QString &folder)
    : m_fileSystem(fileSystem)
    , m_folder(folder)
    , m_backups(folder + QLatin1String("/backups"))
{
}

void DailyBackup::beforeWrite(const QString &key, QDate today)
{
    if (m_lastCopy.value(key) == today)
        return;
    const QString copy = m_backups + QLatin1Char('/') + copyName(key, today);
    if (!isSomethingAt(copy)) {
        const QString original = m_folder + QLatin1Char('/') + key;
        const Preferences::ReadResult before = readFile(m_fileSystem, original);
        if (before.status == Preferences::ReadStatus::Absent)
            return;
        if (before.status == Preferences::ReadStatus::Unreadable)
            return logFailure(QStringLiteral("cannot read %1").arg(original), today);
        if (const auto error = makePrivateFolder(m_fileSystem, m_backups))
            return logFailure(*error, today);
        if (const auto error = replaceFile(m_fileSystem, copy, before.bytes))
            return logFailure(*error, today);
        removeOldCopies(key);
    }
    m_lastCopy.insert(key, today);
}

void DailyBackup::removeOldCopies(const QString &key)
{
    // The dates sort as text.
    QStringList names = QDir(m_backups).entryList(QDir::Files | QDir::NoSymLinks | QDir::Hidden);
    names.removeIf([&key](const QString &name) { return !isCopyOf(key, name); });
    std::sort(names.begin(), names.end());
    for (qsizetype i = 0; i < names.size() - copiesKept; ++i)
        m_fileSystem.unlink(QFile::encodeName(m_backups + QLatin1Char('/') + names.at(i)));
}

void DailyBackup::logFailure(const QString &error, QDate today)
{
    if (m_lastFailureLogged == today)
        return;
    m_lastFailureLogged = today;
    qCWarning(DebugLog::store()).noquote()
        << QStringLiteral("The daily copy could not be made: %1").arg(error);
}

} // namespace wrenfold
