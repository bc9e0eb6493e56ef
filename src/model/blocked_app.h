// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace wrenfold {

/// One application that the focus guard blocks.
struct BlockedApp
{
    QString id;   ///< The bundle identifier, else the path; unique within the list.
    QString name; ///< As displayed.
    std::optional<QString> bundleIdentifier;
    std::optional<QString> path;

    friend bool operator==(const BlockedApp &, const BlockedApp &) = default;
};

/// What is blocked until the user says otherwise.
[[nodiscard]] inline QList<BlockedApp> defaultBlockedApps()
{
    const QString line = QStringLiteral("jp.naver.line.mac");
    return {{line, QStringLiteral("LINE"), line, std::nullopt}};
}

} // namespace wrenfold
