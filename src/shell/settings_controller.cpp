// SPDX-License-Identifier: MIT
#include "shell/settings_controller.h"

#include "look/theme.h"
#include "platform/panel_window.h"
#include "views/settings_view.h"

#include <QWindow>

namespace wrenfold {

SettingsController::SettingsController(FocusStore &store, Clock &clock, PanelWindow &ability,
                                       InstalledApplications &applications, const Actions &actions)
    : m_store(store)
    , m_clock(clock)
    , m_ability(ability)
    , m_applications(applications)
    , m_actions(actions)
{
}

void SettingsController::show()
{
    if (!m_window)
        makeWindow();
    m_window->comeToFront();
}

void SettingsController::makeWindow()
{
    m_window = std::make_unique<UtilityWindow>(QStringLiteral("Wrenfold Settings"),
                                               QSize(Metrics::settingsWidth, Metrics::settingsHeight));
    m_window->setContent(new SettingsView(m_store, m_clock, m_applications));
    QObject::connect(m_window.get(), &UtilityWindow::aboutToComeToFront, m_window.get(),
                     [this](QWindow *window) { m_ability.accompany(*window, CompanionKind::Ordinary); });
    m_actions.windowMade(*m_window);
}

} // namespace wrenfold
