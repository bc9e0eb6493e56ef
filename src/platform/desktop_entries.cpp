// SPDX-License-Identifier: MIT
#include "platform/desktop_entries.h"

#include "platform/regular_file.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringDecoder>

#include <algorithm>
#include <utility>

namespace wrenfold {
namespace {

constexpr auto suffix = QLatin1String(".desktop");

/// The locales to look for, the best first, as the Desktop Entry Specification orders them.
QStringList localeVariants(const QString &locale)
{
    const QString plain = locale.section(QLatin1Char('@'), 0, 0);
    const QString modifier = locale.mid(plain.size());
    const QString language = plain.section(QLatin1Char('_'), 0, 0);
    QStringList variants;
    if (plain != language && !modifier.isEmpty())
        variants << plain + modifier;
    if (plain != language)
        variants << plain;
    if (!modifier.isEmpty())
        variants << language + modifier;
    return variants << language;
}

/// Takes the escapes \s \n \t \r \\ back; another one stays as it is.
QString unescaped(QStringView value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const QChar code = value[++i];
        if (code == u's')
            text += u' ';
        else if (code == u'n')
            text += u'\n';
        else if (code == u't')
            text += u'\t';
        else if (code == u'r')
            text += u'\r';
        else if (code == u'\\')
            text += u'\\';
        else
            text += QLatin1Char('\\') + QString(code);
    }
    return text;
}

QString localizedValue(const QHash<QString, QString> &values, const QString &key, const QString &locale)
{
    for (const QString &variant : localeVariants(locale)) {
        const QString value = values.value(key + u'[' + variant + u']').trimmed();
        if (!value.isEmpty())
            return value;
    }
    return values.value(key).trimmed();
}

/// The file name of the program that a command starts, behind "env" and its settings.
QString programOf(const QString &command)
{
    for (const QString &word : commandWords(command)) {
        const QString name = word.section(u'/', -1);
        if (name != QLatin1String("env") && !word.contains(u'=') && !word.startsWith(u'-'))
            return name;
    }
    return {};
}

/// What runs the programs of many applications, and so tells none of them apart.
bool runsAnything(const QString &program)
{
    static const QStringList runners = {
        QStringLiteral("bash"),    QStringLiteral("dash"), QStringLiteral("electron"),
        QStringLiteral("flatpak"), QStringLiteral("gjs"),  QStringLiteral("gjs-console"),
        QStringLiteral("java"),    QStringLiteral("node"), QStringLiteral("perl"),
        QStringLiteral("ruby"),    QStringLiteral("sh"),   QStringLiteral("snap"),
        QStringLiteral("xdg-open")};
    return runners.contains(program) || program.startsWith(QLatin1String("python"));
}

QString lastPart(const QString &id)
{
    return id.section(u'.', -1);
}

QString withoutSuffix(const QString &name)
{
    return name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}

void claim(QHash<QString, qsizetype> &index, const QString &key, qsizetype entry)
{
    if (!key.isEmpty())
        index.insert(key.toCaseFolded(), entry);
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(const QByteArray &bytes, const QString &locale)
{
    const QHash<QString, QString> values = desktopEntryValues(bytes);
    DesktopEntry entry;
    entry.name = localizedValue(values, QStringLiteral("Name"), locale);
    if (entry.name.isEmpty() || values.value(QStringLiteral("Type")) != QLatin1String("Application"))
        return std::nullopt;
    entry.startupWMClass = values.value(QStringLiteral("StartupWMClass"));
    entry.program = programOf(values.value(QStringLiteral("Exec")));
    entry.isDisplayed = values.value(QStringLiteral("NoDisplay")) != QLatin1String("true") &&
                        values.value(QStringLiteral("Hidden")) != QLatin1String("true");
    entry.icon = localizedValue(values, QStringLiteral("Icon"), locale);
    return entry;
}

DesktopEntries::DesktopEntries(QList<DesktopEntry> entries)
    : m_entries(std::move(entries))
{
    // The last claim counts: backwards, so that it is the first entry's; those that are displayed come later.
    for (const bool isDisplayed : {false, true}) {
        for (qsizetype i = m_entries.size() - 1; i >= 0; --i) {
            const DesktopEntry &entry = m_entries[i];
            if (entry.isDisplayed != isDisplayed)
                continue;
            claim(m_byID, entry.id, i);
            claim(m_byWindowClass, entry.startupWMClass, i);
            claim(m_byLastPart, lastPart(entry.id), i);
            if (!runsAnything(entry.program))
                claim(m_byProgram, entry.program, i);
        }
    }
}

const DesktopEntry *DesktopEntries::find(const WindowIdentity &window) const
{
    const auto lookUp = [this](const QHash<QString, qsizetype> &index, const QString &key) {
        const auto found = key.isEmpty() ? index.end() : index.find(key.toCaseFolded());
        return found == index.end() ? nullptr : &m_entries[*found];
    };
    const DesktopEntry *entry = lookUp(m_byID, window.gtkApplicationID);
    if (!entry)
        entry = lookUp(m_byID, withoutSuffix(window.desktopFile.section(u'/', -1)));
    for (const auto *index : {&m_byWindowClass, &m_byID, &m_byLastPart}) {
        for (const QString &name : {window.windowClass, window.windowInstance}) {
            if (!entry)
                entry = lookUp(*index, name);
        }
    }
    return entry ? entry : lookUp(m_byProgram, window.program);
}

RunningApplication DesktopEntries::application(const WindowIdentity &window) const
{
    if (const DesktopEntry *entry = find(window))
        return {entry->id, entry->name};
    for (const QString &name :
         {window.windowClass, window.windowInstance, window.desktopFile, window.program}) {
        if (!name.isEmpty())
            return {std::nullopt, name};
    }
    return {};
}

QHash<QString, QString> desktopEntryValues(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        return {};
    QHash<QString, QString> values;
    bool isInGroup = false;
    for (QStringView line : QStringView(text).split(u'\n')) {
        line = line.trimmed();
        if (line.startsWith(u'[')) {
            if (isInGroup)
                break;
            isInGroup = line == QLatin1String("[Desktop Entry]");
        } else if (isInGroup && !line.startsWith(u'#')) {
            const qsizetype equals = line.indexOf(u'=');
            const QString key = line.left(std::max<qsizetype>(equals, 0)).trimmed().toString();
            if (!key.isEmpty() && !values.contains(key))
                values.insert(key, unescaped(line.mid(equals + 1).trimmed()));
        }
    }
    return values;
}

QStringList commandWords(const QString &command)
{
    QStringList result;
    QString word;
    bool isQuoted = false;
    bool isInWord = false;
    for (qsizetype i = 0; i < command.size(); ++i) {
        const QChar c = command[i];
        if (c == u'"') {
            isQuoted = !isQuoted;
            isInWord = true;
        } else if (isQuoted && c == u'\\' && i + 1 < command.size()) {
            word += command[++i];
        } else if (!isQuoted && c == u' ') {
            if (isInWord)
                result << std::exchange(word, {});
            isInWord = false;
        } else {
            word += c;
            isInWord = true;
        }
    }
    if (isInWord)
        result << word;
    return result;
}

std::optional<DesktopEntry> readDesktopEntry(const QString &path)
{
    constexpr qint64 largest = 1 << 20;
    const std::optional<RegularFile> file =
        path.endsWith(suffix) ? readRegularFile(path, largest, Links::Follow) : std::nullopt;
    std::optional<DesktopEntry> entry =
        file ? DesktopEntry::parse(file->bytes, messagesLocale()) : std::nullopt;
    if (!entry)
        return std::nullopt;
    QString name = QFileInfo(path).fileName();
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        const QString below = QDir(folder).relativeFilePath(path);
        if (!below.startsWith(QLatin1String("../")) && !QDir::isAbsolutePath(below)) {
            name = QString(below).replace(u'/', u'-');
            break;
        }
    }
    entry->id = withoutSuffix(name);
    entry->path = path;
    return entry;
}

QString messagesLocale()
{
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QString value = qEnvironmentVariable(name);
        if (value.isEmpty())
            continue;
        // "ja_JP.UTF-8@variant": the encoding says nothing of the language.
        const QString modifier = value.contains(u'@') ? value.mid(value.indexOf(u'@')) : QString();
        return value.section(u'@', 0, 0).section(u'.', 0, 0) + modifier;
    }
    return {};
}

} // namespace wrenfold
