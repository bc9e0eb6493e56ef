// SPDX-License-Identifier: MIT
#include "ai/http_exchange.h"

#include "ai/ai_error.h"

#include <QAuthenticator>
#include <QIODevice>
#include <QNetworkReply>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr qint64 pieceSize = 256 * 1024;

/// A body that can be read only once. Qt sends a request again by itself when the connection ends before an answer, or
/// when it thinks that it can log in; with such a body it cannot.
class SinglePassBody : public QIODevice
{
public:
    explicit SinglePassBody(const QByteArray &bytes)
        : m_rest(bytes)
    {
        open(QIODevice::ReadOnly);
    }

    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override
    {
        return m_rest.size() + QIODevice::bytesAvailable();
    }
    bool reset() override { return false; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (m_rest.isEmpty())
            return -1;
        const qsizetype size = std::min(m_rest.size(), qsizetype(maxSize));
        std::copy_n(m_rest.cbegin(), size, data);
        m_rest.remove(0, size);
        return size;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    QByteArray m_rest;
};

/// What Qt says went wrong, where it says anything.
QString errorText(const QNetworkReply &reply)
{
    if (reply.error() == QNetworkReply::ContentReSendError)
        return QStringLiteral("the connection was closed");
    QString text = reply.errorString().trimmed();
    if (text.endsWith(QLatin1Char(':'))) // A cause should follow, but none was known.
        text.chop(1);
    return text;
}

} // namespace

QFuture<QByteArray> HttpExchange::post(QNetworkRequest request, const QByteArray &body, const Limits &limits,
                                       QObject *owner)
{
    request.setTransferTimeout(static_cast<int>(limits.silence.count()));
    // Qt's own choice would follow to another origin, and hand it the key.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Both so that Qt takes the body as it is, without a copy of its own that it could send again.
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    request.setHeader(QNetworkRequest::ContentLengthHeader, body.size());
    // What an answer may come to unpacked is limited here, by its length and not by how well it was packed.
    request.setDecompressedSafetyCheckThreshold(-1);
    auto *exchange = new HttpExchange(request, body, limits, owner);
    return exchange->m_promise.future();
}

HttpExchange::HttpExchange(const QNetworkRequest &request, const QByteArray &body, const Limits &limits,
                           QObject *owner)
    : QObject(owner)
    , m_limits(limits)
{
    m_promise.start();
    auto *device = new SinglePassBody(body);
    m_reply = m_manager.post(request, device);
    device->setParent(m_reply);
    // What has not been read yet waits in the system's buffers, not in ours.
    m_reply->setReadBufferSize(1024 * 1024);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpExchange::readStatus);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::finish);
    // Asked only after a 401, of which Qt may otherwise not tell.
    connect(&m_manager, &QNetworkAccessManager::authenticationRequired, this,
            [this] { fail(AIError(OpenRouterSorterError::badResponse)); });
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
    // Piece by piece: a short packed answer may unpack to any length.
    for (QByteArray piece; m_body.size() <= m_limits.bytes; m_body += piece) {
        piece = m_reply->read(pieceSize);
        if (piece.isEmpty())
            return;
    }
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
        return fail(AIError::transport(errorText(*m_reply)));
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
    // Not abort(), which Qt takes amiss in the middle of an answer. The reply goes with this object's manager.
    m_reply->disconnect(this);
    m_wholeTime.stop();
    deleteLater();
}

} // namespace wrenfold
