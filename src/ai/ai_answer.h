// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_error.h"

#include <QFutureWatcher>

namespace wrenfold {

/// Calls `succeeded` with the future's result, or `failed` with its AIError, on the owner's thread when the future has
/// finished. Neither is called once the owner has gone; QFuture::then() with a context does not bear that on Qt 6.4.
template<typename Result, typename Succeeded, typename Failed>
void onAnswer(const QFuture<Result> &future, QObject *owner, Succeeded succeeded, Failed failed)
{
    auto *watcher = new QFutureWatcher<Result>(owner);
    QObject::connect(watcher, &QFutureWatcherBase::finished, owner, [=] {
        watcher->deleteLater();
        QFuture<Result> answer = watcher->future();
        try {
            answer.waitForFinished(); // It has; this throws what it failed with.
            if (answer.resultCount() == 0)
                throw AIError::transport(QStringLiteral("cancelled"));
        } catch (const AIError &error) {
            return failed(error);
        } catch (const std::exception &error) { // Memory that ran out, for instance.
            return failed(AIError::transport(QString::fromLocal8Bit(error.what())));
        }
        succeeded(answer.result());
    });
    watcher->setFuture(future);
}

} // namespace wrenfold
