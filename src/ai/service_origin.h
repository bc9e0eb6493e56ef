// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace wrenfold {

/// Where AI requests go.
struct ServiceOrigin
{
    QUrl url;                     ///< Scheme, host and port.
    std::optional<QString> error; ///< Why there is none, in one line; nothing is to be sent then.

    /// The service's own, or the one that WRENFOLD_OPENROUTER_ORIGIN names: HTTPS anywhere, HTTP on this machine only.
    [[nodiscard]] static ServiceOrigin fromEnvironment();
    /// An empty text names the service's own.
    [[nodiscard]] static ServiceOrigin named(const QString &text);
};

} // namespace wrenfold
