// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/file_system.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace wrenfold {

/// The real file system, but for the disk's own flush: that takes what the disk takes, whatever the program
/// does.
class FileSystemWithoutFlush final : public FileSystem
{
public:
    int fsync(int) override { return 0; }
};

/// A folder beside the program, and so on a disk, which a temporary folder may not be. Needs the application
/// object.
class BenchFolder
{
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder{QCoreApplication::applicationDirPath() + QLatin1String("/bench-XXXXXX")};
};

} // namespace wrenfold
