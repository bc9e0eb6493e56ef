// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace wrenfold {

/// The AI back-ends that can be chosen, in the order in which they are offered.
enum class AIProvider : std::uint8_t { openRouter, chatGPT, codex, ollama };

inline constexpr std::array allAIProviders = {AIProvider::openRouter, AIProvider::chatGPT, AIProvider::codex,
                                              AIProvider::ollama};

/// The text that stands for the provider in documents and on screen; do not change it.
[[nodiscard]] QLatin1String rawValue(AIProvider provider);

/// None for any text that is not exactly one of the raw values.
[[nodiscard]] std::optional<AIProvider> aiProviderFromRawValue(const QString &text);

} // namespace wrenfold
