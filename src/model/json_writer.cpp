// SPDX-License-Identifier: MIT
#include "model/json_writer.h"

#include <charconv>
#include <cmath>

namespace wrenfold {

namespace {

/// Whether a unit can go through the encoder as it is. Surrogates are looked at by the caller. A byte order
/// mark at the start of a text is dropped by readers unless it is escaped.
bool isPlain(char16_t unit)
{
    return unit >= 0x20 && unit != u'"' && unit != u'\\' && unit != 0xFEFF;
}

constexpr char hexDigits[] = "0123456789ABCDEF";

} // namespace

void JsonWriter::separate()
{
    if (m_isSeparatorDue)
        m_bytes.append(',');
    m_isSeparatorDue = true;
}

void JsonWriter::open(char bracket)
{
    separate();
    m_bytes.append(bracket);
    m_isSeparatorDue = false;
}

void JsonWriter::close(char bracket)
{
    m_bytes.append(bracket);
    m_isSeparatorDue = true;
}

void JsonWriter::key(const char *asciiName)
{
    separate();
    m_bytes.append('"').append(asciiName).append("\":");
    m_isSeparatorDue = false;
}

void JsonWriter::string(QStringView text)
{
    separate();
    m_bytes.append('"');
    // Runs of plain text are encoded at once; a surrogate without its partner has no UTF-8 and is escaped.
    qsizetype runStart = 0;
    const auto flushRun = [&](qsizetype end) {
        m_bytes.append(text.sliced(runStart, end - runStart).toUtf8());
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (isPlain(c.unicode()) && !c.isSurrogate())
            continue;
        flushRun(i);
        escapedUnit(c.unicode());
        runStart = i + 1;
    }
    flushRun(text.size());
    m_bytes.append('"');
}

void JsonWriter::escapedUnit(char16_t unit)
{
    if (unit == u'"' || unit == u'\\') {
        m_bytes.append('\\').append(char(unit));
        return;
    }
    m_bytes.append("\\u");
    for (int shift = 12; shift >= 0; shift -= 4)
        m_bytes.append(hexDigits[(unit >> shift) & 0xF]);
}

void JsonWriter::boolean(bool value)
{
    separate();
    m_bytes.append(value ? "true" : "false");
}

void JsonWriter::integer(qint64 value)
{
    separate();
    char buffer[24];
    const auto result = std::to_chars(std::begin(buffer), std::end(buffer), value);
    m_bytes.append(buffer, result.ptr - buffer);
}

void JsonWriter::number(double value)
{
    separate();
    if (value == 0.0 && std::signbit(value)) {
        m_bytes.append("-0.0"); // Readers take "-0" for the integer.
        return;
    }
    char buffer[32];
    const auto result = std::to_chars(std::begin(buffer), std::end(buffer), value);
    m_bytes.append(buffer, result.ptr - buffer);
}

void JsonWriter::uuid(const QUuid &id)
{
    separate();
    char buffer[38];
    char *out = buffer;
    const auto appendDigits = [&out](quint64 value, int count) {
        for (int shift = 4 * (count - 1); shift >= 0; shift -= 4)
            *out++ = hexDigits[(value >> shift) & 0xF];
    };
    *out++ = '"';
    appendDigits(id.data1, 8);
    *out++ = '-';
    appendDigits(id.data2, 4);
    *out++ = '-';
    appendDigits(id.data3, 4);
    *out++ = '-';
    for (int i = 0; i < 8; ++i) {
        if (i == 2)
            *out++ = '-';
        appendDigits(id.data4[i], 2);
    }
    *out++ = '"';
    m_bytes.append(buffer, out - buffer);
}

} // namespace wrenfold
