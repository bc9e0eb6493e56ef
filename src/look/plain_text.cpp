// SPDX-License-Identifier: MIT
#include "look/plain_text.h"

#include <QFontMetrics>
#include <QTextLayout>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr char16_t leftToRightIsolate = 0x2066;
constexpr char16_t rightToLeftIsolate = 0x2067;
constexpr char16_t firstStrongIsolate = 0x2068;
constexpr char16_t popIsolate = 0x2069;

bool opensIsolate(QChar character)
{
    return character == leftToRightIsolate || character == rightToLeftIsolate ||
           character == firstStrongIsolate;
}

/// Whether a text with this in it may be laid out in another way than from left to right.
bool concernsDirection(char32_t character)
{
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return false;
    }
}

} // namespace

bool breaksLine(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

QString plainToolTip(const QString &text)
{
    if (text.isEmpty())
        return {};
    // Qt breaks its tips early, Japanese ones in the middle of a word.
    constexpr qsizetype shortLine = 48;
    const QStringList lines = text.split(QLatin1Char('\n'));
    const bool isShort =
        std::all_of(lines.begin(), lines.end(), [](const QString &line) { return line.size() <= shortLine; });
    return QStringLiteral("<p style=\"white-space:%1\">")
               .arg(isShort ? QStringLiteral("pre") : QStringLiteral("pre-wrap")) +
           text.toHtmlEscaped() + QStringLiteral("</p>");
}

QString oneLine(const QString &text)
{
    QString line = text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (QChar &character : line) {
        if (breaksLine(character))
            character = QLatin1Char(' ');
    }
    return line;
}

QString isolated(const QString &text, Qt::LayoutDirection direction)
{
    // No font has an isolate's marks, so that Qt looks through all the fonts there are for them.
    const QList<uint> characters = text.toUcs4();
    if (direction != Qt::RightToLeft && std::none_of(characters.begin(), characters.end(), concernsDirection))
        return text;
    QString result;
    result.reserve(text.size() + 2);
    result.append(QChar(direction == Qt::LeftToRight   ? leftToRightIsolate
                        : direction == Qt::RightToLeft ? rightToLeftIsolate
                                                       : firstStrongIsolate));
    int open = 0;
    for (const QChar character : text) {
        if (opensIsolate(character))
            ++open;
        // One end too many would end our own isolate.
        if (character == popIsolate && --open < 0) {
            open = 0;
            continue;
        }
        result.append(character);
    }
    result.append(QString(open + 1, QChar(popIsolate)));
    return result;
}

ElidedText elided(const QString &text, const QFont &font, int width, int maximumLines)
{
    const QString whole = oneLine(text);
    ElidedText result;
    qsizetype start = 0;
    if (maximumLines > 1) {
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        QTextLayout layout(whole, font);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid() && result.lines.size() + 1 < maximumLines;
             line = layout.createLine()) {
            line.setLineWidth(width);
            result.lines.append(whole.sliced(line.textStart(), line.textLength()).trimmed());
            start = line.textStart() + line.textLength();
        }
        layout.endLayout();
    }
    const QString rest = whole.sliced(start).trimmed();
    if (!rest.isEmpty() || result.lines.isEmpty()) {
        result.lines.append(QFontMetrics(font).elidedText(rest, Qt::ElideRight, width));
        result.isElided = result.lines.constLast() != rest;
    }
    return result;
}

} // namespace wrenfold
