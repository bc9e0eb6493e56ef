// SPDX-License-Identifier: MIT
#include "inbox/inbox_file.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Any program may put a file into the inbox, under any name. It gives a candidate that can be shown and found again, or
// none.

namespace {

using namespace wrenfold;

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "fuzz_inbox_file: %s\n", what);
    std::abort();
}

/// A file name as the folder may hold it.
QString fileName(const QString &text)
{
    QString name = text.left(80);
    name.remove(u'/').remove(QChar());
    if (!name.isEmpty() && name.back().isHighSurrogate()) // Half of a character that was cut through.
        name.chop(1);
    return name + QLatin1String("x.json");
}

void requireCandidate(const InboxItem &item, const QUrl &file, const QByteArray &bytes)
{
    require(item.fileURL == file, "the candidate is of another file");
    require(!item.text.isEmpty(), "a candidate without a text");
    require(item.text == item.text.trimmed(), "a text that is not trimmed");
    require(item.text.size() <= bytes.size(), "a text longer than its file");
    require(item.source == item.source.trimmed().toLower(), "a source that is not trimmed or not lower case");
    require(!item.url || (item.url->isValid() && !item.url->isEmpty()), "a link that is none");
    require(item.receivedAt.isValid() && item.receivedAt.timeSpec() == Qt::UTC, "no moment of arrival");
}

/// The moment that the digits name, read by their places; the fraction of the second is left out.
QDateTime momentByPlaces(const QString &text)
{
    const auto number = [&](qsizetype at, qsizetype length) { return text.mid(at, length).toInt(); };
    const QDate day(number(0, 4), number(5, 2), number(8, 2));
    const qint64 seconds = number(11, 2) * 3600 + number(14, 2) * 60 + number(17, 2);
    qint64 offset = 0;
    if (!text.endsWith(u'Z')) {
        const qsizetype zone = text.size() - 6;
        offset = number(zone + 1, 2) * 3600 + number(zone + 4, 2) * 60;
        if (text[zone] == u'-')
            offset = -offset;
    }
    return QDateTime(day, QTime(0, 0), QTimeZone::utc()).addSecs(seconds - offset);
}

void readMoment(const QString &text)
{
    const std::optional<QDateTime> moment = InboxFile::internetDateTime(text);
    if (!moment)
        return;
    require(moment->isValid() && moment->timeSpec() == Qt::UTC, "a moment that is not valid, or not in UTC");
    const qint64 fraction = momentByPlaces(text).msecsTo(*moment);
    require(fraction >= 0 && fraction <= 1000, "another moment than the digits name");
}

void readFile(const QUrl &file, const QString &name, const QByteArray &bytes)
{
    const QDateTime modified = QDateTime::fromSecsSinceEpoch(1'700'000'000).toUTC();
    const std::optional<InboxItem> item = InboxFile::decode(file, bytes, modified);
    if (!item)
        return;
    require(item->id == name, "the id is not the file's name");
    requireCandidate(*item, file, bytes);
    require(InboxFile::decode(file, bytes, modified) == item, "read twice, the candidate differs");
}

/// A file that is well formed, whose members are the lines.
QByteArray fileOf(const QStringList &lines)
{
    const QStringList keys = {QStringLiteral("text"), QStringLiteral("source"), QStringLiteral("url"),
                              QStringLiteral("receivedAt")};
    QJsonObject object;
    for (qsizetype i = 0; i < std::min(lines.size(), keys.size()); ++i)
        object.insert(keys[i], lines[i]);
    return QJsonDocument(object).toJson();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);
    const QString name = fileName(text);
    const QUrl file = QUrl::fromLocalFile(QStringLiteral("/inbox/") + name);
    require(InboxFile::isCandidateName(name), "a name that would be passed over");

    readFile(file, name, bytes);
    readFile(file, name, fileOf(text.split(u'\n')));
    readMoment(text);
    return 0;
}
