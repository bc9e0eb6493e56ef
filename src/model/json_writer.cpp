// SPDX-License-Identifier: MIT
#include "model/json_writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace wrenfold {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";

char *appendDigits(char *out, quint64 value, int count)
{
    for (int shift = 4 * (count - 1); shift >= 0; shift -= 4)
        *out++ = hexDigits[(value >> shift) & 0xF];
    return out;
}

/// Of a character that must not stand in a text as it is.
char *appendEscaped(char *out, char16_t unit)
{
    *out++ = '\\';
    if (unit == u'"' || unit == u'\\') {
        *out++ = char(unit);
        return out;
    }
    *out++ = 'u';
    return appendDigits(out, unit, 4);
}

/// The UTF-8 of a character outside ASCII.
char *appendUtf8(char *out, char32_t character)
{
    const auto continuation = [character](int shift) { return char(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x800) {
        *out++ = char(0xC0 | (character >> 6));
    } else if (character < 0x10000) {
        *out++ = char(0xE0 | (character >> 12));
        *out++ = continuation(6);
    } else {
        *out++ = char(0xF0 | (character >> 18));
        *out++ = continuation(12);
        *out++ = continuation(6);
    }
    *out++ = continuation(0);
    return out;
}

/// Of a number that is whole thousandths, as the times of clocks are: by whole numbers, much faster than the general way.
/// Null for any other number, and for one that is shorter with an exponent or without a point.
char *appendThousandths(char *out, double value)
{
    constexpr double tooLarge = 1e11; // Up to here, they have 14 digits; a double keeps 15.
    if (!(value >= 1 && value < tooLarge))
        return nullptr;
    const auto thousandths = qint64(value * 1000 + 0.5);
    const qint64 whole = thousandths / 1000;
    const int rest = int(thousandths % 1000);
    if (rest == 0 || double(thousandths) / 1000 != value)
        return nullptr;
    constexpr qsizetype longestWhole = 12;
    out = std::to_chars(out, out + longestWhole, whole).ptr;
    *out++ = '.';
    *out++ = char('0' + rest / 100);
    if (rest % 100 != 0)
        *out++ = char('0' + rest / 10 % 10);
    if (rest % 10 != 0)
        *out++ = char('0' + rest % 10);
    return out;
}

} // namespace

QByteArray JsonWriter::take()
{
    m_bytes.truncate(m_next - m_bytes.constData());
    return std::move(m_bytes);
}

void JsonWriter::grow(qsizetype bytes)
{
    const qsizetype written = m_next - m_bytes.constData();
    m_bytes.resize(2 * m_bytes.size() + bytes);
    m_next = m_bytes.data() + written;
    m_end = m_bytes.data() + m_bytes.size();
}

void JsonWriter::open(char bracket)
{
    token({&bracket, 1});
    m_isSeparatorDue = false;
}

void JsonWriter::close(char bracket)
{
    m_isSeparatorDue = false;
    token({&bracket, 1});
}

void JsonWriter::string(QStringView text)
{
    constexpr qsizetype longestUnit = 6; // Bytes: an escaped one.
    char *out = beginToken(longestUnit * text.size() + 2);
    *out++ = '"';
    const char16_t *const end = text.utf16() + text.size();
    // The commonest first: this loop is the largest part of a save.
    for (const char16_t *next = text.utf16(); next != end; ++next) {
        const char16_t unit = *next;
        if (unit < 0x80 && unit >= 0x20 && unit != u'"' && unit != u'\\')
            *out++ = char(unit);
        else if (unit >= 0x80 && !QChar::isSurrogate(unit) && unit != 0xFEFF)
            out = appendUtf8(out, unit);
        else if (QChar::isHighSurrogate(unit) && next + 1 != end && QChar::isLowSurrogate(next[1]))
            out = appendUtf8(out, QChar::surrogateToUcs4(unit, *++next));
        else
            // A surrogate without its partner has no UTF-8; readers drop a byte order mark at a text's start.
            out = appendEscaped(out, unit);
    }
    *out++ = '"';
    m_next = out;
}

void JsonWriter::string(QLatin1String plainText)
{
    char *out = beginToken(plainText.size() + 2);
    *out++ = '"';
    out = std::copy(plainText.begin(), plainText.end(), out);
    *out++ = '"';
    m_next = out;
}

void JsonWriter::boolean(bool value)
{
    token(value ? "true" : "false");
}

void JsonWriter::integer(qint64 value)
{
    constexpr qsizetype longest = 24;
    char *out = beginToken(longest);
    m_next = std::to_chars(out, out + longest, value).ptr;
}

void JsonWriter::number(double value)
{
    constexpr qsizetype longest = 32;
    if (value == 0.0 && std::signbit(value)) {
        token("-0.0"); // Readers take "-0" for the integer.
        return;
    }
    char *out = beginToken(longest);
    char *end = appendThousandths(out, value);
    m_next = end ? end : std::to_chars(out, out + longest, value).ptr;
}

void JsonWriter::uuid(const QUuid &id)
{
    char *out = beginToken(38);
    *out++ = '"';
    out = appendDigits(out, id.data1, 8);
    *out++ = '-';
    out = appendDigits(out, id.data2, 4);
    *out++ = '-';
    out = appendDigits(out, id.data3, 4);
    *out++ = '-';
    for (int i = 0; i < 8; ++i) {
        if (i == 2)
            *out++ = '-';
        out = appendDigits(out, id.data4[i], 2);
    }
    *out++ = '"';
    m_next = out;
}

} // namespace wrenfold
