// SPDX-License-Identifier: MIT
#include "support/test_mount.h"

#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <system_error>

namespace wrenfold {

namespace {

QString outcome(const char *step, bool isDone)
{
    if (isDone)
        return {};
    const std::string reason = std::generic_category().message(errno);
    return QStringLiteral("%1: %2").arg(QLatin1String(step), QString::fromStdString(reason));
}

/// Leaves the mounts of the rest of the system, for the remaining life of this thread.
QString leaveSystemMounts()
{
    static const bool isDone =
        ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return outcome("private mounts", isDone);
}

} // namespace

TestMount::TestMount(const QString &folder)
    : m_folder(QFile::encodeName(folder))
{
}

TestMount::~TestMount()
{
    if (m_isMounted)
        ::umount2(m_folder.constData(), MNT_DETACH);
}

QString TestMount::mountMemory(int bytes)
{
    if (const QString error = leaveSystemMounts(); !error.isEmpty())
        return error;
    const QByteArray options = "size=" + QByteArray::number(bytes);
    m_isMounted = ::mount("tmpfs", m_folder.constData(), "tmpfs", 0, options.constData()) == 0;
    return outcome("tmpfs", m_isMounted);
}

QString TestMount::mountReadOnly()
{
    if (const QString error = leaveSystemMounts(); !error.isEmpty())
        return error;
    const char *folder = m_folder.constData();
    m_isMounted = ::mount(folder, folder, nullptr, MS_BIND, nullptr) == 0;
    if (!m_isMounted)
        return outcome("bind mount", false);
    return outcome("read-only",
                   ::mount(nullptr, folder, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0);
}

} // namespace wrenfold
