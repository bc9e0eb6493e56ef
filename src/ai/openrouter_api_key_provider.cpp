// SPDX-License-Identifier: MIT
#include "ai/openrouter_api_key_provider.h"

#include "ai/ai_error.h"
#include "ai/one_password_search.h"

namespace wrenfold {

QString OpenRouterAPIKeyProvider::apiKey(const QString &override)
{
    if (const QString key = override.trimmed(); !key.isEmpty())
        return key;
    if (const QString key = qEnvironmentVariable("OPENROUTER_API_KEY"); !key.isEmpty())
        return key;
    throw AIError(OpenRouterSorterError::missingAPIKey);
}

QFuture<QString> OpenRouterAPIKeyProvider::importFromOnePassword(QObject *owner)
{
    return OnePasswordSearch::start(owner);
}

} // namespace wrenfold
