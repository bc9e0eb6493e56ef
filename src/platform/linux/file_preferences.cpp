// SPDX-License-Identifier: MIT
#include "platform/linux/file_preferences.h"

#include "platform/linux/atomic_file.h"

#include <QStandardPaths>

namespace wrenfold {

FilePreferences::FilePreferences(const QString &folder, const Clock &clock, FileSystem &fileSystem)
    : m_folder(folder)
    , m_clock(clock)
    , m_fileSystem(fileSystem)
    , m_dailyBackup(fileSystem, folder)
{
}

QString FilePreferences::defaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/Wrenfold");
}

Preferences::ReadResult FilePreferences::read(const QString &key) const
{
    return readFile(m_fileSystem, pathOf(key));
}

std::optional<QString> FilePreferences::write(const QString &key, const QByteArray &bytes)
{
    if (auto error = makePrivateFolder(m_fileSystem, m_folder))
        return error;
    m_dailyBackup.beforeWrite(key, m_clock.now().date());
    return replaceFile(m_fileSystem, pathOf(key), bytes);
}

std::optional<QString> FilePreferences::keepAside(const QString &key)
{
    const QString path = pathOf(key);
    if (isNothingAt(path))
        return std::nullopt;
    const QString now = m_clock.now().toString(QStringLiteral("yyyy-MM-dd'T'HH-mm-ss"));
    const QString dated = path + QLatin1Char('.') + now;
    QString aside = dated;
    for (int number = 2; isSomethingAt(aside); ++number)
        aside = dated + QLatin1Char('-') + QString::number(number);
    return moveFile(m_fileSystem, path, aside);
}

QString FilePreferences::pathOf(const QString &key) const
{
    return m_folder + QLatin1Char('/') + key;
}

} // namespace wrenfold
