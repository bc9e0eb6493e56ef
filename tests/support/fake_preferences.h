// SPDX-License-Identifier: MIT
#pragma once

#include "platform/preferences.h"

#include <QHash>
#include <QList>

namespace wrenfold {

/// Preferences in memory. Below the interface is what a test steers and looks at.
class FakePreferences final : public Preferences
{
public:
    [[nodiscard]] ReadResult read(const QString &key) const override;
    [[nodiscard]] std::optional<QString> write(const QString &key, const QByteArray &bytes) override;
    [[nodiscard]] std::optional<QString> keepAside(const QString &key) override;

    /// Stores a value as an earlier run of the program would have; does not count as a write.
    void setValue(const QString &key, const QByteArray &bytes);
    /// Makes what is stored under the key, or something that is stored now, unreadable.
    void makeUnreadable(const QString &key);

    /// The next so many writes, or keepings aside, fail and change nothing.
    void failNextWrites(int count) { m_writesToFail = count; }
    void failNextKeepsAside(int count) { m_keepsAsideToFail = count; }

    /// Writes asked for until now, failed ones included.
    [[nodiscard]] int writeCount() const { return m_writeCount; }
    /// The values of a key that were kept aside, oldest first. Those that could not be read are null.
    [[nodiscard]] QList<QByteArray> keptAside(const QString &key) const { return m_keptAside.value(key); }

private:
    QHash<QString, ReadResult> m_values;
    QHash<QString, QList<QByteArray>> m_keptAside;
    int m_writeCount = 0;
    int m_writesToFail = 0;
    int m_keepsAsideToFail = 0;
};

} // namespace wrenfold
