// SPDX-License-Identifier: MIT
#pragma once

#include "model/inbox_item.h"

#include <QByteArray>

namespace wrenfold {

/// One file of the inbox folder, and the candidate in it.
struct InboxFile
{
    /// Whether a file of this name is looked at at all.
    [[nodiscard]] static bool isCandidateName(const QString &name);

    /// The candidate in the file, read now. Nothing for what is no regular file, is reached by a link, is larger than a
    /// mebibyte, cannot be read or holds no candidate.
    [[nodiscard]] static std::optional<InboxItem> decode(const QUrl &fileURL);

    /// The candidate in these bytes of a file that was written at `modified`. Nothing if there is none.
    [[nodiscard]] static std::optional<InboxItem> decode(const QUrl &fileURL, const QByteArray &bytes,
                                                         const QDateTime &modified);

    /// A moment as "2025-01-31T09:15:00Z", with or without a fraction of the second; the zone is a must.
    [[nodiscard]] static std::optional<QDateTime> internetDateTime(const QString &text);
};

} // namespace wrenfold
