// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <sys/types.h>

namespace wrenfold {

/// The names in a folder, hidden ones included, in order.
[[nodiscard]] QStringList namesIn(const QString &folder);

/// A file's bytes; the test fails when they cannot be read.
[[nodiscard]] QByteArray bytesOf(const QString &path);

/// Puts a file there; the test fails when that cannot be done.
void putFile(const QString &path, const QByteArray &bytes, mode_t mode = 0600);

/// The permission bits; follows links. The test fails when nothing is there.
[[nodiscard]] mode_t modeOf(const QString &path);

/// While it lives, the process has the rights of a user who owns nothing. Needs to be started by root.
class RightsOfNobody
{
public:
    RightsOfNobody();
    ~RightsOfNobody();
    Q_DISABLE_COPY_MOVE(RightsOfNobody)
};

} // namespace wrenfold
