// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <algorithm>
#include <string_view>

namespace wrenfold {

/// Writes compact JSON straight into bytes. Qt's own writer wants the document as a tree first, which at ten
/// thousand tasks takes longer than the whole operation may.
class JsonWriter
{
public:
    explicit JsonWriter(qsizetype expectedBytes = 0)
        : m_bytes(expectedBytes, Qt::Uninitialized)
        , m_next(m_bytes.data())
        , m_end(m_next + expectedBytes)
    {
    }
    Q_DISABLE_COPY_MOVE(JsonWriter)

    /// What was written, to be called once, at the end.
    [[nodiscard]] QByteArray take();

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    void key(std::string_view asciiName)
    {
        char *out = beginToken(qsizetype(asciiName.size()) + 3);
        *out++ = '"';
        out = std::copy(asciiName.begin(), asciiName.end(), out);
        *out++ = '"';
        *out++ = ':';
        m_next = out;
        m_isSeparatorDue = false;
    }

    void string(QStringView text);
    void string(QLatin1String plainText); ///< ASCII that needs no escape.
    void boolean(bool value);
    void integer(qint64 value);
    void number(double value); ///< The shortest text that reads back as the same double. Must be finite.
    void uuid(const QUuid &id);

private:
    void open(char bracket);
    void close(char bracket);

    /// Where a token of at most so many bytes goes, behind a comma if one is due. m_next must then be set to
    /// its end.
    [[nodiscard]] char *beginToken(qsizetype bytes)
    {
        if (m_end - m_next < bytes + 1)
            grow(bytes + 1);
        if (m_isSeparatorDue)
            *m_next++ = ',';
        m_isSeparatorDue = true;
        return m_next;
    }
    void token(std::string_view bytes)
    {
        char *out = beginToken(qsizetype(bytes.size()));
        m_next = std::copy(bytes.begin(), bytes.end(), out);
    }
    void grow(qsizetype bytes);

    QByteArray m_bytes; ///< Longer than what is written.
    char *m_next;
    char *m_end;
    bool m_isSeparatorDue = false;
};

} // namespace wrenfold
