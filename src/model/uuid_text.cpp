// SPDX-License-Identifier: MIT
#include "model/uuid_text.h"

#include <array>

namespace wrenfold {

namespace {

/// -1 when it is no hexadecimal digit.
int digitValue(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    const auto lower = char16_t(u | 0x20);
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
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
    // Not QUuid's own reader: it takes braces and trailing text too, turns what it cannot read into the null
    // identifier, and is a good part of the time that a long document takes to load.
    if (text.size() != 36)
        return std::nullopt;
    std::array<char, 16> bytes = {};
    std::size_t digits = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isHyphenPlace(i)) {
            if (text[i] != QLatin1Char('-'))
                return std::nullopt;
            continue;
        }
        const int value = digitValue(text[i]);
        if (value < 0)
            return std::nullopt;
        bytes[digits / 2] = char(bytes[digits / 2] << 4 | value);
        ++digits;
    }
    return QUuid::fromRfc4122({bytes.data(), qsizetype(bytes.size())});
}

} // namespace wrenfold
