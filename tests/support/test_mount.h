// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace wrenfold {

/// A mount on a folder that only the calling thread sees, until this object goes. Needs the rights of root.
class TestMount
{
public:
    explicit TestMount(const QString &folder);
    ~TestMount();
    Q_DISABLE_COPY_MOVE(TestMount)

    /// Mounts an empty file system in memory with room for so many bytes. The answer is empty or what went
    /// wrong.
    [[nodiscard]] QString mountMemory(int bytes);

    /// Mounts the folder on itself, read-only. The answer is empty or what went wrong.
    [[nodiscard]] QString mountReadOnly();

private:
    QByteArray m_folder;
    bool m_isMounted = false;
};

} // namespace wrenfold
