// SPDX-License-Identifier: MIT
#include "platform/linux/wlroots_frontmost_application.h"

#include "app/application_id.h"
#include "app/debug_log.h"
#include "platform/linux/sway_ipc.h"

#include <QTimer>

#include <utility>

namespace wrenfold {
namespace {

constexpr std::chrono::milliseconds answerPatience{500};
constexpr std::chrono::milliseconds minimizePatience{300};

/// Whose window it is. For an X11 window the app_id is either part of WM_CLASS, as the compositor likes.
RunningApplication applicationOf(const QString &appID, const DesktopEntries &entries)
{
    if (isOwnWindowName(appID))
        return {applicationID(), std::nullopt};
    WindowIdentity window;
    window.windowClass = appID;
    window.windowInstance = appID;
    return entries.application(window);
}

} // namespace

std::unique_ptr<WlrootsFrontmostApplication>
WlrootsFrontmostApplication::connectIfOffered(InstalledApplications &installed)
{
    if (!ForeignToplevels::isOffered(answerPatience))
        return nullptr;
    return std::unique_ptr<WlrootsFrontmostApplication>(new WlrootsFrontmostApplication(installed));
}

WlrootsFrontmostApplication::WlrootsFrontmostApplication(InstalledApplications &installed)
    : m_installed(installed)
{
    connect(&m_installed, &InstalledApplications::loaded, this, &WlrootsFrontmostApplication::identify);
}

Availability WlrootsFrontmostApplication::availability() const
{
    if (m_isCompositorGone) {
        return {Availability::Level::NotAvailable,
                QStringLiteral("The compositor has stopped telling which window is active.")};
    }
    if (m_cannotHide)
        return {Availability::Level::Limited,
                QStringLiteral("The compositor does not minimise other programs' windows.")};
    return {};
}

void WlrootsFrontmostApplication::start()
{
    if (m_toplevels)
        return;
    m_toplevels = ForeignToplevels::follow();
    m_isCompositorGone = !m_toplevels;
    if (!m_toplevels)
        return;
    connect(m_toplevels.get(), &ForeignToplevels::changed, this, &WlrootsFrontmostApplication::follow);
    // Queued: the connection is not to be deleted while it is at work.
    connect(m_toplevels.get(), &ForeignToplevels::gone, this,
            &WlrootsFrontmostApplication::leaveGoneCompositor, Qt::QueuedConnection);
    m_installed.refresh();
}

void WlrootsFrontmostApplication::stop()
{
    m_toplevels.reset();
    m_current.reset();
}

void WlrootsFrontmostApplication::follow()
{
    m_installed.refresh(); // The window's program may just have been installed.
    identify();
}

void WlrootsFrontmostApplication::identify()
{
    const std::optional<QString> appID = m_toplevels ? m_toplevels->activeAppID() : std::nullopt;
    m_current.reset();
    if (appID && !appID->isEmpty() && m_installed.isLoaded())
        m_current = applicationOf(*appID, m_installed.entries());
}

void WlrootsFrontmostApplication::leaveGoneCompositor()
{
    // It may have been stopped, and started anew, before this was called.
    if (!m_toplevels || !m_toplevels->isGone())
        return;
    stop();
    m_isCompositorGone = true;
}

void WlrootsFrontmostApplication::keepInFront()
{
    constexpr auto comingIntoSight = std::chrono::seconds(1);
    if (m_toplevels)
        m_toplevels->keepActive(isOwnWindowName, comingIntoSight);
}

void WlrootsFrontmostApplication::hide(const RunningApplication &application)
{
    if (!m_toplevels || application.bundleIdentifier == applicationID())
        return;
    const auto isOfApplication = [application, entries = m_installed.entries()](const QString &appID) {
        return applicationOf(appID, entries) == application;
    };
    if (!m_toplevels->isAnyShown(isOfApplication))
        return; // What is opened within the patience is not meant.
    m_toplevels->minimize(isOfApplication);
    // sway knows no minimising and keeps quiet about it. Forgotten when the connection goes.
    QTimer::singleShot(minimizePatience, m_toplevels.get(), [this, isOfApplication] {
        if (!m_toplevels->isAnyShown(isOfApplication))
            return;
        const QString sway = qEnvironmentVariable("SWAYSOCK");
        if (!sway.isEmpty()) {
            SwayScratchpad::moveWindows(sway, isOfApplication, m_toplevels.get());
        } else if (!std::exchange(m_cannotHide, true)) {
            qCWarning(DebugLog::guard) << "the compositor does not minimise other programs' windows";
        }
    });
}

} // namespace wrenfold
