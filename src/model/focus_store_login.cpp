// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/focus_store.h"
#include "model/login_item_service.h"

#include <QScopedValueRollback>

namespace wrenfold {

void FocusStore::refreshLoginItemStatus()
{
    followLoginItem();
    loginItemStatus.set(QStringLiteral("状態: ") + LoginItemService::statusText(m_loginItem.status()));
}

void FocusStore::setLaunchAtLogin(bool isWanted)
{
    if (isWanted == launchAtLogin.value())
        return;
    const ChangeGroup::Scope scope(m_changes);
    launchAtLogin.set(isWanted);
    applyLaunchAtLoginPreference();
}

void FocusStore::applyLaunchAtLoginPreference()
{
    const ChangeGroup::Scope scope(m_changes);
    const bool isWanted = launchAtLogin.value();
    m_changes.requestSave();
    if (const LoginItem::Error error = LoginItemService::setEnabled(m_loginItem, isWanted)) {
        loginItemStatus.set(QStringLiteral("ログイン起動:") + *error);
        launchAtLogin.set(m_loginItem.status() == LoginItemStatus::Enabled);
        return;
    }
    const QString status = LoginItemService::statusText(m_loginItem.status());
    loginItemStatus.set(isWanted ? QStringLiteral("ログイン時に起動します（%1）").arg(status)
                                 : QStringLiteral("ログイン起動をオフにしました"));
    qCInfo(DebugLog::store).noquote()
        << QStringLiteral("launchAtLogin=%1 status=%2").arg(DebugLog::word(isWanted), status);
}

void FocusStore::followLoginItem()
{
    // What the system says needs no saving: it is asked again at each start.
    const QScopedValueRollback restoring(m_isRestoringState, true);
    launchAtLogin.set(m_loginItem.status() == LoginItemStatus::Enabled);
}

} // namespace wrenfold
