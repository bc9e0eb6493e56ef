// SPDX-License-Identifier: MIT
#include "ai/ai_answer.h"
#include "support/test_case.h"

#include <QPromise>

#include <new>
#include <optional>
#include <stdexcept>

namespace wrenfold {

class AIAnswerTest : public TestCase
{
    Q_OBJECT

private:
    /// What was called for the future: the result, or "! " and the error's description; nothing by itself.
    static QString called(const QFuture<QString> &future)
    {
        QObject owner;
        QString called;
        onAnswer(
            future, &owner, [&](const QString &result) { called += result; },
            [&](const AIError &error) { called += QStringLiteral("! ") + error.description(); });
        (void)QTest::qWaitFor([&] { return !called.isEmpty(); });
        QCoreApplication::processEvents();
        return called;
    }

    template<typename Exception>
    static QFuture<QString> failing(const Exception &exception)
    {
        return QtFuture::makeExceptionalFuture<QString>(std::make_exception_ptr(exception));
    }

private Q_SLOTS:
    void aResultIsHandedOn()
    {
        QPromise<QString> promise;
        promise.start();
        promise.addResult(QStringLiteral("a"));
        promise.finish();
        QCOMPARE(called(promise.future()), QStringLiteral("a"));
    }

    void everyFailureIsOneLineOfAnError()
    {
        QCOMPARE(called(failing(AIError(OpenRouterSorterError::badResponse))),
                 QStringLiteral("! badResponse"));
        QCOMPARE(called(failing(std::bad_alloc())), QStringLiteral("! transport error: std::bad_alloc"));
        QCOMPARE(called(failing(std::runtime_error("two\nlines"))),
                 QStringLiteral("! transport error: two lines"));
    }

    void whatIsCancelledIsAFailure()
    {
        std::optional<QPromise<QString>> promise(std::in_place);
        promise->start();
        const QFuture<QString> future = promise->future();
        promise.reset();
        QCOMPARE(called(future), QStringLiteral("! transport error: cancelled"));
    }

    void nothingIsCalledOnceTheOwnerHasGone()
    {
        QPromise<QString> promise;
        promise.start();
        int calls = 0;
        {
            QObject owner;
            onAnswer(
                promise.future(), &owner, [&](const QString &) { ++calls; },
                [&](const AIError &) { ++calls; });
        }
        promise.addResult(QStringLiteral("a"));
        promise.finish();
        QCoreApplication::processEvents();
        QCOMPARE(calls, 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::AIAnswerTest)
#include "ai_answer_test.moc"
