// SPDX-License-Identifier: MIT
#include "platform/linux/host_texts.h"

#include <QStringList>

namespace wrenfold {
namespace {

bool breaksLine(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

bool setsDirection(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

} // namespace

QString hostLine(const QString &text)
{
    QString line = text;
    line.removeIf(setsDirection);
    for (QChar &character : line) {
        if (breaksLine(character))
            character = u' ';
    }
    return line;
}

QString hostMenuLabel(const QString &text)
{
    return hostLine(text).replace(u'_', QStringLiteral("__"));
}

QString hostMarkup(const QString &text)
{
    QStringList lines = text.split(u'\n');
    for (QString &line : lines)
        line = hostLine(line).toHtmlEscaped();
    return lines.join(u'\n');
}

} // namespace wrenfold
