// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>

namespace wrenfold {

/// A run of instance_program, told what to do line by line. It is killed with this object.
class ProgramUnderTest
{
public:
    /// Tells it each of `commands`, whatever the answer.
    ProgramUnderTest(const QString &folder, const QProcessEnvironment &environment, int patience = 5000,
                     const QList<QByteArray> &commands = {})
    {
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/instance_program"),
                        {folder, QString::number(patience)});
        for (const QByteArray &command : commands)
            tell(command);
    }
    ~ProgramUnderTest()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(ProgramUnderTest)

    /// Sends the command and returns the first line that comes then.
    QByteArray tell(const QByteArray &command)
    {
        say(command);
        return nextLine();
    }

    void say(const QByteArray &command) { m_process.write(command + '\n'); }
    [[nodiscard]] bool hasAnswered() const { return m_process.canReadLine(); }

    /// The next line it says, or nothing within 20 s.
    QByteArray nextLine()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(20000))
                return {};
        }
        return m_process.readLine().trimmed();
    }

    /// The exit status, or minus one if it died otherwise or does not end within 10 s.
    int waitForEnd()
    {
        if (!m_process.waitForFinished(10000) || m_process.exitStatus() != QProcess::NormalExit)
            return -1;
        return m_process.exitCode();
    }

    void signal(int number) { ::kill(static_cast<pid_t>(m_process.processId()), number); }

private:
    QProcess m_process;
};

} // namespace wrenfold
