// SPDX-License-Identifier: MIT
#include "shell/panel_controller.h"

#include "app/debug_log.h"
#include "views/focus_panel_view.h"

#include <QGuiApplication>
#include <QScreen>

namespace wrenfold {

PanelController::PanelController(FocusStore &store, Clock &clock, PanelWindow &ability,
                                 const Actions &actions)
    : m_panel(ability)
{
    auto *view =
        new FocusPanelView(store, clock, {[this] { hide(); }, [this] { showAndPin(); }, actions.showAppMenu});
    view->setRoundedByPainting(m_panel.isTranslucent());
    m_panel.setContent(view);
    view->setFocus();
    centreOnScreen();
}

void PanelController::centreOnScreen()
{
    QRect frame = m_panel.frameGeometry();
    frame.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    m_panel.move(frame.topLeft());
}

void PanelController::showAndPin()
{
    m_panel.show();
    m_panel.raise();
    m_panel.activateWindow();
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::ui) << "panel shown";
}

void PanelController::hide()
{
    m_panel.hide();
    if (DebugLog::isVerbose())
        qCDebug(DebugLog::ui) << "panel hidden";
}

} // namespace wrenfold
