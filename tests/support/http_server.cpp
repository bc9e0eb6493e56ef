// SPDX-License-Identifier: MIT
#include "support/http_server.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace wrenfold {

HttpServer::HttpServer(std::unique_ptr<QTcpServer> listener)
    : m_answer(silence())
    , m_listener(std::move(listener))
{
    if (!m_listener->listen(QHostAddress::LocalHost))
        qFatal("the server cannot listen");
    connect(m_listener.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *socket = m_listener->nextPendingConnection())
            serve(socket);
    });
}

std::unique_ptr<QTcpServer> HttpServer::selfSignedListener()
{
    const QTemporaryDir folder;
    const QString keyFile = folder.filePath(QStringLiteral("key"));
    const QString certificateFile = folder.filePath(QStringLiteral("certificate"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  QStringList{QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                              QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
                              QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"),
                              QStringLiteral("-keyout"), keyFile, QStringLiteral("-out"), certificateFile});
    QFile keyData(keyFile);
    QFile certificateData(certificateFile);
    if (!openssl.waitForFinished() || !keyData.open(QIODevice::ReadOnly) ||
        !certificateData.open(QIODevice::ReadOnly))
        qFatal("the certificate cannot be made");
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(&certificateData));
    configuration.setPrivateKey(QSslKey(&keyData, QSsl::Rsa));
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(configuration);
    return server;
}

QUrl HttpServer::origin(const QString &scheme) const
{
    QUrl url;
    url.setScheme(scheme);
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(m_listener->serverPort());
    return url;
}

void HttpServer::serve(QTcpSocket *socket)
{
    ++m_connectionCount;
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(*socket); });
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        m_received.remove(socket);
        socket->deleteLater();
    });
    read(*socket);
}

void HttpServer::read(QTcpSocket &socket)
{
    QByteArray &received = m_received[&socket];
    received += socket.readAll();
    const qsizetype end = received.indexOf("\r\n\r\n");
    if (end < 0)
        return;
    QList<QByteArray> lines = received.first(end).split('\n');
    const QList<QByteArray> start = lines.takeFirst().trimmed().split(' ');
    Request request{start.value(0), start.value(1), {}, received.sliced(end + 4)};
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        request.headers.insert(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
    }
    if (request.body.size() < request.headers.value("content-length").toLongLong())
        return;
    received.clear();
    m_requests.append(request);
    m_answer(socket);
}

HttpServer::Answer HttpServer::answer(int status, const QByteArray &body, const QByteArray &extraHeaders)
{
    return [=](QTcpSocket &socket) {
        socket.write("HTTP/1.1 " + QByteArray::number(status) +
                     " Status\r\nContent-Length: " + QByteArray::number(body.size()) +
                     "\r\nConnection: close\r\n" + extraHeaders + "\r\n" + body);
        socket.disconnectFromHost();
    };
}

QByteArray HttpServer::completionBody(const QString &content)
{
    const QJsonObject message = {{QStringLiteral("role"), QStringLiteral("assistant")},
                                 {QStringLiteral("content"), content}};
    const QJsonObject choice = {{QStringLiteral("index"), 0}, {QStringLiteral("message"), message}};
    return QJsonDocument(QJsonObject{{QStringLiteral("choices"), QJsonArray{choice}}}).toJson();
}

HttpServer::Answer HttpServer::completion(const QString &content)
{
    return answer(200, completionBody(content), "Content-Type: application/json\r\n");
}

HttpServer::Answer HttpServer::silence()
{
    return [](QTcpSocket &) {};
}

} // namespace wrenfold
