// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QObject>
#include <QProcess>
#include <QPromise>
#include <QStringList>

#include <functional>

namespace wrenfold {

/// One search for a key with 1Password's command-line tool: first the usual places, then every item called after the
/// service. Runs the tool once at a time, as a child process.
class OnePasswordSearch : public QObject
{
    Q_OBJECT

public:
    ~OnePasswordSearch() override;

    /// See OpenRouterAPIKeyProvider::importFromOnePassword().
    [[nodiscard]] static QFuture<QString> start(QObject *owner);

private:
    explicit OnePasswordSearch(QObject *owner);

    void readOnePassword();
    void readOpenRouterItemFromOnePassword();
    void readNextItem();
    void finish(const QString &key);
    void fail();

    /// Runs `op` and calls `done` with its standard output, or null bytes if it did not run or failed.
    void runOnePassword(const QStringList &arguments, std::function<void(const QByteArray &output)> done);
    void end(const QByteArray &output);

    QProcess m_process;
    std::function<void(const QByteArray &output)> m_done;
    QStringList m_references; ///< Those not tried yet.
    QStringList m_items;      ///< As above.
    QPromise<QString> m_promise;
};

} // namespace wrenfold
