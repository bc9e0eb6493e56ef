// SPDX-License-Identifier: MIT
#include "platform/linux/instance_lock.h"

#include "app/debug_log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wrenfold {

using Claim = SingleInstance::Claim;

InstanceLock::InstanceLock(QString folder)
    : m_folder(std::move(folder))
{
}

InstanceLock::~InstanceLock()
{
    if (isHeld())
        ::close(m_descriptor);
}

Claim InstanceLock::take()
{
    if (isHeld())
        return Claim::First;

    QDir().mkpath(QFileInfo(m_folder).absolutePath());
    const QByteArray folder = QFile::encodeName(m_folder);
    ::mkdir(folder.constData(), 0700); // Whether it is there now, opening tells.

    // Close-on-exec: a browser we started would otherwise hold the lock after our end.
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        m_descriptor = descriptor;
        return Claim::First;
    }
    const int error = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    if (descriptor >= 0 && error == EWOULDBLOCK)
        return Claim::Taken;
    qCInfo(DebugLog::app).noquote() << QStringLiteral("The preferences folder %1 cannot be locked: %2")
                                           .arg(m_folder, qt_error_string(error));
    return Claim::Unguarded;
}

} // namespace wrenfold
