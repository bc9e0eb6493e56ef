// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/file_system.h"
#include "platform/preferences.h"

#include <QString>

#include <optional>

// Files that are there as a whole or not at all. No error means that the change is on disk; otherwise the
// text of what went wrong is returned. All paths are absolute.

namespace wrenfold {

/// Puts a file of this mode with these bytes in the place of whatever file or link bears the name. They are
/// written to a hidden file in the same folder first, so at every moment the old or the new file is there
/// whole. There must be one writer; the hidden file of a writer that was killed is overwritten by the next.
/// After an error the old file is in place, or, if only the flush of the folder failed, the new one.
[[nodiscard]] std::optional<QString> replaceFile(FileSystem &fileSystem, const QString &path,
                                                 const QByteArray &bytes, mode_t mode = 0600);

/// Renames within one folder, replacing what bears the new name.
[[nodiscard]] std::optional<QString> moveFile(FileSystem &fileSystem, const QString &from, const QString &to);

/// Makes a folder, and those above it, with mode 0700. One that exists is taken from group and others, except
/// where its file system cannot do so.
[[nodiscard]] std::optional<QString> makePrivateFolder(FileSystem &fileSystem, const QString &path);

/// Reads a whole regular file, through links. Anything else that bears the name is unreadable; nothing
/// blocks.
[[nodiscard]] Preferences::ReadResult readFile(FileSystem &fileSystem, const QString &path);

/// Whether a name is free, and whether something bears it, if only a link that leads nowhere. Neither is true
/// of what cannot be looked at.
[[nodiscard]] bool isNothingAt(const QString &path);
[[nodiscard]] bool isSomethingAt(const QString &path);

} // namespace wrenfold
