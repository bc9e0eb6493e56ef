// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>

#include <optional>

namespace wrenfold {

/// One TODO candidate, as read from one file of the inbox folder.
struct InboxItem
{
    QString id; ///< The file's name.
    QUrl fileURL;
    QString text;
    QString source; ///< Lower case; empty when unknown.
    std::optional<QUrl> url;
    QDateTime receivedAt;

    friend bool operator==(const InboxItem &, const InboxItem &) = default;
};

} // namespace wrenfold
