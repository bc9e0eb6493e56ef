// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QList>
#include <QObject>
#include <QStringList>

class QDBusPendingCall;

namespace wrenfold {

/// KWin's side of scripting, on a bus of a test's: it runs nothing and remembers everything. What a script would report
/// the test sends.
class FakeKWin : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Scripting")

public:
    struct Script
    {
        QString name;
        QString path;
        QByteArray text; ///< Once it runs, as it stood in the file.
        uint mode = 0;   ///< The file's permission bits, octal as by chmod.
    };

    explicit FakeKWin(QString busAddress);
    ~FakeKWin() override { leave(); }

    /// Takes the name on the bus with a new connection and no scripts. Whether it has it.
    [[nodiscard]] bool arrive();
    void leave();

    /// Calls are noted and not answered.
    void setHanging(bool isHanging) { m_isHanging = isHanging; }
    /// The next script is not loaded, as when one of its name is there.
    void refuseNext() { m_isRefusing = true; }

    /// The methods that were called, in order: "loadScript <name>".
    [[nodiscard]] const QStringList &calls() const { return m_calls; }
    /// The script of this name that runs, if one does; else one without a text.
    [[nodiscard]] Script running(const QString &name) const;

    /// What the reporting script does when a window becomes active; empty texts when none is.
    void report(const QString &windowClass, const QString &windowInstance = {},
                const QString &desktopFile = {}, const QString &pid = {}) const;
    /// What the minimizing script does at its end.
    void reportMinimized() const;

    /// Such a message to who is named in this script, over any connection.
    static QDBusPendingCall call(const QDBusConnection &connection, const QByteArray &script,
                                 const QString &method, const QVariantList &arguments);

Q_SIGNALS:
    /// KWin has been told to run what it has loaded.
    void started();

public Q_SLOTS:
    // Named by the interface they serve.
    Q_SCRIPTABLE int loadScript(const QString &path, const QString &name);
    Q_SCRIPTABLE bool unloadScript(const QString &name);
    Q_SCRIPTABLE void start();

private:
    [[nodiscard]] qsizetype indexOf(const QString &name) const; ///< -1 if none is loaded.
    void note(const QString &call);

    const QString m_busAddress;
    QString m_connectionName;
    bool m_isHanging = false;
    bool m_isRefusing = false;
    QStringList m_calls;
    QList<Script> m_scripts;
};

} // namespace wrenfold
