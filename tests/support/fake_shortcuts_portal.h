// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/portal_shortcut.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QStringList>

namespace wrenfold {

/// A desktop portal for tests, on a bus of theirs: it gives global shortcuts as a test tells it to.
class FakeShortcutsPortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit FakeShortcutsPortal(QString busAddress);
    ~FakeShortcutsPortal() override { leave(); }

    /// Takes the name on the bus, with a new connection. Whether it has it.
    [[nodiscard]] bool arrive();
    void leave();

    // How it answers from now on.
    QStringList hangingMethods; ///< Calls of these are noted and not answered.
    QStringList unknownMethods; ///< Calls of these are answered with an error.
    uint sessionResponse = 0;   ///< 0 grants, 1 is the user's no.
    uint bindResponse = 0;
    bool isSessionHandlePath = false;                    ///< Else it is a string.
    QVariant sessionHandle;                              ///< Instead of the true one, if valid.
    QStringList withheld;                                ///< The ids that are left out of what is granted.
    QString trigger = QStringLiteral("Ctrl+Alt+Meta+X"); ///< The description of all keys.
    bool isUserThinking = false; ///< The last request is responded to by userAnswers() only.

    void userAnswers();
    void press(const QString &id, const QString &session = {}); ///< In our session, if none is named.
    void changeKeys(const QString &newTrigger); ///< As the user does in the desktop's settings.
    void closeSession();

    [[nodiscard]] const QStringList &calls() const { return m_calls; }
    [[nodiscard]] const QList<PortalShortcut> &bound() const { return m_bound; }
    [[nodiscard]] const QString &applicationID() const { return m_applicationID; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }

private:
    void createSession(const QDBusMessage &message);
    void bindShortcuts(const QDBusMessage &message);
    /// Answers the call with the request's path, and then sends the response.
    void respond(const QDBusMessage &message, const QVariantMap &options, uint code,
                 const QVariantMap &results);
    [[nodiscard]] QList<PortalShortcut> granted() const;
    void send(const QDBusMessage &message) const;

    const QString m_busAddress;
    QString m_connectionName;
    QStringList m_calls;
    QString m_applicationID;
    QString m_session;
    QList<PortalShortcut> m_bound;
    QDBusMessage m_response; ///< What the user has yet to answer.
};

} // namespace wrenfold
