// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_error.h"

#include <QFuture>
#include <QTest>

namespace wrenfold {

inline QStringList inWords(const QStringList &strings)
{
    return strings;
}
inline QStringList inWords(const QString &text)
{
    return {text};
}
inline QStringList inWords(const QList<QUuid> &ids)
{
    return {QString::number(ids.size())};
}

/// What a request came to, within `patience`: its result in words (identifiers are counted), or "! " and the
/// description of its error.
template<typename Result>
QStringList oneAnswer(const QFuture<Result> &future,
                      std::chrono::milliseconds patience = std::chrono::seconds(10))
{
    if (!QTest::qWaitFor([&] { return future.isFinished(); }, static_cast<int>(patience.count())))
        return {QStringLiteral("! no answer")};
    try {
        // A copy: the result of a cancelled future is none.
        QFuture<Result> finished = future;
        finished.waitForFinished();
        return finished.resultCount() > 0 ? inWords(finished.result())
                                          : QStringList{QStringLiteral("! cancelled")};
    } catch (const AIError &error) {
        return {QStringLiteral("! ") + error.description()};
    }
}

} // namespace wrenfold
