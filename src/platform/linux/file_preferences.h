// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"
#include "platform/linux/daily_backup.h"
#include "platform/linux/file_system.h"
#include "platform/preferences.h"

namespace wrenfold {

/// Preferences as files: one a key, under the key's name, in a folder that the first write makes. Folder and
/// files are for the user alone (0700, 0600). There must be one writer to a folder. Beside the files lie
/// values kept aside (`<key>.<yyyy-MM-ddTHH-mm-ss>`) and the daily copies, see DailyBackup.
class FilePreferences final : public Preferences
{
public:
    /// Clock and file system must outlive this.
    FilePreferences(const QString &folder, const Clock &clock, FileSystem &fileSystem = FileSystem::real());

    /// `Wrenfold` in the user's configuration folder, which is $XDG_CONFIG_HOME or else ~/.config.
    [[nodiscard]] static QString defaultFolder();

    [[nodiscard]] ReadResult read(const QString &key) const override;
    [[nodiscard]] std::optional<QString> write(const QString &key, const QByteArray &bytes) override;
    [[nodiscard]] std::optional<QString> keepAside(const QString &key) override;

private:
    [[nodiscard]] QString pathOf(const QString &key) const;

    QString m_folder;
    const Clock &m_clock;
    FileSystem &m_fileSystem;
    DailyBackup m_dailyBackup;
};

} // namespace wrenfold
