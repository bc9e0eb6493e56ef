// SPDX-License-Identifier: MIT
#include "views/deferred_task_row.h"

#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/painting.h"
#include "look/text_label.h"
#include "views/row_menu.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

bool isUrgent(TaskQuadrant quadrant)
{
    return quadrant == TaskQuadrant::urgentImportant || quadrant == TaskQuadrant::urgentNotImportant;
}

QString markOf(TaskQuadrant quadrant)
{
    return isUrgent(quadrant) ? QStringLiteral("exclamationmark.triangle.fill")
                              : QStringLiteral("square.grid.2x2");
}

} // namespace

DeferredTaskRow::DeferredTaskRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_check(addCheck(QStringLiteral("完了"), [this] { m_actions.toggleDone(row().task); }))
    , m_title(new TextLabel({}, this))
    , m_subtasks(new TextLabel({}, this))
{
    m_title->setFont(Fonts::body());
    m_subtasks->setFont(Fonts::tiny());
    m_subtasks->setColor(&Theme::tertiaryInk);
}

void DeferredTaskRow::rowChanged(const PanelRow &)
{
    const TaskItem &task = row().task;
    setAccessibleName(task.title);
    setAccessibleDescription(label(task.quadrant));
    m_check->setChecked(task.isDone);
    m_title->setText(task.title);
    m_subtasks->setText(QStringLiteral("サブタスク %1件も一緒に保留中").arg(row().childCount));
    m_subtasks->setVisible(row().childCount > 0);
    placeChildren();
}

void DeferredTaskRow::engagementChanged()
{
    if (isEngaged() && !m_restore)
        makeActionButtons();
    if (m_restore) {
        for (IconButton *button : {m_restore, m_quadrant, m_delete})
            button->setVisible(isEngaged());
    }
    placeChildren();
}

void DeferredTaskRow::makeActionButtons()
{
    m_restore = addButton(QStringLiteral("arrow.uturn.backward"), QStringLiteral("TODOに戻す"),
                          [this] { m_actions.restore(row().task); });
    m_quadrant = addButton(QStringLiteral("square.grid.2x2"), QStringLiteral("4象限を変更"),
                           [this] { showQuadrantMenu(); });
    m_delete = addButton(QStringLiteral("trash"), deleteHelp(), [this] { m_actions.deleteTask(row().task); });
}

void DeferredTaskRow::showQuadrantMenu()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const TaskItem task = row().task;
    addQuadrantEntries(*menu, task.quadrant,
                       [this, task](TaskQuadrant quadrant) { m_actions.setQuadrant(task, quadrant); });
    menu->popup(m_quadrant->mapToGlobal(QPoint(0, m_quadrant->height())));
}

void DeferredTaskRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    placeChildren();
}

void DeferredTaskRow::placeChildren()
{
    const int left =
        placeCheck(m_check, Metrics::rowLeftPadding + Metrics::rowLeadWidth + Metrics::rowSpacing);
    const int right = placeTrailing({m_delete, m_quadrant, m_restore});
    const int textWidth = right - Metrics::rowSpacing - left;
    // With subtasks waiting, the row has two lines.
    constexpr int titleHeightOfTwo = 24;
    m_title->setGeometry(left, 0, textWidth, row().childCount > 0 ? titleHeightOfTwo : height());
    const QSize subtasksSize = m_subtasks->sizeHint();
    m_subtasks->setGeometry(left, titleHeightOfTwo - 2, std::min(textWidth, subtasksSize.width()),
                            subtasksSize.height());
}

bool DeferredTaskRow::actOnKey(int key)
{
    const TaskItem task = row().task;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_actions.restore(task);
        return true;
    case Qt::Key_Space:
        m_actions.toggleDone(task);
        return true;
    case Qt::Key_Delete:
        m_actions.deleteTask(task);
        return true;
    default:
        return false;
    }
}

void DeferredTaskRow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    const TaskItem task = row().task;
    menu->addAction(QStringLiteral("TODOに戻す"), [this, task] { m_actions.restore(task); });
    menu->addAction(QStringLiteral("完了"), [this, task] { m_actions.toggleDone(task); });
    menu->addSeparator();
    addQuadrantEntries(*menu, task.quadrant,
                       [this, task](TaskQuadrant quadrant) { m_actions.setQuadrant(task, quadrant); });
    menu->addSeparator();
    menu->addAction(deleteHelp(), [this, task] { m_actions.deleteTask(task); });
    showRowMenu(menu, *this, *event);
}

void DeferredTaskRow::paintEvent(QPaintEvent *event)
{
    PanelRowWidget::paintEvent(event);
    QPainter painter(this);
    const Theme &theme = Theme::current();
    const TaskQuadrant quadrant = row().task.quadrant;
    Painting::symbol(painter, QRectF(Metrics::rowLeftPadding, 0, Metrics::rowLeadWidth, height()),
                     markOf(quadrant), theme.*Theme::quadrants()[std::size_t(quadrant)]);
}

} // namespace wrenfold
