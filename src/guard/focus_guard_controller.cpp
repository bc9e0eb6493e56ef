// SPDX-License-Identifier: MIT
#include "guard/focus_guard_controller.h"

#include "app/application_id.h"
#include "app/debug_log.h"
#include "guard/blocked_app_match.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"
#include "platform/clock.h"
#include "platform/sounds.h"

namespace wrenfold {

FocusGuardController::FocusGuardController(FocusStore &store, const Services &services,
                                           const Actions &actions)
    : m_store(store)
    , m_services(services)
    , m_actions(actions)
{
    m_subscription = m_store.isFocusGuardEnabled.onChange([this](bool isEnabled) {
        if (isEnabled)
            start();
        else
            stop();
    });
    if (m_store.isFocusGuardEnabled.value())
        start();
}

FocusGuardController::~FocusGuardController()
{
    m_services.frontmostApplication.stop();
}

void FocusGuardController::start()
{
    constexpr auto interval = std::chrono::milliseconds(800);
    m_services.frontmostApplication.start();
    m_timer = m_services.clock.every(interval, [this] { checkFrontmostApplication(); });
    qCInfo(DebugLog::guard) << "guard started";
    checkFrontmostApplication();
}

void FocusGuardController::stop()
{
    m_timer.reset();
    m_services.frontmostApplication.stop();
    m_warning.clear();
    qCInfo(DebugLog::guard) << "guard stopped";
}

void FocusGuardController::checkFrontmostApplication()
{
    const std::optional<RunningApplication> blocked = blockedApplication();
    std::optional<GuardedApplication> guarded;
    if (blocked)
        guarded.emplace(*blocked);
    switch (m_warning.check(guarded, m_services.clock.now())) {
    case GuardStep::None:
        break;
    case GuardStep::Warn:
        warn(*guarded);
        break;
    case GuardStep::Hide:
        hide(*blocked);
        break;
    case GuardStep::Clear:
        if (DebugLog::isVerbose())
            qCDebug(DebugLog::guard) << "left blocked app — clear warning";
        break;
    }
}

std::optional<RunningApplication> FocusGuardController::blockedApplication() const
{
    const std::optional<RunningApplication> application = m_services.frontmostApplication.current();
    if (!m_store.isFocusGuardEnabled.value() || !application ||
        application->bundleIdentifier == applicationID() ||
        !isBlocked(*application, m_store.blockedApps.value()))
        return std::nullopt;
    return application;
}

void FocusGuardController::warn(const GuardedApplication &application)
{
    m_store.setSortStatus(application.warningStatus());
    m_services.sounds.play(Sound::Tink);
    m_actions.raisePanel();
    qCInfo(DebugLog::guard).noquote()
        << QStringLiteral("stage1 warn app=%1 id=%2").arg(application.displayName, application.key);
}

void FocusGuardController::hide(const RunningApplication &application)
{
    const GuardedApplication guarded(application);
    m_services.frontmostApplication.hide(application);
    m_services.sounds.play(Sound::Funk);
    m_store.setSortStatus(guarded.blockedStatus());
    m_actions.showPanel();
    m_services.notifier.notify(
        {QStringLiteral("wrenfold.guard.block"), QStringLiteral("Focus Guard"), guarded.notificationBody()});
    qCInfo(DebugLog::guard).noquote()
        << QStringLiteral("stage2 hide app=%1 id=%2").arg(guarded.displayName, guarded.key);
}

} // namespace wrenfold
