// SPDX-License-Identifier: MIT
#include "views/task_row.h"

#include "look/check_circle.h"
#include "look/icon_button.h"
#include "look/text_label.h"
#include "views/editable_label.h"
#include "views/row_menu.h"

#include <QContextMenuEvent>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QMenu>

namespace wrenfold {

namespace {

QString splitHelp()
{
    return QStringLiteral("AIでサブタスクに分割");
}

} // namespace

TaskRow::TaskRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_check(addCheck({}, [this] { m_actions.toggleDone(row().task); }))
    , m_title(new EditableLabel(QStringLiteral("名前を変更"), this))
    , m_pin(addButton(QStringLiteral("pin"), {}, [this] { m_actions.setActive(row().task); }))
{
    m_title->label()->setClickable(true);
    m_title->label()->setFocusPolicy(Qt::NoFocus);
    connect(m_title, &EditableLabel::clicked, this, &TaskRow::activateOrRename);
    connect(m_title, &EditableLabel::edited, this,
            [this](const QString &text) { m_actions.updateTitle(row().task, text); });
    connect(m_title, &EditableLabel::closedByKey, this, [this] { setFocus(Qt::TabFocusReason); });
}

void TaskRow::rename()
{
    m_title->beginEditing();
}

void TaskRow::activateOrRename()
{
    if (row().isActive)
        return rename();
    setFocus(Qt::MouseFocusReason); // As a press beside the title does: what is being edited elsewhere ends.
    m_actions.setActive(row().task);
}

void TaskRow::rowChanged(const PanelRow &previous)
{
    const TaskItem &task = row().task;
    if (previous.identity() != row().identity())
        m_title->cancelEditing(); // What is half typed belongs to the task that has gone.
    setAccessibleName(task.title);
    m_check->setHelp(task.isDone ? QStringLiteral("未完了に戻す") : QStringLiteral("完了"));
    m_check->setChecked(task.isDone);
    m_check->setNow(row().isActive);

    updateTitle();
    m_pin->setSymbol(row().isActive ? QStringLiteral("pin.fill") : QStringLiteral("pin"));
    m_pin->setTint(row().isActive ? &Theme::accent : &Theme::secondaryInk);
    m_pin->setHelp(row().isActive ? QStringLiteral("NOWにピン留め中") : QStringLiteral("NOWにピン留め"));
    updateChevron();
    updateNumber();
    if (previous.identity() != row().identity() || previous.canSplit != row().canSplit)
        engagementChanged();
    updateHandle();
    if (previous.isDragging != row().isDragging) {
        auto *faint = row().isDragging ? new QGraphicsOpacityEffect : nullptr;
        if (faint)
            faint->setOpacity(Metrics::draggedOpacity);
        setGraphicsEffect(faint); // What is under the pointer is the preview.
    }
    placeChildren();
}

void TaskRow::updateTitle()
{
    const TaskItem &task = row().task;
    m_title->setText(task.title);
    TextLabel *label = m_title->label();
    label->setFont(row().isSubtask ? Fonts::subtask() : Fonts::body());
    label->setColor(task.isDone ? &Theme::tertiaryInk : &Theme::ink);
    label->setStruckOut(task.isDone);
    label->setHelp(row().isActive || task.isDone ? QString() : QStringLiteral("クリックでNOWにピン留め"));
}

void TaskRow::updateChevron()
{
    const bool isShown = row().childCount > 0;
    if (!m_chevron && !isShown)
        return;
    if (!m_chevron)
        m_chevron = addButton({}, {}, [this] { m_actions.toggleExpanded(row().task); });
    m_chevron->setVisible(isShown);
    m_chevron->setSymbol(row().isExpanded ? QStringLiteral("chevron.down") : QStringLiteral("chevron.right"));
    m_chevron->setHelp(row().isExpanded ? QStringLiteral("サブタスクを閉じる")
                                        : QStringLiteral("サブタスクを表示"));
}

void TaskRow::updateNumber()
{
    if (!m_number && !row().isSubtask)
        return;
    if (!m_number) {
        m_number = new TextLabel({}, this);
        m_number->setFont(Fonts::tiny());
        m_number->setColor(&Theme::tertiaryInk);
    }
    m_number->setVisible(row().isSubtask);
    m_number->setText(QStringLiteral("%1/%2").arg(row().subtaskNumber).arg(row().subtaskTotal));
}

void TaskRow::engagementChanged()
{
    if (isEngaged() && !m_addSubtask)
        makeActionButtons();
    if (m_addSubtask) {
        m_addSubtask->setVisible(isEngaged());
        m_split->setVisible(isEngaged());
        m_split->setEnabled(row().canSplit);
        m_delete->setVisible(isEngaged());
    }
    updateHandle();
    placeChildren();
}

void TaskRow::updateHandle()
{
    const bool isShown = row().task.isTopLevel() && row().task.isOpen() &&
                         (isEngaged() || row().isReorderHinted || row().isDragging);
    if (!m_handle && !isShown)
        return;
    if (!m_handle) {
        m_handle = addButton(QStringLiteral("line.3.horizontal"), {},
                             [this] { openMenu(mapToGlobal(m_handle->geometry().bottomLeft())); });
        m_handle->setCursor(Qt::OpenHandCursor);
    }
    m_handle->setVisible(isShown);
    m_handle->setTint(row().isReorderHinted ? &Theme::accent : &Theme::tertiaryInk);
    m_handle->setHelp(row().isReorderHinted
                          ? QStringLiteral("TODOをドラッグして並べ替え、またはあとでやるへ分類")
                          : QStringLiteral("ドラッグして並べ替え／あとでやるへ分類"));
}

bool TaskRow::isHandle(const QWidget &child) const
{
    return &child == m_handle;
}

void TaskRow::makeActionButtons()
{
    m_addSubtask =
        addButton(QStringLiteral("plus.rectangle.on.folder"), QStringLiteral("サブタスクを手動追加"),
                  [this] { m_actions.addSubtask(row().task); });
    m_split = addButton(QStringLiteral("list.bullet.indent"), splitHelp(),
                        [this] { m_actions.splitTask(row().task); });
    m_delete = addButton(QStringLiteral("trash"), deleteHelp(), [this] { m_actions.deleteTask(row().task); });
}

void TaskRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    placeChildren();
}

void TaskRow::placeChildren()
{
    int x = row().isSubtask ? Metrics::subtaskIndent : Metrics::rowLeftPadding;
    const bool isLeadTaken = m_chevron && !m_chevron->isHidden();
    if (!row().isSubtask) {
        if (m_chevron)
            placeCheck(m_chevron, x);
        if (m_handle && !isLeadTaken)
            placeCheck(m_handle, x);
        x += Metrics::rowLeadWidth + Metrics::rowSpacing;
    }
    x = placeCheck(m_check, x);
    if (row().isSubtask) {
        const int width = m_number->sizeHint().width();
        m_number->setGeometry(x, 0, width, height());
        x += width + Metrics::rowSpacing;
    }
    m_pin->setVisible(row().isActive || (isEngaged() && !row().task.isDone));
    const int right =
        placeTrailing({m_pin, m_delete, m_split, m_addSubtask, isLeadTaken ? m_handle : nullptr});
    m_title->setGeometry(x, 0, right - Metrics::rowSpacing - x, height());
}

bool TaskRow::actOnKey(int key)
{
    const TaskItem task = row().task;
    switch (key) {
    case Qt::Key_Space:
        m_actions.toggleDone(task);
        return true;
    case Qt::Key_P:
        m_actions.setActive(task);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        rename();
        return true;
    case Qt::Key_Insert:
        m_actions.addSubtask(task);
        return true;
    case Qt::Key_Delete:
        m_actions.deleteTask(task);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (row().childCount > 0 && row().isExpanded == (key == Qt::Key_Left))
            m_actions.toggleExpanded(task);
        return true;
    default:
        return false;
    }
}

void TaskRow::keyPressEvent(QKeyEvent *event)
{
    const bool isUp = event->key() == Qt::Key_Up;
    const bool isArrow = isUp || event->key() == Qt::Key_Down;
    const bool isMove =
        isArrow && showsFocusRing() && (event->modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier;
    if (!isMove)
        return PanelRowWidget::keyPressEvent(event);
    if (!row().isSubtask)
        m_actions.moveBy(row().task, isUp ? -1 : 1);
}

void TaskRow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    fillMenu(*menu);
    showRowMenu(menu, *this, *event);
}

void TaskRow::openMenu(const QPoint &position)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, mapFromGlobal(position), position);
    contextMenuEvent(&event);
}

void TaskRow::fillMenu(QMenu &menu)
{
    const TaskItem task = row().task;
    menu.addAction(m_check->help(), [this, task] { m_actions.toggleDone(task); });
    menu.addAction(m_pin->help(), [this, task] { m_actions.setActive(task); })
        ->setEnabled(!row().isActive && !task.isDone);
    menu.addAction(QStringLiteral("名前を変更"), [this, task] {
        if (row().task.id == task.id) // The list may have changed under the open menu.
            rename();
    });
    menu.addAction(QStringLiteral("サブタスクを追加"), [this, task] { m_actions.addSubtask(task); });
    menu.addAction(splitHelp(), [this, task] { m_actions.splitTask(task); })->setEnabled(row().canSplit);
    if (!row().isSubtask) {
        QMenu *later = menu.addMenu(QStringLiteral("あとでやる"));
        addQuadrantEntries(*later, std::nullopt,
                           [this, task](TaskQuadrant quadrant) { m_actions.deferTask(task, quadrant); });
    }
    menu.addSeparator();
    menu.addAction(deleteHelp(), [this, task] { m_actions.deleteTask(task); });
}

} // namespace wrenfold
