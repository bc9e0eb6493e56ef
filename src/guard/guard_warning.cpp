// SPDX-License-Identifier: MIT
#include "guard/guard_warning.h"

namespace wrenfold {

GuardedApplication::GuardedApplication(const RunningApplication &application)
    : key(application.bundleIdentifier.value_or(
          application.localizedName.value_or(QStringLiteral("unknown"))))
    , displayName(application.localizedName.value_or(key))
{
}

QString GuardedApplication::warningStatus() const
{
    return QStringLiteral("⚠️ Focus Guard: ") + displayName + QStringLiteral(" を検知（続けないで）");
}

QString GuardedApplication::blockedStatus() const
{
    return QStringLiteral("🛡 ") + displayName + QStringLiteral(" をブロックしました");
}

QString GuardedApplication::notificationBody() const
{
    return displayName + QStringLiteral(" をブロックしました — NOW に戻りましょう");
}

GuardStep GuardWarning::check(const std::optional<GuardedApplication> &blocked, const QDateTime &now)
{
    if (!blocked) {
        const bool wasPending = m_warnedKey.has_value();
        clear();
        return wasPending ? GuardStep::Clear : GuardStep::None;
    }
    if (m_warnedKey != blocked->key) {
        m_warnedKey = blocked->key;
        m_warningStartedAt = now;
        return GuardStep::Warn;
    }
    const qint64 passed = m_warningStartedAt ? m_warningStartedAt->msecsTo(now) : 0;
    if (passed < 0)
        m_warningStartedAt = now; // The clock was set back; nobody is to get hours for that.
    if (passed < graceInterval.count())
        return GuardStep::None;
    m_warningStartedAt = now;
    return GuardStep::Hide;
}

void GuardWarning::clear()
{
    m_warnedKey.reset();
    m_warningStartedAt.reset();
}

} // namespace wrenfold
