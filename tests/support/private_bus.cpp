// SPDX-License-Identifier: MIT
#include "support/private_bus.h"

#include <QFile>

#include <csignal>

namespace wrenfold {
namespace {

/// Everything is allowed to everybody who can reach the socket, and no folder of services is named.
QByteArray configuration(const QString &address)
{
    return R"(<busconfig>
  <type>session</type>
  <listen>)" +
           address.toUtf8() + R"(</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
}

} // namespace

PrivateBus::~PrivateBus()
{
    stop();
}

QString PrivateBus::start()
{
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return file.errorString();
    file.write(configuration(address()));
    file.close();
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file"), file.fileName(), QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--print-address")});
    while (!m_daemon.canReadLine()) { // It prints its address when it listens.
        if (!m_daemon.waitForReadyRead())
            return m_daemon.errorString();
    }
    m_daemon.readLine();
    return {};
}

void PrivateBus::stop()
{
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT); // In case a test has stopped it.
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

QString PrivateBus::address() const
{
    return QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus"));
}

} // namespace wrenfold
