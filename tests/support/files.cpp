// SPDX-License-Identifier: MIT
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace wrenfold {

namespace {

void failTest(const QString &path, const char *what)
{
    QTest::qFail(qPrintable(path + QLatin1Char(' ') + QLatin1String(what)), __FILE__, __LINE__);
}

} // namespace

QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        failTest(path, "cannot be read");
    return file.readAll();
}

void putFile(const QString &path, const QByteArray &bytes, mode_t mode)
{
    QFile file(path);
    const bool isPut = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
                       ::chmod(QFile::encodeName(path).constData(), mode) == 0;
    if (!isPut)
        failTest(path, "cannot be put there");
}

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        failTest(path, "cannot be looked at");
    return status.st_mode & 07777;
}

RightsOfNobody::RightsOfNobody()
{
    constexpr uid_t nobody = 65534;
    if (::setresuid(nobody, nobody, 0) != 0)
        qFatal("the user cannot be changed");
}

RightsOfNobody::~RightsOfNobody()
{
    if (::setresuid(0, 0, 0) != 0)
        qFatal("the user cannot be changed back");
}

} // namespace wrenfold
