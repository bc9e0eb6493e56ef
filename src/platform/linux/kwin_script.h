// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTemporaryFile>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace wrenfold {

/// One script of ours in KWin: put there over the bus, run, and taken away again. There is one of a name at a time; what
/// an earlier process left behind under the name goes first. Waits for nothing.
class KWinScript : public QObject
{
    Q_OBJECT

public:
    /// `patience` is how long each answer, and then the script's own report, is waited for.
    KWinScript(QString name, std::chrono::milliseconds patience);
    /// As unload().
    ~KWinScript() override;

    /// Loads and runs the text in place of what runs. An attempt that is under way is given up, without failed().
    void run(const QDBusConnection &connection, const QByteArray &text);

    /// To be called when the script has reported: until then run() counts as not done.
    void confirm();

    /// Takes the script away, also one that is being loaded.
    void unload();

    /// Between run() and confirm(), unload() or failed().
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    [[nodiscard]] const QByteArray &text() const { return m_text; }
    /// The unique name on the bus of the KWin that has the script; empty if none has.
    [[nodiscard]] const QString &kwin() const { return m_kwin; }

Q_SIGNALS:
    /// It does not run: `reason` is one line for the user. The next run() may do better.
    void failed(const QString &reason);

private:
    void findKWin();
    void load(const QString &kwin);
    void start();
    void fail(const QString &reason);
    /// `answered` is called with the answer, unless it is an error or the attempt has ended by then.
    void call(const QDBusMessage &message, std::function<void(const QDBusMessage &answer)> answered);

    const QString m_name;
    std::optional<QDBusConnection> m_connection; ///< Empty before the first run().
    QByteArray m_text;
    QString m_kwin;
    std::unique_ptr<QTemporaryFile> m_file; ///< Where KWin reads the text, for as long as it may have to.
    QTimer m_patience;                      ///< For the answer, or the report, that is due next.
    bool m_isBusy = false;
    quint64 m_attempt = 0;
};

} // namespace wrenfold
