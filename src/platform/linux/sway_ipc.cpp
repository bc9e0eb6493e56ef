// SPDX-License-Identifier: MIT
#include "platform/linux/sway_ipc.h"

#include "app/debug_log.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>
#include <cstring>

namespace wrenfold {
namespace {

constexpr QByteArrayView magic = "i3-ipc";
constexpr qsizetype headSize = magic.size() + 2 * qsizetype(sizeof(quint32));
constexpr quint32 longestPayload = 4 << 20; // Some thousands of windows.
constexpr std::chrono::seconds patience{2};

QJsonArray childrenOf(const QJsonObject &node)
{
    QJsonArray children = node.value(QLatin1String("nodes")).toArray();
    for (const QJsonValue &child : node.value(QLatin1String("floating_nodes")).toArray())
        children.append(child);
    return children;
}

/// Of a node's children the one that had the focus last.
QJsonObject focusedChildOf(const QJsonObject &node)
{
    const QJsonValue focused = node.value(QLatin1String("focus")).toArray().first();
    for (const QJsonValue &child : childrenOf(node)) {
        if (child[QLatin1String("id")] == focused)
            return child.toObject();
    }
    return {};
}

bool isWindowWanted(const QJsonObject &node, const SwayWindowFilter &isWanted)
{
    const QJsonObject x11 = node.value(QLatin1String("window_properties")).toObject();
    for (const QJsonValue &name : {node.value(QLatin1String("app_id")), x11.value(QLatin1String("class")),
                                   x11.value(QLatin1String("instance"))}) {
        if (!name.toString().isEmpty() && isWanted(name.toString()))
            return true;
    }
    return false;
}

/// No deeper than what QJsonDocument reads.
void collect(const QJsonObject &node, const SwayWindowFilter &isWanted, QList<qint64> &windows)
{
    if (isWindowWanted(node, isWanted) && node.value(QLatin1String("id")).isDouble())
        windows.append(node.value(QLatin1String("id")).toInteger());
    for (const QJsonValue &child : childrenOf(node))
        collect(child.toObject(), isWanted, windows);
}

} // namespace

QList<qint64> windowsOnFocusedWorkspace(const QByteArray &tree, const SwayWindowFilter &isWanted)
{
    const QJsonObject output = focusedChildOf(QJsonDocument::fromJson(tree).object());
    QList<qint64> windows;
    collect(focusedChildOf(output), isWanted, windows);
    return windows;
}

QByteArray SwayMessage::encoded() const
{
    // The numbers are in the byte order of this machine.
    const quint32 numbers[] = {static_cast<quint32>(payload.size()), type};
    QByteArray bytes = magic.toByteArray();
    bytes.append(reinterpret_cast<const char *>(numbers), sizeof numbers);
    return bytes + payload;
}

SwayInput SwayInput::parse(const QByteArray &bytes)
{
    const qsizetype compared = std::min(bytes.size(), magic.size());
    if (QByteArrayView(bytes).first(compared) != magic.first(compared))
        return {State::Malformed, {}};
    if (bytes.size() < headSize)
        return {State::Incomplete, {}};
    quint32 numbers[2];
    std::memcpy(numbers, bytes.constData() + magic.size(), sizeof numbers);
    const auto [length, type] = numbers;
    if (length > longestPayload)
        return {State::Malformed, {}};
    if (bytes.size() < headSize + qsizetype(length))
        return {State::Incomplete, {}};
    return {State::Complete, {type, bytes.mid(headSize, length)}};
}

void SwayScratchpad::moveWindows(const QString &socket, const SwayWindowFilter &isWanted, QObject *context)
{
    auto *request = new SwayScratchpad(isWanted, context);
    request->m_socket.connectToServer(socket);
}

SwayScratchpad::SwayScratchpad(const SwayWindowFilter &isWanted, QObject *context)
    : QObject(context)
    , m_isWanted(isWanted)
{
    m_socket.setReadBufferSize(headSize + longestPayload);
    connect(&m_socket, &QLocalSocket::connected, this, [this] { send({SwayMessage::GetTree, {}}); });
    connect(&m_socket, &QLocalSocket::readyRead, this, &SwayScratchpad::read);
    connect(&m_socket, &QLocalSocket::errorOccurred, this, [this] { giveUp(m_socket.errorString()); });
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] { giveUp(QStringLiteral("no answer")); });
    m_patience.start(patience);
}

void SwayScratchpad::send(const SwayMessage &message)
{
    m_received.clear();
    m_socket.write(message.encoded());
}

void SwayScratchpad::read()
{
    m_received += m_socket.readAll();
    const SwayInput input = SwayInput::parse(m_received);
    if (input.state == SwayInput::State::Complete)
        take(input.message);
    else if (input.state == SwayInput::State::Malformed)
        giveUp(QStringLiteral("an answer that makes no sense"));
}

void SwayScratchpad::take(const SwayMessage &answer)
{
    QByteArrayList commands;
    if (answer.type == SwayMessage::GetTree) {
        for (const qint64 window : windowsOnFocusedWorkspace(answer.payload, m_isWanted))
            commands.append("[con_id=" + QByteArray::number(window) + "] move scratchpad");
    }
    if (commands.isEmpty())
        finish();
    else
        send({SwayMessage::RunCommand, commands.join("; ")});
}

void SwayScratchpad::giveUp(const QString &reason)
{
    qCInfo(DebugLog::guard).noquote()
        << QStringLiteral("Cannot move windows to the scratchpad: %1").arg(reason);
    finish();
}

void SwayScratchpad::finish()
{
    m_socket.disconnect(this);
    deleteLater();
}

} // namespace wrenfold
