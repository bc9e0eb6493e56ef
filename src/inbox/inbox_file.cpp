// SPDX-License-Identifier: MIT
#include "inbox/inbox_file.h"

#include "platform/regular_file.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace wrenfold {
namespace {

/// The text under the key, empty where there is none or null; nothing if it is of another type.
std::optional<QString> optionalText(const QJsonObject &object, QLatin1String key)
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined() || value.isNull())
        return QString();
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QUrl> parsedURL(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

} // namespace

bool InboxFile::isCandidateName(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    // A name that is nothing but ".json" has no extension.
    return dot > 0 && name.mid(dot + 1).toLower() == QLatin1String("json");
}

std::optional<InboxItem> InboxFile::decode(const QUrl &fileURL)
{
    constexpr qint64 largest = 1 << 20;
    const std::optional<RegularFile> file = readRegularFile(fileURL.toLocalFile(), largest, Links::Refuse);
    return file ? decode(fileURL, file->bytes, file->modified) : std::nullopt;
}

std::optional<InboxItem> InboxFile::decode(const QUrl &fileURL, const QByteArray &bytes,
                                           const QDateTime &modified)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    const QJsonValue text = object.value(QLatin1String("text"));
    const std::optional<QString> source = optionalText(object, QLatin1String("source"));
    const std::optional<QString> url = optionalText(object, QLatin1String("url"));
    const std::optional<QString> receivedAt = optionalText(object, QLatin1String("receivedAt"));
    if (!text.isString() || !source || !url || !receivedAt)
        return std::nullopt;

    InboxItem item;
    item.id = fileURL.fileName(QUrl::FullyDecoded);
    item.fileURL = fileURL;
    item.text = text.toString().trimmed();
    item.source = source->trimmed().toLower();
    item.url = parsedURL(*url);
    item.receivedAt = internetDateTime(*receivedAt).value_or(modified);
    return item.text.isEmpty() ? std::nullopt : std::optional(item);
}

std::optional<QDateTime> InboxFile::internetDateTime(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral(R"(\A\d{4}-\d{2}-\d{2}T\d{2}:\d{2}:\d{2}(\.\d+)?(Z|[+-]\d{2}:\d{2})\z)"));
    if (!form.match(text).hasMatch())
        return std::nullopt;
    const QDateTime moment = QDateTime::fromString(text, Qt::ISODateWithMs);
    return moment.isValid() ? std::optional(moment.toUTC()) : std::nullopt;
}

} // namespace wrenfold
