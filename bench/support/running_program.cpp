// SPDX-License-Identifier: MIT
#include "support/running_program.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

namespace wrenfold {

namespace {

/// The number behind `key` in a status file of the kernel's.
double statusValue(const QString &path, const QByteArray &key)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).simplified().split(' ').first().toDouble();
    }
    return 0;
}

} // namespace

RunningProgram::RunningProgram(const BenchDesktop &desktop, const QString &name, const QStringList &arguments)
{
    m_process.setProcessEnvironment(desktop.environment());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QDir(QCoreApplication::applicationDirPath()).filePath(name), arguments);
}

RunningProgram::~RunningProgram()
{
    m_process.terminate();
    m_process.waitForFinished();
}

bool RunningProgram::hasSaid(const QByteArray &text)
{
    m_output += m_process.readAll();
    return m_output.contains(text);
}

double RunningProgram::residentMegabytes() const
{
    return statusValue(folder() + QLatin1String("/status"), "VmRSS") * 1024 / 1'000'000;
}

QStringList RunningProgram::threads() const
{
    return QDir(folder() + QLatin1String("/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

double RunningProgram::sleeps() const
{
    double sum = 0;
    for (const QString &thread : threads()) {
        const QString status = folder() + QLatin1String("/task/") + thread + QLatin1String("/status");
        sum += statusValue(status, "voluntary_ctxt_switches");
    }
    return sum;
}

double RunningProgram::processorMilliseconds() const
{
    double sum = 0;
    for (const QString &thread : threads()) {
        QFile file(folder() + QLatin1String("/task/") + thread + QLatin1String("/schedstat"));
        if (file.open(QIODevice::ReadOnly))
            sum += file.readAll().split(' ').first().toDouble() / 1e6;
    }
    return sum;
}

QString RunningProgram::folder() const
{
    return QStringLiteral("/proc/%1").arg(m_process.processId());
}

void letPass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace wrenfold
