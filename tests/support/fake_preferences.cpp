// SPDX-License-Identifier: MIT
#include "support/fake_preferences.h"

namespace wrenfold {

Preferences::ReadResult FakePreferences::read(const QString &key) const
{
    return m_values.value(key);
}

std::optional<QString> FakePreferences::write(const QString &key, const QByteArray &bytes)
{
    ++m_writeCount;
    if (m_writesToFail > 0) {
        --m_writesToFail;
        return QStringLiteral("cannot write %1: told so by the test").arg(key);
    }
    setValue(key, bytes);
    return std::nullopt;
}

std::optional<QString> FakePreferences::keepAside(const QString &key)
{
    if (m_keepsAsideToFail > 0) {
        --m_keepsAsideToFail;
        return QStringLiteral("cannot keep %1 aside: told so by the test").arg(key);
    }
    const ReadResult value = m_values.take(key);
    if (value.status != ReadStatus::Absent)
        m_keptAside[key].append(value.bytes);
    return std::nullopt;
}

void FakePreferences::setValue(const QString &key, const QByteArray &bytes)
{
    m_values.insert(key, {ReadStatus::Found, bytes});
}

void FakePreferences::makeUnreadable(const QString &key)
{
    m_values.insert(key, {ReadStatus::Unreadable, {}});
}

} // namespace wrenfold
