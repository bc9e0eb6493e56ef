// SPDX-License-Identifier: MIT
#include "platform/linux/status_icon_files.h"

#include "app/debug_log.h"

#include <QFile>

namespace wrenfold {
namespace {

/// Hosts make it smaller, and on fine screens need most of it.
constexpr int side = 48;

} // namespace

QString StatusIconFiles::path(const StatusIcon &icon)
{
    if (icon.name.isEmpty() || m_hasFailed || !makeFolder())
        return {};
    const QString path = m_folder->filePath(icon.name + QStringLiteral(".png"));
    if (QFile::exists(path) || icon.paint(side).save(path, "PNG"))
        return path;
    m_hasFailed = true;
    QFile::remove(path);
    qCInfo(DebugLog::ui).noquote() << QStringLiteral("The status icon cannot be written to %1").arg(path);
    return {};
}

bool StatusIconFiles::makeFolder()
{
    if (m_folder)
        return true;
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!session.isEmpty())
        m_folder = std::make_unique<QTemporaryDir>(session + QStringLiteral("/wrenfold-icons-XXXXXX"));
    if (m_folder && m_folder->isValid())
        return true;
    m_folder.reset();
    m_hasFailed = true;
    qCInfo(DebugLog::ui).noquote() << QStringLiteral("There is no folder for the status icon's files");
    return false;
}

} // namespace wrenfold
