// SPDX-License-Identifier: MIT
#include "views/subtask_composer_row.h"

#include "look/painting.h"
#include "look/text_field.h"

#include <QFocusEvent>
#include <QPainter>

namespace wrenfold {

SubtaskComposerRow::SubtaskComposerRow(const Actions &actions, QWidget *parent)
    : PanelRowWidget(parent)
    , m_actions(actions)
    , m_field(new TextField(QStringLiteral("サブタスクを追加"), this))
{
    m_field->setFont(Fonts::subtask());
    m_field->setFocusPolicy(Qt::ClickFocus);
    m_field->installEventFilter(this);
    connect(m_field, &QLineEdit::returnPressed, this, &SubtaskComposerRow::submit);
}

void SubtaskComposerRow::submit()
{
    if (m_field->text().trimmed().isEmpty())
        return;
    const TaskItem parent = row().task;
    addDraft(parent);
    m_actions.close(parent);
}

void SubtaskComposerRow::commitDraft()
{
    addDraft(row().task);
}

void SubtaskComposerRow::addDraft(const TaskItem &parent)
{
    const QString title = m_field->text();
    m_field->setCommittedText({});
    if (!title.trimmed().isEmpty())
        m_actions.addSubtask(parent, title);
}

bool SubtaskComposerRow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        const bool isForAWhile = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
        if (!isForAWhile)
            commitDraft();
    }
    return PanelRowWidget::eventFilter(watched, event);
}

void SubtaskComposerRow::rowChanged(const PanelRow &previous)
{
    setAccessibleName(QStringLiteral("サブタスクを追加"));
    if (previous.task.id != row().task.id)
        addDraft(previous.task);
}

void SubtaskComposerRow::focusInEvent(QFocusEvent *event)
{
    m_field->setFocus(event->reason());
}

bool SubtaskComposerRow::actOnKey(int key)
{
    if (key != Qt::Key_Escape)
        return false;
    m_field->setCommittedText({});
    m_actions.close(row().task);
    return true;
}

void SubtaskComposerRow::resizeEvent(QResizeEvent *event)
{
    PanelRowWidget::resizeEvent(event);
    const int left = Metrics::subtaskIndent + Metrics::checkSize + Metrics::rowSpacing;
    m_field->setGeometry(left, 0, width() - left - Metrics::fieldPadding, height());
}

void SubtaskComposerRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF field = QRectF(rect()).adjusted(Metrics::subtaskIndent - Metrics::rowSpacing, 1, 0, -1);
    Painting::roundedCard(painter, field, Metrics::rowRadius,
                          {Theme::current().hover, Theme::current().fieldLine, {}});
    Painting::symbol(painter, QRectF(Metrics::subtaskIndent, 0, Metrics::checkSize, height()),
                     QStringLiteral("plus"), Theme::current().tertiaryInk, Metrics::chipCheckSize);
}

} // namespace wrenfold
