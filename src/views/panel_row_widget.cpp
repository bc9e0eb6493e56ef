// SPDX-License-Identifier: MIT
#include "views/panel_row_widget.h"

#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/painting.h"
#include "look/theme.h"
#include "views/row_accessibility.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace wrenfold {

PanelRowWidget::PanelRowWidget(QWidget *parent)
    : QWidget(parent)
{
    installRowAccessibility();
    // Rows are reached with the arrow keys; the list as a whole is one stop of the Tab key. Not by Qt's ClickFocus
    // either: that would come from the buttons inside as well, and take the caret from where the user types.
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
}

void PanelRowWidget::setRow(const PanelRow &row)
{
    if (row == m_row)
        return;
    const PanelRow previous = std::exchange(m_row, row);
    rowChanged(previous);
    update();
}

int PanelRowWidget::placeCheck(QWidget *check, int left)
{
    constexpr int margin = (Metrics::checkHitSize - Metrics::checkSize) / 2;
    check->setGeometry(left - margin, (height() - Metrics::checkHitSize) / 2, Metrics::checkHitSize,
                       Metrics::checkHitSize);
    return left + Metrics::checkSize + Metrics::rowSpacing;
}

CheckCircle *PanelRowWidget::addCheck(const QString &help, std::function<void()> toggle)
{
    auto *check = new CheckCircle(help, this);
    check->setFocusPolicy(Qt::NoFocus);
    connect(check, &CheckCircle::clicked, this, [this, check, toggle = std::move(toggle)] {
        toggle();
        // The click turned it over. If the task comes back as it was, nothing would turn it back.
        check->setChecked(m_row.task.isDone);
    });
    return check;
}

IconButton *PanelRowWidget::addButton(const QString &symbol, const QString &help,
                                      const std::function<void()> &action)
{
    auto *button = new IconButton(symbol, help, this);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &IconButton::clicked, this, action);
    return button;
}

int PanelRowWidget::placeTrailing(std::initializer_list<QWidget *> buttons)
{
    constexpr int size = Metrics::iconButtonSize;
    int left = width() - Metrics::rowRightPadding;
    for (QWidget *button : buttons) {
        if (!button || button->isHidden())
            continue;
        left -= size;
        button->setGeometry(left, (height() - size) / 2, size, size);
    }
    return left;
}

void PanelRowWidget::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    m_isHovered = true;
    engagementChanged();
    update();
}

void PanelRowWidget::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    m_isHovered = false;
    engagementChanged();
    update();
}

void PanelRowWidget::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    m_keyboardFocus.arrived(event->reason());
    engagementChanged();
    update();
}

void PanelRowWidget::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    engagementChanged();
    update();
}

void PanelRowWidget::keyPressEvent(QKeyEvent *event)
{
    // With modifiers the keys mean other things, Ctrl+Space an input method for one. A key held down acts once: the
    // next row would be acted on next.
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    // After a click the focus is not seen, so that a key that acted on it would surprise. What a field inside the row
    // has left over is meant for the row.
    const bool isMeant = showsFocusRing() || !hasFocus();
    const bool isHandled = isMeant && isPlain && !event->isAutoRepeat() && actOnKey(event->key());
    event->setAccepted(isHandled);
}

void PanelRowWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    // Put away under the pointer, it hears of no leaving when a button is held.
    m_isHovered = false;
    engagementChanged();
}

void PanelRowWidget::mousePressEvent(QMouseEvent *)
{
    // Taken here, so that a press on a row is not one on what lies behind it.
    if (m_row.takesFocus())
        setFocus(Qt::MouseFocusReason);
}

void PanelRowWidget::paintEvent(QPaintEvent *)
{
    if (!m_row.takesFocus())
        return;
    const Theme &theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (m_row.isActive)
        painter.setBrush(theme.accentSoft);
    else if (isEngaged())
        painter.setBrush(theme.hover);
    painter.drawRoundedRect(rect(), Metrics::rowRadius, Metrics::rowRadius);
    if (showsFocusRing())
        Painting::focusRing(painter, rect(), Metrics::rowRadius);
}

} // namespace wrenfold
