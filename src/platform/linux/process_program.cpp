// SPDX-License-Identifier: MIT
#include "platform/linux/process_program.h"

#include <QFile>

namespace wrenfold {

QString processProgram(qint64 pid)
{
    constexpr auto replaced = QLatin1String(" (deleted)"); // By a newer version, while it runs.
    QString path = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid));
    if (path.endsWith(replaced))
        path.chop(replaced.size());
    return path.section(u'/', -1);
}

} // namespace wrenfold
