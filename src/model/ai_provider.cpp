// SPDX-License-Identifier: MIT
#include "model/ai_provider.h"

namespace wrenfold {

QLatin1String rawValue(AIProvider provider)
{
    static constexpr std::array<QLatin1String, allAIProviders.size()> texts = {
        QLatin1String("OpenRouter"), QLatin1String("ChatGPT"), QLatin1String("Codex"),
        QLatin1String("Ollama")};
    return texts[std::size_t(provider)];
}

std::optional<AIProvider> aiProviderFromRawValue(const QString &text)
{
    for (const AIProvider provider : allAIProviders) {
        if (text == rawValue(provider))
            return provider;
    }
    return std::nullopt;
}

} // namespace wrenfold
