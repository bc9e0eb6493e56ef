// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace wrenfold {

/// A desktop portal for tests, on a bus of theirs: it has the settings that a test gives it and nothing else.
class FakePortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakePortal(QString busAddress);
    ~FakePortal() override { leave(); }

    /// Takes the name on the bus, with a new connection. Whether it has it.
    [[nodiscard]] bool arrive();
    void leave();

    /// Changes a setting and tells so.
    void set(const QString &nameSpace, const QString &key, const QVariant &value);

    /// Calls are noted and not answered.
    void setHanging(bool isHanging) { m_isHanging = isHanging; }
    /// From now on this is the answer, whatever it is; the settings again when it is not valid.
    void setAnswer(const QVariant &answer) { m_answer = answer; }

    [[nodiscard]] int asked() const { return m_asked; }

public Q_SLOTS:
    // Named by the interface they serve.
    Q_SCRIPTABLE void ReadAll(const QStringList &namespaces);

private:
    const QString m_busAddress;
    QString m_connectionName;
    QMap<QString, QVariantMap> m_settings;
    QVariant m_answer;
    bool m_isHanging = false;
    int m_asked = 0;
};

} // namespace wrenfold
