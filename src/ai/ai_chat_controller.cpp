// SPDX-License-Identifier: MIT
#include "ai/ai_chat_controller.h"

#include "ai/ai_chat_view.h"
#include "look/theme.h"
#include "platform/panel_window.h"

#include <QWindow>

namespace wrenfold {

AIChatController::AIChatController(FocusStore &store, PanelWindow &ability)
    : m_window(QStringLiteral("Wrenfold AI"), {Metrics::chatWidth, Metrics::chatHeight})
    , m_view(new AIChatView(store))
{
    m_window.setContent(m_view);
    QObject::connect(&m_window, &UtilityWindow::aboutToComeToFront, &m_window,
                     [&ability](QWindow *window) { ability.accompany(*window, CompanionKind::Floating); });
}

void AIChatController::show()
{
    m_window.comeToFront();
    m_view->focusComposer();
}

} // namespace wrenfold
