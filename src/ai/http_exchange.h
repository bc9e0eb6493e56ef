// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFuture>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QObject>
#include <QPromise>
#include <QTimer>

#include <chrono>

class QNetworkReply;

namespace wrenfold {

class AIError;

/// One POST and its answer. A success has a status from 200 to 299; redirects are not followed, so that the key goes
/// nowhere else. Anything else ends in an AIError. The request is sent once, whatever comes of it.
class HttpExchange : public QObject
{
    Q_OBJECT

public:
    struct Limits
    {
        std::chrono::milliseconds silence = std::chrono::seconds(60); ///< Between two pieces of the answer.
        std::chrono::milliseconds whole = std::chrono::minutes(5);    ///< For the whole exchange.
        qint64 bytes = 16 * 1024 * 1024;                              ///< Of the answer, unpacked.
    };

    /// Sends the request. The future fails, or ends with the answer's body, on the owner's thread; it is cancelled when
    /// the owner goes before.
    [[nodiscard]] static QFuture<QByteArray> post(QNetworkRequest request, const QByteArray &body,
                                                  const Limits &limits, QObject *owner);

private:
    HttpExchange(const QNetworkRequest &request, const QByteArray &body, const Limits &limits,
                 QObject *owner);

    void readStatus();
    void readBody();
    void finish();
    /// Ends the exchange with what went wrong.
    void fail(const AIError &error);

    const Limits m_limits;
    QNetworkAccessManager m_manager; ///< For this exchange alone: cookies and connections end with it.
    QNetworkReply *m_reply;
    QTimer m_wholeTime;
    QByteArray m_body;
    QPromise<QByteArray> m_promise;
    bool m_hasEnded = false;
};

} // namespace wrenfold
