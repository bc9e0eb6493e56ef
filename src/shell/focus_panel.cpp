// SPDX-License-Identifier: MIT
#include "shell/focus_panel.h"

#include "look/theme.h"
#include "platform/panel_window.h"

#include <QCloseEvent>
#include <QPainterPath>
#include <QWindow>

namespace wrenfold {

FocusPanel::FocusPanel(PanelWindow &ability)
    : QWidget(nullptr, ability.flags())
    , m_ability(ability)
{
    setWindowTitle(QStringLiteral("Wren Fold"));
    setAttribute(Qt::WA_TranslucentBackground, ability.isTranslucencyAvailable());
    setMinimumSize(344, 250);
    setMaximumSize(760, 760);
    resize(344, 500);
}

void FocusPanel::setContent(QWidget *content)
{
    m_content = content;
    m_content->setParent(this);
    m_content->setGeometry(rect());
}

void FocusPanel::showWithoutFocus()
{
    // Qt looks at its own attribute WA_ShowWithoutActivating only when it makes the native window.
    constexpr auto withoutActivating = "_q_showWithoutActivating";
    (void)winId(); // There is a native window from here on.
    windowHandle()->setProperty(withoutActivating, true);
    // Not raised: xfwm4 gives a window that asks for it the keyboard. It is kept above others anyway.
    show();
    windowHandle()->setProperty(withoutActivating, false);
}

void FocusPanel::closeEvent(QCloseEvent *event)
{
    // The program goes on without its panel; only quitting ends it.
    event->ignore();
    hide();
}

void FocusPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_ability.joinAllWorkspaces(*windowHandle());
}

void FocusPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_content)
        m_content->setGeometry(rect());
    if (!isTranslucent()) {
        QPainterPath outline;
        outline.addRoundedRect(rect(), Metrics::panelRadius, Metrics::panelRadius);
        setMask(QRegion(outline.toFillPolygon().toPolygon()));
    }
}

} // namespace wrenfold
