// SPDX-License-Identifier: MIT
#include "platform/linux/xdg_autostart_login_item.h"

#include "app/application_id.h"
#include "platform/desktop_entries.h"
#include "platform/linux/atomic_file.h"
#include "platform/regular_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace wrenfold {
namespace {

// Keys of the entry. The last is ours: it tells an entry that we hid from one that the desktop's settings hid.
const auto hiddenKey = QStringLiteral("Hidden");
const auto enabledKey = QStringLiteral("X-GNOME-Autostart-enabled");
const auto unregisteredKey = QStringLiteral("X-Wrenfold-Unregistered");

QString pathIn(const QString &configurationFolder)
{
    return QStringLiteral("%1/autostart/%2.desktop").arg(configurationFolder, applicationID());
}

QString ownPath()
{
    return pathIn(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

/// The entry that the desktop goes by among those of other folders than the user's; empty if there is none.
QString systemPath()
{
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    for (const QString &folder : folders.mid(1)) {
        if (const QString path = pathIn(folder); isSomethingAt(path))
            return path;
    }
    return {};
}

bool isTrue(const QHash<QString, QString> &entry, const QString &key)
{
    return entry.value(key) == QLatin1String("true");
}

bool isRunnable(const QString &command)
{
    const QString program = commandWords(command).value(0).replace(QLatin1String("%%"), QLatin1String("%"));
    return !QStandardPaths::findExecutable(program).isEmpty();
}

/// The program's path as the one word of an Exec line: quoted for the command, then escaped as every value is.
QString execValue(const QString &program)
{
    QString value;
    for (const QChar c : program) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            value += u'\\';
        value += c;
        if (c == u'%')
            value += c;
    }
    value.replace(u'\\', QLatin1String("\\\\"));
    value.replace(u'\n', QLatin1String("\\n"));
    value.replace(u'\t', QLatin1String("\\t"));
    value.replace(u'\r', QLatin1String("\\r"));
    return u'"' + value + u'"';
}

QString entryText(const QString &program)
{
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Wren Fold\n"
                          "Exec=%1\n"
                          "Icon=%2\n")
        .arg(execValue(program), applicationID());
}

LoginItem::Error writeOwn(const QString &text)
{
    const QString path = ownPath();
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder))
        return QStringLiteral("Cannot make the folder %1").arg(folder);
    constexpr mode_t readableByAll = 0644;
    return replaceFile(FileSystem::real(), path, text.toUtf8(), readableByAll);
}

} // namespace

XdgAutostartLoginItem::XdgAutostartLoginItem(QString program)
    : m_program(std::move(program))
{
}

LoginItemStatus XdgAutostartLoginItem::status() const
{
    QString path = ownPath();
    if (!isSomethingAt(path))
        path = systemPath();
    if (path.isEmpty())
        return LoginItemStatus::NotRegistered;

    constexpr qint64 largest = 1 << 20;
    const std::optional<RegularFile> file = readRegularFile(path, largest, Links::Follow);
    const QHash<QString, QString> entry = file ? desktopEntryValues(file->bytes) : QHash<QString, QString>();
    const bool isHidden = isTrue(entry, hiddenKey);
    if (isHidden && isTrue(entry, unregisteredKey))
        return LoginItemStatus::NotRegistered;
    if (isHidden || entry.value(enabledKey) == QLatin1String("false"))
        return LoginItemStatus::RequiresApproval;
    return isRunnable(entry.value(QStringLiteral("Exec"))) ? LoginItemStatus::Enabled
                                                           : LoginItemStatus::NotFound;
}

LoginItem::Error XdgAutostartLoginItem::registerProgram()
{
    return writeOwn(entryText(m_program) + enabledKey + QStringLiteral("=true\n"));
}

LoginItem::Error XdgAutostartLoginItem::unregisterProgram()
{
    if (!systemPath().isEmpty()) {
        // Whole apart from that, so that the desktop's settings can switch it on again.
        return writeOwn(entryText(m_program) + hiddenKey + QStringLiteral("=true\n") + unregisteredKey +
                        QStringLiteral("=true\n"));
    }
    QFile own(ownPath());
    if (isNothingAt(own.fileName()) || own.remove())
        return std::nullopt;
    return QStringLiteral("Cannot remove %1: %2").arg(own.fileName(), own.errorString());
}

} // namespace wrenfold
