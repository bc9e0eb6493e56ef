// SPDX-License-Identifier: MIT
#include "ai/one_password_items.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace wrenfold {

namespace {

/// The member in lower case; empty if it is no text.
QString lowered(const QJsonObject &object, const QString &name)
{
    return object.value(name).toString().toLower();
}

bool looksLikeKey(const QJsonObject &field)
{
    const QString label = field.value(QStringLiteral("label")).isString()
                              ? lowered(field, QStringLiteral("label"))
                              : lowered(field, QStringLiteral("id"));
    return label.contains(QLatin1String("credential")) || label.contains(QLatin1String("password")) ||
           label.contains(QLatin1String("api")) ||
           lowered(field, QStringLiteral("purpose")).contains(QLatin1String("password")) ||
           lowered(field, QStringLiteral("type")).contains(QLatin1String("concealed"));
}

/// Whether every element is an object.
bool holdsObjects(const QJsonArray &array)
{
    return std::all_of(array.begin(), array.end(), [](const QJsonValue &value) { return value.isObject(); });
}

} // namespace

QStringList OnePasswordItems::secretReferences()
{
    QStringList references;
    for (const char *vault : {"Private", "Personal"}) {
        for (const char *item : {"OpenRouter API Key", "OpenRouter"}) {
            for (const char *field : {"credential", "password"})
                references.append(QStringLiteral("op://%1/%2/%3")
                                      .arg(QLatin1String(vault), QLatin1String(item), QLatin1String(field)));
        }
    }
    return references;
}

QStringList OnePasswordItems::candidates(const QByteArray &itemList)
{
    const QJsonArray items = QJsonDocument::fromJson(itemList).array();
    QStringList identifiers;
    if (!holdsObjects(items))
        return identifiers;
    for (const QJsonValue item : items) {
        const QString title = lowered(item.toObject(), QStringLiteral("title"));
        const QJsonValue identifier = item.toObject().value(QStringLiteral("id"));
        const bool isCandidate =
            title.contains(QLatin1String("openrouter")) || title.contains(QLatin1String("open router"));
        if (isCandidate && identifier.isString())
            identifiers.append(identifier.toString());
    }
    return identifiers;
}

QString OnePasswordItems::keyIn(const QByteArray &item)
{
    const QJsonArray fields =
        QJsonDocument::fromJson(item).object().value(QStringLiteral("fields")).toArray();
    if (!holdsObjects(fields))
        return {};
    for (const QJsonValue field : fields) {
        const QString value = field.toObject().value(QStringLiteral("value")).toString().trimmed();
        if (!value.isEmpty() && looksLikeKey(field.toObject()))
            return value;
    }
    return {};
}

} // namespace wrenfold
