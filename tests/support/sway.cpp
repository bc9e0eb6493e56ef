// SPDX-License-Identifier: MIT
#include "support/sway.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wrenfold::sway {
namespace {

QJsonArray childrenOf(const QJsonObject &node)
{
    QJsonArray children = node.value(QStringLiteral("nodes")).toArray();
    for (const QJsonValue &child : node.value(QStringLiteral("floating_nodes")).toArray())
        children.append(child);
    return children;
}

void collect(const QJsonObject &node, const QString &workspace, bool isInside, QStringList &windows)
{
    const QJsonObject x11 = node.value(QStringLiteral("window_properties")).toObject();
    const QString name =
        node.value(QStringLiteral("app_id")).toString(x11.value(QStringLiteral("class")).toString());
    if (isInside && !name.isEmpty())
        windows.append(name);
    const bool isWorkspace = node.value(QStringLiteral("type")) == QStringLiteral("workspace");
    const bool isMeant = isWorkspace ? node.value(QStringLiteral("name")) == workspace : isInside;
    for (const QJsonValue &child : childrenOf(node))
        collect(child.toObject(), workspace, isMeant, windows);
}

} // namespace

QByteArray message(const QStringList &arguments)
{
    QProcess swaymsg;
    swaymsg.start(QStringLiteral("swaymsg"), arguments);
    if (!swaymsg.waitForFinished() || swaymsg.exitCode() != 0)
        QTest::qFail(qPrintable(QString::fromUtf8(swaymsg.readAllStandardError())), __FILE__, __LINE__);
    return swaymsg.readAllStandardOutput();
}

void run(const QString &command)
{
    (void)message({command});
}

void end()
{
    // It goes without an answer, so how swaymsg fares says nothing.
    QProcess swaymsg;
    swaymsg.start(QStringLiteral("swaymsg"), {QStringLiteral("exit")});
    swaymsg.waitForFinished();
}

QStringList windowsOn(const QString &workspace)
{
    QStringList windows;
    const QByteArray tree = message({QStringLiteral("-t"), QStringLiteral("get_tree"), QStringLiteral("-r")});
    collect(QJsonDocument::fromJson(tree).object(), workspace, false, windows);
    return windows;
}

Window::Window(const QString &appID)
{
    // A terminal whose program waits for a line that nobody types.
    m_program.setProgram(QStringLiteral("foot"));
    m_program.setArguments({QStringLiteral("--app-id=") + appID, QStringLiteral("cat")});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    m_program.setProcessEnvironment(environment);
    const auto count = [] {
        return message({QStringLiteral("-t"), QStringLiteral("get_tree"), QStringLiteral("-r")})
            .count("\"app_id\"");
    };
    const auto before = count();
    m_program.start();
    if (!QTest::qWaitFor([&] { return count() > before; }, 20000))
        QTest::qFail(qPrintable(QString::fromUtf8(m_program.readAllStandardError())), __FILE__, __LINE__);
}

Window::~Window()
{
    m_program.terminate();
    m_program.waitForFinished();
}

} // namespace wrenfold::sway
