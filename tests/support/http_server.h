// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

#include <functional>
#include <memory>

class QTcpSocket;

namespace wrenfold {

/// A server in the test's own process. It notes each request and answers as it is told; a connection serves one.
class HttpServer : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray method;
        QByteArray path;
        QHash<QByteArray, QByteArray> headers; ///< By their names in lower case.
        QByteArray body;
    };

    /// Writes an answer to the request just noted; it may go on later. The socket is closed by whoever writes.
    using Answer = std::function<void(QTcpSocket &socket)>;

    /// Listens on this machine. With `listener`, for instance one that encrypts, on that.
    explicit HttpServer(std::unique_ptr<QTcpServer> listener = std::make_unique<QTcpServer>());

    /// For the above: encrypts, with a certificate that nobody vouches for.
    [[nodiscard]] static std::unique_ptr<QTcpServer> selfSignedListener();

    [[nodiscard]] QUrl origin(const QString &scheme = QStringLiteral("http")) const;

    void setAnswer(Answer answer) { m_answer = std::move(answer); }
    [[nodiscard]] const QList<Request> &requests() const { return m_requests; }
    [[nodiscard]] int connectionCount() const { return m_connectionCount; }

    /// A whole answer with this status and body.
    [[nodiscard]] static Answer answer(int status, const QByteArray &body,
                                       const QByteArray &extraHeaders = {});
    /// The service's answer with this text in it.
    [[nodiscard]] static Answer completion(const QString &content);
    [[nodiscard]] static QByteArray completionBody(const QString &content);
    /// No answer, and the connection stays open.
    [[nodiscard]] static Answer silence();

private:
    void serve(QTcpSocket *socket);
    void read(QTcpSocket &socket);

    Answer m_answer;
    QHash<QTcpSocket *, QByteArray> m_received;
    QList<Request> m_requests;
    int m_connectionCount = 0;
    std::unique_ptr<QTcpServer> m_listener; ///< Last: its sockets' ends are still noted.
};

} // namespace wrenfold
