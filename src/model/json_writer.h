// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <string_view>

namespace wrenfold {

/// Writes compact JSON straight into bytes. Qt's own writer wants the document as a tree first, which at ten
/// thousand tasks takes longer than the whole operation may.
class JsonWriter
{
public:
    void reserve(qsizetype bytes) { m_bytes.resize(bytes); }
    [[nodiscard]] QByteArray take(); ///< What was written; the writer is empty then.

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }

    void key(std::string_view asciiName);

    void string(QStringView text);
    void string(QLatin1String plainText); ///< ASCII that needs no escape.
    void boolean(bool value);
    void integer(qint64 value);
    void number(double value); ///< The shortest text that reads back as the same double. Must be finite.
    void uuid(const QUuid &id);

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void append(std::string_view bytes);

    /// Where the next bytes go, with room for so many; advanceTo() then says how far they reach.
    [[nodiscard]] char *room(qsizetype bytes);
    void advanceTo(const char *end) { m_size = end - m_bytes.constData(); }

    QByteArray m_bytes; ///< Longer than what is written, so that not every byte asks for more.
    qsizetype m_size = 0;
    bool m_isSeparatorDue = false;
};

} // namespace wrenfold
