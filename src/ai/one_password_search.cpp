// SPDX-License-Identifier: MIT
#include "ai/one_password_search.h"

#include "ai/ai_error.h"
#include "ai/one_password_items.h"

#include <QStringDecoder>

#include <utility>

namespace wrenfold {

QFuture<QString> OnePasswordSearch::start(QObject *owner)
{
    auto *search = new OnePasswordSearch(owner);
    search->readOnePassword();
    return search->m_promise.future();
}

OnePasswordSearch::OnePasswordSearch(QObject *owner)
    : QObject(owner)
    , m_references(OnePasswordItems::secretReferences())
{
    m_promise.start();
    // Nobody reads what it complains about, and nobody answers if it asks here.
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setStandardInputFile(QProcess::nullDevice());
    connect(&m_process, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
        const bool succeeded = status == QProcess::NormalExit && exitCode == 0;
        const QByteArray output = m_process.readAllStandardOutput();
        end(succeeded ? output : QByteArray());
    });
    // Queued: a process cannot be started again while it still tells that it could not be started.
    connect(
        &m_process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                end({});
        },
        Qt::QueuedConnection);
}

OnePasswordSearch::~OnePasswordSearch()
{
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

void OnePasswordSearch::end(const QByteArray &output)
{
    const auto done = std::move(m_done); // It may start the next run.
    done(output);
}

void OnePasswordSearch::readOnePassword()
{
    if (m_references.isEmpty())
        return readOpenRouterItemFromOnePassword();
    runOnePassword({QStringLiteral("read"), m_references.takeFirst()}, [this](const QByteArray &output) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString key = QString(decoder.decode(output)).trimmed();
        if (decoder.hasError() || key.isEmpty())
            readOnePassword();
        else
            finish(key);
    });
}

void OnePasswordSearch::readOpenRouterItemFromOnePassword()
{
    runOnePassword(
        {QStringLiteral("item"), QStringLiteral("list"), QStringLiteral("--format"), QStringLiteral("json")},
        [this](const QByteArray &output) {
            m_items = OnePasswordItems::candidates(output);
            readNextItem();
        });
}

void OnePasswordSearch::readNextItem()
{
    if (m_items.isEmpty())
        return fail();
    runOnePassword({QStringLiteral("item"), QStringLiteral("get"), m_items.takeFirst(),
                    QStringLiteral("--format"), QStringLiteral("json"), QStringLiteral("--reveal")},
                   [this](const QByteArray &output) {
                       if (const QString key = OnePasswordItems::keyIn(output); !key.isEmpty())
                           finish(key);
                       else
                           readNextItem();
                   });
}

void OnePasswordSearch::finish(const QString &key)
{
    m_promise.addResult(key);
    m_promise.finish();
    deleteLater();
}

void OnePasswordSearch::fail()
{
    m_promise.setException(AIError(OpenRouterSorterError::missingAPIKey));
    m_promise.finish();
    deleteLater();
}

void OnePasswordSearch::runOnePassword(const QStringList &arguments,
                                       std::function<void(const QByteArray &output)> done)
{
    m_done = std::move(done);
    // By `env`, so that the tool is found on the user's path.
    m_process.start(QStringLiteral("/usr/bin/env"), QStringList{QStringLiteral("op")} + arguments);
}

} // namespace wrenfold
