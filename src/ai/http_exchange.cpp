// SPDX-License-Identifier: MIT
#include "ai/http_exchange.h"

#include "ai/ai_error.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace wrenfold {

QFuture<QByteArray> HttpExchange::post(QNetworkAccessManager &manager, QNetworkRequest request,
                                       const QByteArray &body, const Limits &limits)
{
    request.setTransferTimeout(static_cast<int>(limits.silence.count()));
    // Qt's own choice would follow to another origin, and hand it the key.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    auto *exchange = new HttpExchange(manager.post(request, body), &manager, limits);
    return exchange->m_promise.future();
}

HttpExchange::HttpExchange(QNetworkReply *reply, QObject *parent, const Limits &limits)
    : QObject(parent)
    , m_reply(reply)
    , m_limits(limits)
{
    m_promise.start();
    m_reply->setParent(this);
    // What has not been read yet waits in the system's buffers, not in ours.
    m_reply->setReadBufferSize(1024 * 1024);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpExchange::readStatus);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::finish);
    m_wholeTime.setSingleShot(true);
    connect(&m_wholeTime, &QTimer::timeout, this,
            [this] { fail(AIError::transport(QStringLiteral("the answer took too long"))); });
    m_wholeTime.start(m_limits.whole);
}

void HttpExchange::readStatus()
{
    const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (status.isValid() && (status.toInt() < 200 || status.toInt() > 299))
        fail(AIError(OpenRouterSorterError::badResponse));
}

void HttpExchange::readBody()
{
    if (m_hasEnded)
        return;
    m_body += m_reply->readAll();
    if (m_body.size() > m_limits.bytes)
        fail(AIError(OpenRouterSorterError::badResponse));
}

void HttpExchange::finish()
{
    readStatus();
    if (m_reply->isReadable())
        readBody();
    if (m_hasEnded)
        return;
    if (m_reply->error() == QNetworkReply::OperationCanceledError)
        return fail(AIError::transport(QStringLiteral("no answer for too long")));
    if (m_reply->error() != QNetworkReply::NoError)
        return fail(AIError::transport(m_reply->errorString()));
    m_hasEnded = true;
    m_promise.addResult(m_body);
    m_promise.finish();
    deleteLater();
}

void HttpExchange::fail(const AIError &error)
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    m_promise.setException(error);
    m_promise.finish();
    // Not abort(), which Qt takes amiss in the middle of an answer. The reply goes with this object.
    m_reply->disconnect(this);
    m_wholeTime.stop();
    deleteLater();
}

} // namespace wrenfold
