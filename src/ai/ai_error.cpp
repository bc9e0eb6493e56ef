// SPDX-License-Identifier: MIT
#include "ai/ai_error.h"

#include <array>
#include <utility>

namespace wrenfold {

namespace {

QString nameOf(OpenRouterSorterError error)
{
    static constexpr std::array names = {"missingAPIKey", "notEnoughTasks", "badResponse", "missingContent"};
    return QLatin1String(names[std::size_t(error)]);
}

} // namespace

AIError::AIError(OpenRouterSorterError error)
    : m_sorterError(error)
    , m_description(nameOf(error))
{
}

AIError::AIError(QString description)
    : m_description(std::move(description))
{
}

AIError AIError::transport(const QString &what)
{
    return AIError(QStringLiteral("transport error: ") + what.simplified());
}

AIError AIError::decoding(const QString &what)
{
    return AIError(QStringLiteral("decoding error: ") + what.simplified());
}

} // namespace wrenfold
