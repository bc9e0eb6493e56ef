// SPDX-License-Identifier: MIT
#include "views/now_card.h"

#include "look/icon_button.h"
#include "look/painting.h"
#include "look/text_button.h"
#include "look/text_label.h"
#include "views/editable_label.h"

#include <QPainter>

#include <algorithm>

namespace wrenfold {

namespace {

constexpr int goalHeight = 24; ///< As much as a finger needs; the text is smaller.
constexpr int goalTop = 3;
constexpr int goalMargin = Metrics::textButtonPadding; ///< For the focus ring beside the text.
constexpr int buttonSpacing = 6;
constexpr int titleLines = 2;
constexpr int textLeft = Metrics::cardPadding + Metrics::cardAccentWidth + 4;

} // namespace

NowCard::NowCard(const Actions &actions, QWidget *parent)
    : QWidget(parent)
    , m_actions(actions)
    , m_goalWord(new TextLabel(QStringLiteral("GOAL"), this))
    , m_goal(new EditableLabel(QStringLiteral("GOAL"), this))
    , m_title(new TextLabel({}, this))
    , m_addTask(
          new TextButton(QStringLiteral("＋ タスクを追加してここにピン留め"), TextButton::Kind::Link, this))
    , m_addSubtask(new IconButton(QStringLiteral("plus.rectangle.on.folder"),
                                  QStringLiteral("サブタスクを追加"), this))
    , m_delete(new IconButton(QStringLiteral("trash"), QStringLiteral("削除（元に戻せます）"), this))
    , m_done(new IconButton(QStringLiteral("checkmark.circle"), QStringLiteral("完了"), this))
{
    m_goalWord->setFont(Fonts::tinyStrong());
    m_goalWord->setColor(&Theme::accent);
    m_goalWord->setClickable(true); // An empty goal leaves nothing else to click.
    m_goalWord->setFocusPolicy(Qt::NoFocus);
    m_goal->label()->setFont(Fonts::small());
    m_goal->label()->setColor(&Theme::secondaryInk);
    m_goal->label()->setClickable(true);
    m_goal->label()->setContentsMargins(goalMargin, 0, goalMargin, 0);
    m_title->setFont(Fonts::title());
    m_title->setMaximumLines(titleLines);
    m_addTask->setHelp(QStringLiteral("入力欄にフォーカスします"));
    m_done->setTint(&Theme::green);

    connect(m_goal, &EditableLabel::clicked, m_goal, &EditableLabel::beginEditing);
    connect(m_goalWord, &TextLabel::clicked, m_goal, &EditableLabel::beginEditing);
    connect(m_goal, &EditableLabel::edited, this, [this](const QString &goal) { m_actions.setGoal(goal); });
    connect(m_goal, &EditableLabel::closedByKey, this,
            [this] { m_goal->label()->setFocus(Qt::TabFocusReason); });
    connect(m_addTask, &TextButton::clicked, this, [this] { m_actions.requestTodoInput(); });
    const auto actOnTask = [this](IconButton *button, const std::function<void(const TaskItem &)> &action) {
        connect(button, &IconButton::clicked, this, [this, action] {
            // A copy: the card is handed another task while the action runs.
            if (const std::optional<TaskItem> task = m_task)
                action(*task);
        });
    };
    actOnTask(m_addSubtask, m_actions.addSubtask);
    actOnTask(m_delete, m_actions.deleteTask);
    actOnTask(m_done, m_actions.toggleDone);
    showTask();
}

void NowCard::setGoal(const QString &goal)
{
    m_goal->setText(goal);
}

void NowCard::setTask(const std::optional<TaskItem> &task)
{
    // Most operations leave NOW alone, and breaking its title into lines costs more than some of them.
    if (task == m_task)
        return;
    m_task = task;
    showTask();
}

void NowCard::showTask()
{
    const int heightBefore = heightForWidth(width());
    m_title->setText(m_task ? m_task->title : QString());
    m_title->setVisible(m_task.has_value());
    for (IconButton *button : {m_addSubtask, m_delete, m_done})
        button->setVisible(m_task.has_value());
    m_addTask->setVisible(!m_task);
    placeChildren();
    if (heightForWidth(width()) != heightBefore)
        Q_EMIT heightChanged();
}

int NowCard::titleWidth(int cardWidth) const
{
    const int buttons = 3 * (Metrics::iconButtonSize + buttonSpacing);
    return cardWidth - textLeft - Metrics::cardPadding - buttons;
}

int NowCard::titleHeight(int cardWidth) const
{
    return std::max(Metrics::iconButtonSize, m_title->heightForWidth(titleWidth(cardWidth)));
}

int NowCard::heightForWidth(int width) const
{
    return goalTop + goalHeight + titleHeight(width) + Metrics::cardPadding;
}

void NowCard::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeChildren();
}

void NowCard::placeChildren()
{
    const int wordWidth = m_goalWord->sizeHint().width();
    m_goalWord->setGeometry(textLeft, goalTop, wordWidth, goalHeight);
    const int goalLeft = textLeft + wordWidth + Metrics::sectionHeaderSpacing - goalMargin;
    m_goal->setGeometry(goalLeft, goalTop, width() - goalLeft - Metrics::cardPadding, goalHeight);

    const int top = goalTop + goalHeight;
    const int lineHeight = titleHeight(width());
    m_title->setGeometry(textLeft, top, titleWidth(width()), lineHeight);
    m_addTask->setGeometry(textLeft - Metrics::textButtonPadding, top, m_addTask->sizeHint().width(),
                           Metrics::iconButtonSize);
    int right = width() - Metrics::cardPadding;
    for (IconButton *button : {m_done, m_delete, m_addSubtask}) {
        right -= Metrics::iconButtonSize;
        button->setGeometry(right, top + (lineHeight - Metrics::iconButtonSize) / 2, Metrics::iconButtonSize,
                            Metrics::iconButtonSize);
        right -= buttonSpacing;
    }
}

void NowCard::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    Painting::roundedCard(painter, rect(), Metrics::cardRadius, {theme.card, theme.line, theme.accent});
}

} // namespace wrenfold
