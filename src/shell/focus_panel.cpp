// SPDX-License-Identifier: MIT
#include "shell/focus_panel.h"

#include "look/bring_to_front.h"
#include "look/theme.h"
#include "platform/panel_window.h"
#include "shell/panel_geometry.h"
#include "shell/resize_handle.h"

#include <QCloseEvent>
#include <QPainterPath>
#include <QWindow>

#include <utility>

namespace wrenfold {

FocusPanel::FocusPanel(PanelWindow &ability)
    : QWidget(nullptr, ability.flags())
    , m_ability(ability)
{
    setWindowTitle(QStringLiteral("Wren Fold"));
    // Once and for all: a native window cannot become one that can be seen through.
    setAttribute(Qt::WA_TranslucentBackground);
    setMinimumSize(PanelSize::leastWidth, PanelSize::leastHeight);
    setMaximumSize(PanelSize::mostWidth, PanelSize::mostHeight);
    for (const Qt::Edges edges :
         {Qt::Edges(Qt::TopEdge), Qt::Edges(Qt::BottomEdge), Qt::Edges(Qt::LeftEdge),
          Qt::Edges(Qt::RightEdge), Qt::TopEdge | Qt::LeftEdge, Qt::TopEdge | Qt::RightEdge,
          Qt::BottomEdge | Qt::LeftEdge, Qt::BottomEdge | Qt::RightEdge})
        m_resizeHandles.append(new ResizeHandle(edges, this));
    resize(PanelSize::compactWidth, PanelSize::fullHeight);
}

void FocusPanel::setContent(QWidget *content)
{
    m_content = content;
    m_content->setParent(this);
    m_content->setGeometry(rect());
    m_content->lower(); // The handles lie above it.
}

bool FocusPanel::isInSight() const
{
    // To Qt a window that the desktop has put away is still visible, but no longer exposed.
    return isVisible() && windowHandle()->isExposed();
}

void FocusPanel::comeToFront()
{
    if (isVisible() && !isInSight())
        m_ability.bringBack(*windowHandle());
    bringToFront(*this);
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

void FocusPanel::setLevel(PanelLevel level)
{
    m_level = level;
    if (isVisible())
        m_ability.pin(*windowHandle(), m_level);
}

void FocusPanel::setClickThrough(bool isClickThrough)
{
    m_isClickThrough = isClickThrough;
    if (windowHandle())
        windowHandle()->setFlag(Qt::WindowTransparentForInput, isClickThrough);
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
    windowHandle()->setFlag(Qt::WindowTransparentForInput, m_isClickThrough);
    m_ability.pin(*windowHandle(), m_level);
}

void FocusPanel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_content)
        m_content->setGeometry(rect());
    for (ResizeHandle *handle : std::as_const(m_resizeHandles))
        handle->place();
    cutCorners();
}

void FocusPanel::setTranslucent(bool isTranslucent)
{
    m_isTranslucent = isTranslucent;
    cutCorners();
}

void FocusPanel::cutCorners()
{
    if (m_isTranslucent) {
        clearMask();
        return;
    }
    QPainterPath outline;
    outline.addRoundedRect(rect(), Metrics::panelRadius, Metrics::panelRadius);
    setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

} // namespace wrenfold
