// SPDX-License-Identifier: MIT
#include "model/uuid_text.h"

namespace wrenfold {

namespace {

bool isHexDigit(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= u'0' && u <= u'9') || (u >= u'a' && u <= u'f') || (u >= u'A' && u <= u'F');
}

bool isHyphenPlace(qsizetype index)
{
    return index == 8 || index == 13 || index == 18 || index == 23;
}

} // namespace

QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> uuidFromText(QStringView text)
{
    // QUuid reads braces and trailing text too, and turns what it cannot read into the null identifier.
    if (text.size() != 36)
        return std::nullopt;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isHyphenPlace(i) ? text[i] != QLatin1Char('-') : !isHexDigit(text[i]))
            return std::nullopt;
    }
    return QUuid::fromString(text);
}

} // namespace wrenfold
