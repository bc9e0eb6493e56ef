// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QString>

class QObject;

namespace wrenfold {

/// Where the key for the AI service comes from.
class OpenRouterAPIKeyProvider
{
public:
    /// The override without surrounding white space; if that is empty, the environment's OPENROUTER_API_KEY as it stands.
    /// Throws AIError (missingAPIKey) when there is neither.
    [[nodiscard]] static QString apiKey(const QString &override);

    /// Looks for a key with 1Password's command-line tool. The tool may ask the user, so this takes as long as it takes.
    /// Fails with AIError (missingAPIKey) when nothing is found; cancelled, and the tool ended, when `owner` goes.
    [[nodiscard]] static QFuture<QString> importFromOnePassword(QObject *owner);
};

} // namespace wrenfold
