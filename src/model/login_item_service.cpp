// SPDX-License-Identifier: MIT
#include "model/login_item_service.h"

#include "app/debug_log.h"

namespace wrenfold {

LoginItem::Error LoginItemService::setEnabled(LoginItem &item, bool isEnabled)
{
    if (isEnabled && item.status() == LoginItemStatus::Enabled) {
        qCInfo(DebugLog::login) << "already enabled";
        return std::nullopt;
    }
    const LoginItem::Error error = isEnabled ? item.registerProgram() : item.unregisterProgram();
    if (error)
        qCWarning(DebugLog::login).noquote() << QStringLiteral("login item failed: ") + *error;
    else
        qCInfo(DebugLog::login) << (isEnabled ? "registered for login" : "unregistered from login");
    return error;
}

QString LoginItemService::statusText(LoginItemStatus status)
{
    switch (status) {
    case LoginItemStatus::NotRegistered:
        return QStringLiteral("未登録");
    case LoginItemStatus::Enabled:
        return QStringLiteral("有効");
    case LoginItemStatus::RequiresApproval:
        return QStringLiteral("システム設定での承認が必要");
    case LoginItemStatus::NotFound:
        return QStringLiteral("未検出（/Applications にインストール推奨）");
    }
    return QStringLiteral("不明");
}

} // namespace wrenfold
