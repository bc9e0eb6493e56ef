// SPDX-License-Identifier: MIT
#include "model/ai_provider.h"

#include "support/test_case.h"

namespace wrenfold {

class AIProviderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyProviderIsReadBackFromItsText()
    {
        for (const AIProvider provider : allAIProviders)
            QCOMPARE(aiProviderFromRawValue(rawValue(provider)), std::optional(provider));
    }

    void anyOtherTextIsNoProvider()
    {
        for (const auto *text : {"", "openrouter", "openRouter", "OpenRouter ", "Ollama2", "0"})
            QCOMPARE(aiProviderFromRawValue(QLatin1String(text)), std::nullopt);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::AIProviderTest)
#include "ai_provider_test.moc"
