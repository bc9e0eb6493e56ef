// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>

namespace wrenfold {

/// Writes compact JSON straight into bytes. Qt's own writer wants the document as a tree first, which at ten
/// thousand tasks takes longer than the whole operation may.
class JsonWriter
{
public:
    void reserve(qsizetype bytes) { m_bytes.reserve(bytes); }
    [[nodiscard]] QByteArray take() { return std::move(m_bytes); }

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    void key(const char *asciiName);

    void string(QStringView text);
    void boolean(bool value);
    void integer(qint64 value);
    void number(double value); ///< The shortest text that reads back as the same double. Must be finite.
    void uuid(const QUuid &id);

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void escapedUnit(char16_t unit);

    QByteArray m_bytes;
    bool m_isSeparatorDue = false;
};

} // namespace wrenfold
