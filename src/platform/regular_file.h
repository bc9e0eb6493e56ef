// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

#include <optional>

namespace wrenfold {

struct RegularFile
{
    QByteArray bytes;
    QDateTime modified; ///< When its content was last changed, in UTC.
};

enum class Links { Refuse, Follow };

/// Reads a file that somebody else put there. Nothing for what is no regular file (by way of a link only if links are
/// followed), is larger than `limit` bytes or cannot be read. Waits for no pipe and no device.
[[nodiscard]] std::optional<RegularFile> readRegularFile(const QString &path, qint64 limit, Links links);

/// The names of what is in the folder, but for "." and "..", by their code units. Nothing if it cannot be listed. A
/// name that is not valid in the file system's encoding is left out: nothing could be done with it.
[[nodiscard]] std::optional<QStringList> fileNames(const QString &folder);

} // namespace wrenfold
