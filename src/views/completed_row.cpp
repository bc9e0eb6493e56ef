// SPDX-License-Identifier: MIT
#include "views/completed_row.h"

#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/text_label.h"
#include "views/row_menu.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace wrenfold {

CompletedRow::CompletedRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_check(addCheck(QStringLiteral("未完了に戻す"), [this] { m_actions.restore(row().task); }))
    , m_title(new TextLabel({}, this))
{
    m_title->setFont(Fonts::body());
    m_title->setColor(&Theme::tertiaryInk);
    m_title->setStruckOut(true);
}

void CompletedRow::rowChanged(const PanelRow &)
{
    setAccessibleName(row().task.title);
    m_check->setChecked(row().task.isDone);
    m_title->setText(row().task.title);
}

void CompletedRow::engagementChanged()
{
    if (isEngaged() && !m_delete) {
        m_delete =
            addButton(QStringLiteral("trash"), deleteHelp(), [this] { m_actions.deleteTask(row().task); });
    }
    if (m_delete)
        m_delete->setVisible(isEngaged());
    placeChildren();
}

void CompletedRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    placeChildren();
}

void CompletedRow::placeChildren()
{
    const int left =
        placeCheck(m_check, Metrics::rowLeftPadding + Metrics::rowLeadWidth + Metrics::rowSpacing);
    const int right = placeTrailing({m_delete});
    m_title->setGeometry(left, 0, right - Metrics::rowSpacing - left, height());
}

bool CompletedRow::actOnKey(int key)
{
    const TaskItem task = row().task;
    switch (key) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_actions.restore(task);
        return true;
    case Qt::Key_Delete:
        m_actions.deleteTask(task);
        return true;
    default:
        return false;
    }
}

void CompletedRow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    const TaskItem task = row().task;
    menu->addAction(m_check->help(), [this, task] { m_actions.restore(task); });
    menu->addSeparator();
    menu->addAction(deleteHelp(), [this, task] { m_actions.deleteTask(task); });
    showRowMenu(menu, *this, *event);
}

} // namespace wrenfold
