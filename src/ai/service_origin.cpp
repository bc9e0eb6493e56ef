// SPDX-License-Identifier: MIT
#include "ai/service_origin.h"

#include <QHostAddress>

namespace wrenfold {

namespace {

/// A name would have to be looked up to know where it leads; of names "localhost" alone is always this machine.
bool isThisMachine(const QString &host)
{
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

} // namespace

ServiceOrigin ServiceOrigin::fromEnvironment()
{
    return named(qEnvironmentVariable("WRENFOLD_OPENROUTER_ORIGIN"));
}

ServiceOrigin ServiceOrigin::named(const QString &text)
{
    if (text.isEmpty())
        return {QUrl(QStringLiteral("https://openrouter.ai")), {}};
    const QUrl url(text, QUrl::StrictMode);
    const bool isOrigin = url.isValid() && !url.host().isEmpty() && url.userInfo().isEmpty() &&
                          (url.path().isEmpty() || url.path() == QLatin1String("/")) && !url.hasQuery() &&
                          !url.hasFragment();
    const bool isSafe = url.scheme() == QLatin1String("https") ||
                        (url.scheme() == QLatin1String("http") && isThisMachine(url.host()));
    // The value itself is not repeated: it may hold a password.
    if (!isOrigin || !isSafe)
        return {{},
                QStringLiteral("WRENFOLD_OPENROUTER_ORIGIN is refused: it must be https://HOST[:PORT], or "
                               "http://HOST[:PORT] on this machine")};
    return {url.adjusted(QUrl::RemovePath), {}};
}

} // namespace wrenfold
