// SPDX-License-Identifier: MIT
#pragma once

#include <QException>
#include <QString>

#include <cstdint>
#include <optional>

namespace wrenfold {

/// The failures of AI requests that have a name.
enum class OpenRouterSorterError : std::uint8_t {
    missingAPIKey,
    notEnoughTasks, ///< Fewer than two to sort.
    badResponse,    ///< No answer of the service: another status than success, or far too long.
    missingContent, ///< An answer without a text, or whose text holds no object.
};

/// Why an AI request came to nothing. For logs and standard error: what the user reads is chosen by whoever asked. It
/// never holds the key.
class AIError : public QException
{
public:
    explicit AIError(OpenRouterSorterError error);
    [[nodiscard]] static AIError transport(const QString &what);
    [[nodiscard]] static AIError decoding(const QString &what);

    /// None for errors of transport and decoding.
    [[nodiscard]] std::optional<OpenRouterSorterError> sorterError() const { return m_sorterError; }
    /// One line: the name of the failure, or what happened.
    [[nodiscard]] QString description() const { return m_description; }

    void raise() const override { throw *this; }
    [[nodiscard]] AIError *clone() const override { return new AIError(*this); }

private:
    explicit AIError(QString description);

    std::optional<OpenRouterSorterError> m_sorterError;
    QString m_description;
};

} // namespace wrenfold
